// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/interfaces/irichtextitem.h"
#include "items/text/textitem.h"

#include <QTextBlockFormat>
#include <QTextCharFormat>

#include <functional>

class QRegularExpression;

/// The rich text: a box of HTML whose characters may differ in font, size and colour. The item's size is that
/// of the box; the text flows in its width and may be higher than it. Font sizes are pixels at the interface
/// and points in the document, of as many pixels as the screen factor tells.
class VX_EXPORT RichTextItem : public TextItem, public IRichTextItem
{
    Q_OBJECT
    Q_PROPERTY(bool documentIsEmpty READ getDocumentIsEmpty)
    Q_PROPERTY(QString itemHtml READ itemHtml WRITE setItemHtml)
    Q_PROPERTY(double screenDpi READ getScreenDpi)
    Q_PROPERTY(int itemFontSize READ getEmptyFontSize WRITE setEmptyFontSize)
    Q_PROPERTY(QString itemFontFamily READ getEmptyFontFamily WRITE setEmptyFontFamily)
    Q_PROPERTY(int itemFontWeight READ getEmptyFontWeight WRITE setEmptyFontWeight)
    Q_PROPERTY(bool itemFontItalic READ getEmptyFontItalic WRITE setEmptyFontItalic)
    Q_PROPERTY(bool itemFontUnderline READ getEmptyFontUnderline WRITE setEmptyFontUnderline)
    Q_PROPERTY(int itemAlignment READ getEmptyAlignment WRITE setEmptyAlignment)

public:
    RichTextItem();
    ~RichTextItem() override;

    // QGraphicsItem
    enum { Type = MobraTypes::RichTextShape };
    int type() const override { return Type; }
    QRectF boundingRect() const override;

    // Text
    bool getDocumentIsEmpty() const override { return m_documentIsEmpty; }
    void setItemTextColor(const QColor &color) override;
    /// Of the whole text, whatever is selected.
    void setItemTextColorNoSelection(const QColor &color);
    /// HTML whose point sizes were written under another screen factor. A factor that is no positive number
    /// scales nothing.
    void setScaledHtml(QString html, double storedFactor);
    /// Multiplies the point sizes in the style attributes. Sizes that a replacement makes equal to a later
    /// one are multiplied twice.
    static void scaleHtmlFont(QString &html, const QRegularExpression &re, double factor);
    void textPaste() override;
    void keyPressEvent1(QKeyEvent *event) override;
    /// Cursor position and selection of another box.
    void copyCursorProperties(const RichTextItem &other);

    // Font and alignment of the selection while editing, otherwise of the whole text
    // While editing the getters tell those at the cursor, otherwise those of the first letter
    /// In pixels; -1 when the sizes differ.
    int getItemFontSize() const override;
    void setItemFontSize(int size) override;
    QString getItemFontFamily() const override;
    void setItemFontFamily(const QString &family) override;
    bool getItemBold() const override;
    void setItemBold(bool bold) override;
    bool getItemItalic() const override;
    void setItemItalic(bool italic) override;
    bool getItemUnderline() const override;
    void setItemUnderline(bool underline) override;
    Qt::Alignment getItemAlignment() const override;
    void setItemAlignment(Qt::Alignment alignment) override;

    // Font and alignment that typing into the empty box starts with
    int getEmptyFontSize() const;
    void setEmptyFontSize(int pixels);
    QString getEmptyFontFamily() const { return m_emptyCharFormat.font().family(); }
    void setEmptyFontFamily(const QString &family);
    int getEmptyFontWeight() const { return m_emptyCharFormat.font().weight(); }
    void setEmptyFontWeight(int weight);
    bool getEmptyFontItalic() const { return m_emptyCharFormat.font().style() != QFont::StyleNormal; }
    void setEmptyFontItalic(bool italic);
    bool getEmptyFontUnderline() const { return m_emptyCharFormat.font().underline(); }
    void setEmptyFontUnderline(bool underline);
    int getEmptyAlignment() const { return m_emptyBlockFormat.intProperty(QTextFormat::BlockAlignment); }
    void setEmptyAlignment(int alignment);

    // The box
    /// Takes the pixels of a point from the application's font.
    void setScreenDPI();
    double getScreenDpi() const { return m_screenFactor; }
    bool getTextFitsInBox() const override { return m_textFitsInBox; }
    void updateTextFitsInBox();
    static double getTextFitsTolerance() { return s_textFitsTolerance; }
    static void setTextFitsTolerance(const double &tolerance) { s_textFitsTolerance = tolerance; }
    /// Whether the text would fit in a box of the size.
    bool testSetItemSize(const QSizeF &size);
    /// Makes the box as high as its text, at least as high as told.
    void adjustBoxSizeToContent(double minHeight);
    void resetDocumentMargins();
    void updateItemSize(const QSizeF &size) override { setItemSize(size); }

    // Item, ContouredItem
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;
    void saveItemToData(QDataStream &stream) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;
    void loadItemFromJSON(const QVariantMap &map, unsigned int version) override;
    void updateItemPen() override;

public Q_SLOTS:
    void setItemTextColorString(const QString &newTextColorString);
    /// Shows a value of the datasource: plain text, or HTML when a function marks it as such.
    void setItemData(const QVariant &data) override;
    void updateCursorPositionChanged(const QTextCursor &cursor);

Q_SIGNALS:
    void textItemCursorHasChanged();

protected:
    bool sceneEvent(QEvent *event) override;
    bool applySize(const QSizeF &size) override;
    QSizeF mirrorShiftingSize() override { return getItemSize(); }
    void createMimeDataFromSelection() override;
    void updateTextOnPropertyChanges(int position, int charsRemoved, int charsAdded) override;
    QRectF getReferenceRectangle() const override { return sizeRect(); }
    QRectF getReferenceRectangleEdit() const override;
    void drawFrame(QPainter *painter) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void layOut() override;

private:
    bool selectionIsMeant() const;
    QTextCursor meantText() const;
    QTextCursor toldText() const;
    QTextCharFormat toldFormat() const;
    void mergeFormat(const QTextCharFormat &format);
    void mergeEmptyFormat(const QTextCharFormat &format);
    void changeEmptyFont(const std::function<void(QFont &)> &change);
    void setItemTextColorOnLoad(const QColor &color);
    void useEmptyFormats();
    void takeEmptyFormats();
    bool isOnBlankLine() const;
    void insertParagraph();
    void noteWhetherEmpty();
    void showData(const QString &text, bool marked);
    void loadHtml(QDataStream &stream, unsigned int version);
    void noteLoadedAsEmpty();
    void loadEmptyFormats(QDataStream &stream);
    void updateTextHeight();

    static double s_textFitsTolerance;
    static double s_lastScreenFactor;

    bool m_documentIsEmpty = true;
    bool m_textFitsInBox = true;
    QTextCharFormat m_emptyCharFormat;
    QTextBlockFormat m_emptyBlockFormat;
    double m_textHeight = 0.0;
    double m_screenFactor = 1.0;
};
