// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/itemproperties.h"
#include "items/interfaces/idatasourceitem.h"
#include "items/interfaces/ifontitem.h"
#include "items/interfaces/itextalignitem.h"
#include "items/interfaces/itextgenericitem.h"
#include "items/interfaces/textcoloritem.h"
#include "items/style/fillableitem.h"

#include <QAbstractTextDocumentLayout>
#include <QGraphicsTextItem>
#include <QPalette>
#include <QTextDocument>

#include <functional>

/// The base of the two text items: a document with a text colour, edited in place, bound to data, and turned
/// into a raster for printing.
class VX_EXPORT TextItem : public QGraphicsTextItem,
                           public FillableItem,
                           public TextColorItem,
                           public ITextGenericItem,
                           public IFontItem,
                           public ITextAlignItem,
                           public IDatasourceItem
{
    Q_OBJECT
    VX_SHAPE_PROPERTY
    VX_IDENTITY_PROPERTIES
    VX_ROTATION_PROPERTIES
    VX_SIZE_PROPERTIES
    VX_OVERPRINT_PROPERTY
    VX_TRANSFORM_PROPERTY
    VX_POSITION_PROPERTIES
    VX_DATASOURCE_PROPERTIES
    VX_PEN_COLOR_PROPERTY
    VX_FILL_COLOR_PROPERTY
    Q_PROPERTY(QColor itemTextColor READ getItemTextColor WRITE setItemTextColor)
    VX_PEN_PROPERTIES
    VX_BRUSH_PROPERTY

public:
    /// The background of selected text while editing.
    static const QColor ORANGE_COLOR;
    /// The family of the font that texts start with.
    static const QString defaultFontFamily;

    TextItem();
    ~TextItem() override;

    // QGraphicsItem
    QPainterPath shape() const override;
    QPainterPath opaqueArea() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

    // Text and data
    QString getItemText() const override { return toPlainText(); }
    QString itemHtml() const override { return toHtml(); }
    QVariant getItemData() const override { return toPlainText(); }
    int getItemDatasourceID() const override { return getDatasourceId(); }
    QString getItemDatasourceField() const override { return getDatasourceField(); }
    bool isDatasourceConnected() const override;
    /// Whether there is no text.
    virtual bool getDocumentIsEmpty() const = 0;
    bool isShownEmptyTextMarker() const { return m_showEmptyTextMarker; }

    // What a frame outside the text needs
    /// In item units, on each side of the text.
    void setFramePads(const QSizeF &pads) { m_framePads = pads; }
    QSizeF getFramePads() const { return m_framePads; }
    /// How far the last getItemAbsSize() shifts the padded raster in the scene.
    QSizeF ajustTextWithBorderOnImageAmount() const { return m_adjustAmount; }
    /// What the editor keeps free around a text that is being edited.
    static int getTextEditPad() { return 10; }

    // Editing
    void startEdit(int position) override;
    void startSelectedEdit(int from, int to) override;
    void setCursorPosition(int position, bool select) override;
    void selectOnStart();
    void endEdit() override;
    bool isInEditing() const;
    void textCut();
    void textCopy();
    /// What a key does that is no command of the item.
    void keyPressEvent1(QKeyEvent *event) override = 0;
    /// Removes the selected text.
    void textDelete() { replaceSelection(QString()); }
    /// Whether the clipboard holds a text.
    static bool canPaste();

    /// Makes the item as large as its text.
    void fitItemToContents();

    // Printing
    using FillableItem::getItemAbsSize;
    /// Here x and y are the scaled pads.
    QSize getItemAbsSize(double &padX, double &padY) override;
    void preparePrintImage() override;
    bool resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers) override;
    bool resetItemColorsNegative(const QColor &printColor) override;
    bool havePenColor(const QColor &color) const;
    bool haveFillColor(const QColor &color) const;
    bool haveTextColor(const QColor &color) const;

