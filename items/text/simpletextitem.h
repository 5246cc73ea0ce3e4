// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/resizerotatedhelper.h"
#include "items/interfaces/itextlabelitem.h"
#include "items/text/textitem.h"

#include <functional>

/// The label text: one block of plain text in a single font, colour and alignment, horizontal or vertical.
/// The item is as large as its text; resizing it stretches the text, and a fixed side squeezes it.
class VX_EXPORT SimpleTextItem : public TextItem, public ResizeRotatedHelper, public ITextLabelItem
{
    Q_OBJECT
    Q_PROPERTY(bool itemTextVertical READ getTextIsVertical WRITE setTextVertical)
    Q_PROPERTY(bool itemPinToCenter READ getItemPinToCenter WRITE setItemPinToCenter)
    Q_PROPERTY(bool itemWasResized READ getItemWasResized WRITE setItemWasResized)
    Q_PROPERTY(int itemSizeLimiting READ getItemSizeLimitingInt WRITE setItemSizeLimitingInt)
    Q_PROPERTY(double itemDocumentMargin READ getItemDocumentMargin WRITE setItemDocumentMargin)
    VX_OLD_TRANSFORM_PROPERTIES
    Q_PROPERTY(QString itemText READ getItemText WRITE setItemText)
    Q_PROPERTY(uint itemAlignment READ getItemAlignmentInt WRITE setItemAlignmentInt)
    Q_PROPERTY(int itemFontSize READ getItemFontSize WRITE setItemFontSize)
    Q_PROPERTY(QString itemFontFamily READ getItemFontFamily WRITE setItemFontFamily)
    Q_PROPERTY(bool itemFontBold READ getItemBold WRITE setItemBold)
    Q_PROPERTY(bool itemItalic READ getItemItalic WRITE setItemItalic)
    Q_PROPERTY(bool itemUnderline READ getItemUnderline WRITE setItemUnderline)

public:
    SimpleTextItem();
    ~SimpleTextItem() override;

    // QGraphicsItem
    enum { Type = MobraTypes::LabelTextShape };
    int type() const override { return Type; }
    QRectF boundingRect() const override;

    // Text
    bool getDocumentIsEmpty() const override { return toPlainText().isEmpty(); }
    void setItemTextColor(const QColor &color) override;
    bool getTextIsVertical() const override { return m_vertical; }
    /// The number of line breaks.
    static int countNewLinesInText(const QString &text);
    /// Where the cursor goes in a vertical text of characters of one unit each, after `added` of them at a
    /// position.
    static int determineCursorPositionForVerticalText(int position, int added, const QString &text);
    static QString convertHorizontalTextToVertical(const QString &text);
    /// The item's own text; a blank line becomes a space.
    QString convertVerticalTextToHorizontal() const;
    void textPaste() override;
    void keyPressEvent1(QKeyEvent *event) override;

    // Font and alignment
    /// In pixels; -1 while the text is stretched.
    int getItemFontSize() const override;
    /// The same, of the font before stretching.
    int getItemPositiveFontSize() const { return font().pixelSize(); }
    /// Undoes stretching and fixed sides. Sizes below 1 are ignored.
    void setItemFontSize(int size) override;
    QString getItemFontFamily() const override { return font().family(); }
    void setItemFontFamily(const QString &family) override;
    bool getItemBold() const override { return font().bold(); }
    void setItemBold(bool bold) override;
    bool getItemItalic() const override { return font().style() != QFont::StyleNormal; }
    void setItemItalic(bool italic) override;
    bool getItemUnderline() const override { return font().underline(); }
    void setItemUnderline(bool underline) override;
    Qt::Alignment getItemAlignment() const override;
    void setItemAlignment(Qt::Alignment alignment) override;
    void setItemAlignmentInt(uint alignment);
    void importTextProperties(const QString &family, int pixelSize, bool bold, bool italic, bool underline,
        const Qt::Alignment &alignment);

    // Place and size
    bool getItemWasResized() const { return m_wasResized; }
    bool getItemPinToCenter() const override { return m_pinToCenter; }
    /// Bit 0x01 fixes the width, bit 0x02 the height.
    signed char getItemSizeLimiting() const { return m_sizeLimiting; }
    int getItemSizeLimitingInt() const { return m_sizeLimiting; }
    void setItemSizeLimitingInt(int limiting) { setItemSizeLimiting(static_cast<signed char>(limiting)); }
    bool getItemFixedSizeWidth() const override { return (m_sizeLimiting & fixedWidth) != 0; }
    void setItemSizeFixedWidth(bool fixed) override { setLimit(fixedWidth, fixed); }
    bool getItemFixedSizeHeight() const override { return (m_sizeLimiting & fixedHeight) != 0; }
    void setItemSizeFixedHeight(bool fixed) override { setLimit(fixedHeight, fixed); }
    double getItemDocumentMargin() const { return document()->documentMargin(); }
    void setItemDocumentMargin(double margin);
    void updateItemSize(const QSizeF &size) override { setItemSize(size); }
    /// Rebuilds the transform from rotation and scales; the item keeps its place, or its centre.
    void updateTransform(bool keepCentre);
    /// Back to the unrotated text in its natural size.
    void resetTransform();
    /// Moves the item so that its centre comes to lie where the point p of the item was.
    void adjustForPinToCenter(const QPointF &p);

