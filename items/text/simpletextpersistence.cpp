// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/itemtexts.h"
#include "items/core/limits.h"
#include "items/core/record.h"
#include "items/text/layoutpause.h"
#include "items/text/simpletextitem.h"
#include "items/text/verticaltext.h"

#include <QTextCursor>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Text is laid out in 64ths of a unit.
constexpr double widthTolerance = 1.0 / 32.0;

/// The weight of a record: up to 400 normal, up to 700 bold. Any other is not taken up.
void applyWeight(QFont &font, int stored)
{
    if (stored < 401)
        font.setWeight(QFont::Normal);
    else if (stored < 701)
        font.setWeight(QFont::Bold);
}

} // namespace

Item *SimpleTextItem::createItemCopy()
{
    auto copy = std::make_unique<SimpleTextItem>();
    copyTo(*copy);
    return copy.release();
}

void SimpleTextItem::copyTo(SimpleTextItem &copy)
{
    {
        const QuietDocument quiet(copy);
        copyContentTo(copy);
    }
    copy.noteFit();
    copy.updateItemBrush();
}

void SimpleTextItem::copyTo(SimpleTextItem &copy, const QVariant &data)
{
    const QString text = ItemTexts::withoutMarker(data.toString());
    if (text == toPlainText()) {
        copyTo(copy);
        return;
    }
    {
        const QuietDocument quiet(copy);
        const LayoutPause pause(*copy.document());
        copyContentTo(copy);
        copy.m_fittedSize = QGraphicsTextItem::boundingRect().size();
        copy.showText(text);
        copy.setTextWidth(-1);
    }
    copy.updateTextOnPropertyChanges(-1, -1, -1);
    Q_EMIT copy.textItemHasChanged();
}

void SimpleTextItem::copyContentTo(SimpleTextItem &copy)
{
    copy.setPos(pos() + QPointF(1.0, 1.0)); // an item does not move to where it very nearly is
    copyItemProperties(&copy, true);
    {
        const LayoutPause pause(*copy.document());
        copy.document()->setDocumentMargin(getItemDocumentMargin());
        copy.setPlainText(toPlainText());
        copy.wrapFor(toPlainText());
        copy.setFont(font());
        copy.setAlignmentOption(getItemAlignment());
        copy.setTextWidth(textWidth());
    }
    copy.setItemTextColor(getItemTextColor());
    copy.setFramePads(getFramePads());
    copy.copyPrivatePropeties(getOldTransformCoefficientM31(), getOldTransformCoefficientM32(),
        getFirstResizeAfterAddedToGroup(), m_vertical, m_wasResized, m_pinToCenter, m_sizeLimiting, false);
}

void SimpleTextItem::copyPrivatePropeties(double m31, double m32, bool firstResize, bool vertical,
    bool wasResized, bool pinToCenter, int sizeLimiting, bool showEmptyTextMarker)
{
    setOldTransformCoefficientM31(m31);
    setOldTransformCoefficientM32(m32);
    setFirstResizeAfterAddedToGroup(firstResize);
    m_vertical = vertical;
    m_wasResized = wasResized;
    m_pinToCenter = pinToCenter;
    m_sizeLimiting = static_cast<signed char>(sizeLimiting);
    this->showEmptyTextMarker(showEmptyTextMarker);
}

void SimpleTextItem::saveItemToData(QDataStream &stream)
{
    stream << toPlainText();
    Record::write(
        stream, getItemTextColor(), qint16(getItemAlignmentInt() & alignmentMask), getItemDocumentMargin());
    TextItem::saveItemToData(stream);
    stream << font().family();
    Record::write(stream, qint16(font().pixelSize()), qint16(font().weight()), getItemItalic(),
        getItemUnderline(), getOldTransformCoefficientM31(), getOldTransformCoefficientM32(), m_vertical,
        m_wasResized, m_pinToCenter, qint8(m_sizeLimiting));
}

void SimpleTextItem::loadItemFromData(QDataStream &stream, unsigned int version)
{
    const QuietDocument quiet(*this);
    {
        const LayoutPause pause(*document());
        QTextCursor cursor = textCursor();
        cursor.beginEditBlock();
        document()->clear();
        loadText(stream, version);
        cursor.endEditBlock();
        setTextCursor(cursor);
        setTextWidth(-1);
    }
    restoreTextWidth();
    updateFramePads();
    updateItemBrush();
}

void SimpleTextItem::loadText(QDataStream &stream, unsigned int version)
{
    QString text;
    stream >> text;
    QColor color;
    qint16 alignment;
    double margin;
    Record::read(stream, std::tie(color, alignment, margin));
    setItemText(text);
    setItemTextColor(color);
    setAlignmentOption(Qt::Alignment::fromInt(int(alignment & alignmentMask)));
    document()->setDocumentMargin(Limits::geometry(margin));
    TextItem::loadItemFromData(stream, version);

    QString family;
    stream >> family;
    qint16 pixelSize;
    qint16 weight;
    bool italic;
    bool underline;
    double m31;
    double m32;
    qint8 limiting;
    Record::read(stream,
        std::tie(pixelSize, weight, italic, underline, m31, m32, m_vertical, m_wasResized, m_pinToCenter,
            limiting));
    QFont loaded = fontOf(family, pixelSize);
    applyWeight(loaded, weight);
    loaded.setItalic(italic);
    loaded.setUnderline(underline);
    setFont(loaded);
    setOldTransformCoefficientM31(m31);
    setOldTransformCoefficientM32(m32);
    m_sizeLimiting = limiting;
}