public Q_SLOTS:
    void showEmptyTextMarker(bool show);
    void setItemText(const QString &newText) override;
    /// HTML that is too complicated to be laid out in time is taken as its plain text.
    void setItemHtml(const QString &newHtml) override;
    void setItemDatasourceID(int id) override { setDatasourceId(id); }
    void setItemDatasourceField(const QString &field) override { setDatasourceField(field); }
    void updateItemOnContentsChange(int position, int charsRemoved, int charsAdded);
    void updateItemOnContentsChanged();

Q_SIGNALS:
    void itemDataChanged(QVariant data, int datasourceId, QString field) override;
    void textItemHasChanged();
    void textItemIsEditing(TextItem *item);

protected:
    // QGraphicsItem
    bool event(QEvent *event) override;
    void mouseDoubleClickEvent(QGraphicsSceneMouseEvent *event) override;
    void contextMenuEvent(QGraphicsSceneContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

    // Item
    void announceGeometryChange() override { prepareGeometryChange(); }

    // What a subclass supplies
    /// The size within which painting mirrors.
    virtual QSizeF mirrorShiftingSize() = 0;
    /// Puts the selected text on the clipboard.
    virtual void createMimeDataFromSelection() = 0;
    /// Puts plain text in the place of the selection.
    virtual void replaceSelection(const QString &text);
    /// What the clipboard holds, as plain text.
    static QString clipboardText();
    /// The text or its look has changed; -1, -1, -1 when not by an edit.
    virtual void updateTextOnPropertyChanges(int position, int charsRemoved, int charsAdded) = 0;
    /// The area of the background and of the print raster.
    virtual QRectF getReferenceRectangle() const = 0;
    /// The same while editing.
    virtual QRectF getReferenceRectangleEdit() const = 0;
    virtual void drawFrame(QPainter *painter) = 0;

    /// Keeps the slots for changes of the document from running while the item changes it itself; may nest.
    class [[nodiscard]] QuietDocument;
    /// The last step of a subclass's constructor.
    void connectDocument();
    /// Whether a value of a datasource begins with the marker of functions.
    static bool isMarked(const QString &data);
    /// A cursor of the document, at a position limited to its text.
    QTextCursor cursorAt(int position) const;
    /// Changes letters in one step, laid out at its end, and tells of it unless the document is quiet.
    void changeText(const std::function<void()> &change);
    /// Has the lines of a text broken between words, or anywhere when a word is too long to look for its end
    /// at each line.
    void wrapFor(QStringView text);
    /// The scene area to repaint when the text has changed.
    void updateScene(const QRectF &area);

private:
    void enterEditing();
    void announceEditing();
    void paintDocument(QPainter *painter, const QStyleOptionGraphicsItem &option, QWidget *widget);
    void paintIdleText(QPainter &painter, const QRectF &exposed);
    void paintSelectedText(QPainter &painter, const QRectF &exposed);
    void drawText(QPainter &painter, QAbstractTextDocumentLayout::PaintContext &context);
    void paintEmptyTextMarker(QPainter *painter, const QStyleOptionGraphicsItem *option);
    void paintFrames(QPainter *painter, const QStyleOptionGraphicsItem *option);
    void drawSelectionRectangleEdit(QPainter *painter, const QStyleOptionGraphicsItem *option);
    QImage backgroundWithText(double scaling);

    /// That of Qt's text control, which cannot be asked for it.
    QPalette m_palette;
    bool m_showEmptyTextMarker = false;
    int m_quiet = 0;
    GraphicsItemFlags m_idleFlags;
    QSizeF m_framePads { 0.0, 0.0 };
    QSizeF m_adjustAmount { 0.0, 0.0 };
};

class TextItem::QuietDocument
{
public:
    explicit QuietDocument(TextItem &item)
        : m_item(item)
    {
        ++m_item.m_quiet;
    }
    ~QuietDocument() { --m_item.m_quiet; }
    Q_DISABLE_COPY_MOVE(QuietDocument)

private:
    TextItem &m_item;
};