    // Item, ContouredItem
    [[nodiscard]] Item *createItemCopy() override;
    /// Makes a top-level item what createItemCopy() would give, whatever it was: several times as fast.
    void copyTo(SimpleTextItem &copy);
    /// The same, and then setItemData(): faster than both, since the text is laid out for the data alone.
    void copyTo(SimpleTextItem &copy, const QVariant &data);
    QString toDescriptionString() const override;
    void saveItemToData(QDataStream &stream) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;
    QVariantMap saveItemToJSON() override;
    void loadItemFromJSON(const QVariantMap &map, unsigned int version) override;
    void updateItemPen() override;
    using Item::copyPrivatePropeties;
    void copyPrivatePropeties(double m31, double m32, bool firstResize, bool vertical, bool wasResized,
        bool pinToCenter, int sizeLimiting, bool showEmptyTextMarker);

public Q_SLOTS:
    void setItemRotation(double degrees) override;
    /// Returns whether the direction has changed.
    bool setTextVertical(bool setVert) override;
    void setItemWasResized(bool wasResized) { m_wasResized = wasResized; }
    void setItemPinToCenter(bool pin) override { m_pinToCenter = pin; }
    void setItemSizeLimiting(signed char limiting) { m_sizeLimiting = limiting; }
    /// Shows a value of the datasource. Its own position, size and font stay as they are told to.
    void setItemData(const QVariant &data) override;

protected:
    bool applySize(const QSizeF &size) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    QSizeF mirrorShiftingSize() override { return QGraphicsTextItem::boundingRect().size(); }
    void createMimeDataFromSelection() override;
    void replaceSelection(const QString &text) override;
    void updateTextOnPropertyChanges(int position, int charsRemoved, int charsAdded) override;
    void updateTextOnPropertyChangesForVerticalText(int position, int charsRemoved, int charsAdded);
    QRectF getReferenceRectangle() const override { return QGraphicsTextItem::boundingRect(); }
    QRectF getReferenceRectangleEdit() const override { return QGraphicsTextItem::boundingRect(); }
    void drawFrame(QPainter *painter) override;

private:
    static constexpr int defaultPixelSize = 48;
    /// The bits of an alignment that a text option keeps.
    static constexpr uint alignmentMask = 0x1FF;
    static constexpr signed char fixedWidth = 0x01;
    static constexpr signed char fixedHeight = 0x02;

    /// A font of default weight; sizes below 1 are left out.
    static QFont fontOf(const QString &family, int pixelSize);
    void setLimit(signed char bit, bool on);
    void setAlignmentOption(Qt::Alignment alignment);
    /// Shows a horizontal text in the item's direction.
    void showText(const QString &text);
    /// Changes the document unnoticed and fits the item to it.
    void changeDocument(const std::function<void()> &change);
    /// Growing keeps the centre, which in a group is the group's concern.
    bool isPinned() const { return m_pinToCenter && !parentItem(); }
    /// Back to the text as large as its font makes it.
    void releaseSize();
    void changeFont(const QFont &font);
    void refit();
    void fitSides(const QSizeF &natural);
    void noteFit();
    void copyContentTo(SimpleTextItem &copy);
    /// What a record holds, without laying it out.
    void loadText(QDataStream &stream, unsigned int version);
    void updateFramePads();
    void enlargeSize(double width);
    /// Lays the text out as wide as it is.
    QSizeF naturalSize();
    /// The size before stretching, by which an outline of so many units was stretched too.
    QSizeF unscaledSize(double outline) const;
    bool isNaturalWidth(double stored, double natural) const;
    /// Whether the text is as high as stored rather in its natural width than in the stored one.
    bool hasNaturalHeight(const QSizeF &stored, const QSizeF &natural);
    void restoreTextWidth();
    void useFont(const QFont &font);
    void restoreFontSize();
    int pixelSizeFor(double height);

    QSizeF m_fittedSize; ///< Of the text before stretching, when the item was last fitted to it.
    bool m_vertical = false;
    bool m_wasResized = false;
    bool m_pinToCenter = false;
    bool m_refitting = false;
    signed char m_sizeLimiting = 0;
};