QVariantMap SimpleTextItem::saveItemToJSON()
{
    QVariantMap map = TextItem::saveItemToJSON();
    if (m_vertical && !getDocumentIsEmpty())
        map[QStringLiteral("itemText")] = convertVerticalTextToHorizontal();
    return map;
}

void SimpleTextItem::loadItemFromJSON(const QVariantMap &map, unsigned int version)
{
    const QuietDocument quiet(*this);
    TextItem::loadItemFromJSON(map, version);
    // The keys came in alphabetical order, and most of them have fitted the item anew.
    const auto again = [&map](const char *key, auto &&apply) {
        const auto value = map.constFind(QLatin1String(key));
        if (value != map.constEnd())
            apply(*value);
    };
    again("itemText", [this](const QVariant &value) {
        const QString text = value.toString();
        setItemText(m_vertical ? VerticalText::fromHorizontalWithSpaces(text) : text);
    });
    again("itemScaleX", [this](const QVariant &value) { setItemScaleX(value.toDouble()); });
    again("itemScaleY", [this](const QVariant &value) { setItemScaleY(value.toDouble()); });
    again("itemWasResized", [this](const QVariant &value) { m_wasResized = value.toBool(); });
    again("itemSizeLimiting", [this](const QVariant &value) { setItemSizeLimitingInt(value.toInt()); });
    again("itemWidth", [this](const QVariant &value) { setItemWidth(value.toDouble()); });
    again("itemHeight", [this](const QVariant &value) { setItemHeight(value.toDouble()); });
    again("itemFontSize", [this](const QVariant &value) {
        if (value.toInt() < 1 && m_wasResized)
            restoreFontSize();
    });
    restoreTextWidth();
    updateFramePads();
    again("oldTransformCoefficientM31",
        [this](const QVariant &value) { setOldTransformCoefficientM31(value.toDouble()); });
    again("oldTransformCoefficientM32",
        [this](const QVariant &value) { setOldTransformCoefficientM32(value.toDouble()); });
    again("itemTransform", [this](const QVariant &value) { setItemTransformFromList(value.toList()); });
    updateItemPositionAfterLoading();
    updateItemBrush();
    prepareGeometryChange();
}

QSizeF SimpleTextItem::naturalSize()
{
    if (textWidth() >= 0.0)
        setTextWidth(-1);
    return QGraphicsTextItem::boundingRect().size();
}

QSizeF SimpleTextItem::unscaledSize(double outline) const
{
    return QSizeF((getItemWidth() + outline) / Limits::divisor(getItemScaleX()) - outline,
        (getItemHeight() + outline) / Limits::divisor(getItemScaleY()) - outline);
}

bool SimpleTextItem::isNaturalWidth(double stored, double natural) const
{
    // A label is stretched with its outline, which has a part in the size that remains when it is gone.
    const double part = 1.0 - 1.0 / Limits::divisor(getItemScaleX());
    const double outline
        = std::clamp(std::round((stored - natural) / Limits::divisor(part)), 0.0, double(maxPenWidth));
    return std::abs(natural + outline * part - stored) < widthTolerance;
}

bool SimpleTextItem::hasNaturalHeight(const QSizeF &stored, const QSizeF &natural)
{
    setTextWidth(Limits::geometry(stored.width()));
    const double broken = QGraphicsTextItem::boundingRect().height();
    return std::abs(natural.height() - stored.height()) <= std::abs(broken - stored.height());
}

void SimpleTextItem::restoreTextWidth()
{
    // Taking a width that is the natural one but for rounding or the outline as stored would break lines. The
    // part of an outline that changed between two stretches cannot be told from the width.
    const QSizeF natural = naturalSize();
    const QSizeF stored = unscaledSize(0.0);
    const bool isNatural = isNaturalWidth(stored.width(), natural.width())
        || (itemPen().width() > 0 && hasNaturalHeight(stored, natural));
    {
        const LayoutPause pause(*document());
        setTextWidth(Limits::geometry(isNatural ? natural.width() : stored.width()));
    }
    noteFit();
}

void SimpleTextItem::useFont(const QFont &font)
{
    const LayoutPause pause(*document());
    setFont(font);
}

void SimpleTextItem::restoreFontSize()
{
    // The map of a stretched label has no font size: it follows from the unscaled size, in which the outline
    // has a part unless there was none when the label was stretched.
    QFont restored = font();
    int best = 1;
    double leastError = std::numeric_limits<double>::infinity();
    for (const double outline : { 0.0, double(itemPen().width()) }) {
        const QSizeF wanted = unscaledSize(outline);
        const int size = pixelSizeFor(wanted.height());
        restored.setPixelSize(size);
        useFont(restored);
        const QSizeF missing = naturalSize() - wanted;
        const double error = std::abs(missing.width()) + std::abs(missing.height());
        if (error < leastError) {
            leastError = error;
            best = size;
        }
    }
    restored.setPixelSize(best);
    useFont(restored);
}

int SimpleTextItem::pixelSizeFor(double height)
{
    const double margins = 2.0 * getItemDocumentMargin();
    QFont estimated = font();
    estimated.setPixelSize(defaultPixelSize);
    // Lines are whole pixels high: an estimate from one size may miss another by a pixel, one from nearby
    // does not.
    for (int estimate = 0; estimate < 2; ++estimate) {
        useFont(estimated);
        const double natural = naturalSize().height() - margins;
        estimated.setPixelSize(std::max(
            1, Limits::toInt(estimated.pixelSize() * (height - margins) / Limits::divisor(natural))));
    }
    return estimated.pixelSize();
}
