// SPDX-License-Identifier: BSD-3-Clause
#include "label/printcopy.h"

#include "items/barcode/barcodeitem.h"
#include "items/core/itemcolors.h"
#include "items/graphics/symbolitem.h"
#include "items/shapes/rectangleitem.h"
#include "items/style/fillableitem.h"
#include "items/text/textitem.h"
#include "label/paintedcolors.h"
#include "label/platebarcode.h"
#include "label/textcolors.h"

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

int distance(const QColor &left, const QColor &right)
{
    const auto square = [](int difference) { return difference * difference; };
    return square(left.red() - right.red()) + square(left.green() - right.green())
        + square(left.blue() - right.blue());
}

QColor nearestColor(const QColor &pixel, const QList<QColor> &colors)
{
    const auto isNearer = [&pixel](const QColor &left, const QColor &right) {
        return distance(left, pixel) < distance(right, pixel);
    };
    return colors.isEmpty() ? pixel : *std::ranges::min_element(colors, isNearer);
}

/// The filled background of a text alone. The picture that the text would make of both has only the dots of
/// its letters before they were stretched and turned.
std::unique_ptr<RectangleItem> backdropOf(TextItem &text)
{
    auto backdrop = std::make_unique<RectangleItem>();
    const bool isBox = text.getItemShape() == MobraTypes::RichTextShape;
    backdrop->setItemSize(isBox ? text.getItemSize() : text.QGraphicsTextItem::boundingRect().size());
    backdrop->setItemPenStyle(Qt::NoPen);
    backdrop->setItemFillColor(text.getItemFillColor());
    backdrop->setItemBrushStyle(text.getItemBrushStyle());
    backdrop->setItemHorizontalMirror(text.getItemHorizontalMirror());
    backdrop->setItemVerticalMirror(text.getItemVerticalMirror());
    backdrop->setItemZValue(text.getItemZValue());
    backdrop->setTransform(text.transform());
    backdrop->setPos(text.pos());
    return backdrop;
}

/// Letters in whole dots. Smoothed ones are wider in white than in black, so that what knocks out and what
/// prints would not fit.
void sharpen(QTextDocument &document)
{
    QFont font = document.defaultFont();
    font.setStyleStrategy(QFont::NoAntialias);
    document.setDefaultFont(font);
    QTextCharFormat sharp;
    sharp.setFontStyleStrategy(QFont::NoAntialias);
    QTextCursor all(&document);
    all.select(QTextCursor::Document);
    all.mergeCharFormat(sharp);
}

} // namespace

PrintCopy::PrintCopy(Item &original, double scaling, Mode mode, const QList<QColor> &colors)
    : m_item(original.createItemCopy())
    , m_graphics(dynamic_cast<QGraphicsItem *>(m_item.get()))
    , m_fillable(dynamic_cast<FillableItem *>(m_item.get()))
    , m_text(dynamic_cast<TextItem *>(m_item.get()))
    , m_barcode(dynamic_cast<BarcodeItem *>(m_item.get()))
    , m_colors(colors)
    , m_scaling(scaling)
    , m_mode(mode)
{
    makeStackable(*m_graphics);
    prepareColors();
    if (m_text)
        prepareText();
}

PrintCopy::~PrintCopy() = default;

void PrintCopy::makeStackable(QGraphicsItem &copy)
{
    copy.setSelected(false);
    copy.setFlag(QGraphicsItem::ItemIgnoresTransformations, false);
    copy.setFlag(QGraphicsItem::ItemNegativeZStacksBehindParent, false);
    copy.setFlag(QGraphicsItem::ItemStacksBehindParent);
}

void PrintCopy::prepareColors()
{
    if (auto *colored = dynamic_cast<ColoredItem *>(m_item.get())) {
        colored->setItemPenColor(PaintedColors::penOf(*m_item));
        m_penIsClear = colored->getItemPenColor() == ItemColors::transparent;
    }
    if (m_barcode)
        prepareBarcode();
    if (auto *symbol = dynamic_cast<SymbolItem *>(m_item.get()))
        symbol->setItemFillColor(PaintedColors::fillOf(*symbol));
    if (!m_fillable)
        return;
    m_fillable->setItemFillColor(PaintedColors::fillOf(*m_item));
    // Gradients end in the paper, which is what does not print.
    m_fillable->setSceneBackgroundColor(m_mode == Mode::Negative ? ItemColors::black : ItemColors::white);
    m_fillable->setPrintScaling(m_scaling);
}

void PrintCopy::prepareBarcode()
{
    const QColor fill = PaintedColors::fillOf(*m_item);
    m_barcode->setItemFillColor(fill == ItemColors::nearWhite ? ItemColors::transparent : fill);
    m_barcode->setItemTextColor(PaintedColors::barsOf(*m_barcode));
    m_barsAreClear = m_barcode->getItemTextColor() == ItemColors::transparent;
}

void PrintCopy::prepareText()
{
    // The text is laid out as it was: the item has no cause to fit itself to it.
    m_text->document()->blockSignals(true);
    sharpen(*m_text->document());
    if (PaintedColors::fillIsGradient(*m_item))
        separateBackdrop();
}

void PrintCopy::separateBackdrop()
{
    const std::unique_ptr<RectangleItem> backdrop = backdropOf(*m_text);
    const double stretch = m_text->getItemShape() == MobraTypes::LabelTextShape
        ? std::max({ 1.0, m_text->getItemScaleX(), m_text->getItemScaleY() })
        : 1.0;
    m_backdrop = std::make_unique<PrintCopy>(*backdrop, m_scaling * stretch, m_mode, m_colors);
    m_text->setItemFillColor(ItemColors::transparent);
}

bool PrintCopy::reduceTo(const QColor &ink)
{
    const QColor pen = PaintedColors::penOf(*m_item);
    bool prints = m_backdrop && m_backdrop->reduceTo(ink);
    if (m_text)
        prints |= reduceText(ink);
    prints |= reduceShape(ink);
    if (PaintedColors::hasEndsOnly(*m_item))
        prints = reduceEnds(pen, ink);
    restoreClearPen();
    if (m_barsAreClear)
        m_barcode->setItemTextColor(ItemColors::transparent);
    preparePicture();
    return prints;
}

QColor PrintCopy::numberOf(const QColor &color) const
{
    return QColor::fromRgb(numbered(QRgb(std::max<qsizetype>(m_colors.indexOf(color, 1), 0))));
}

bool PrintCopy::numberInks()
{
    if (m_mode == Mode::Negative || m_backdrop || (!m_text && !m_barcode) || m_colors.size() > mostNumbers)
        return false;
    const auto numbered = [this](const QColor &color) { return numberOf(color); };
    const QColor fill = m_fillable ? m_fillable->getItemFillColor() : m_barcode->getItemFillColor();
    const bool isFilled = fill != ItemColors::transparent && fill != ItemColors::nearWhite;
    if (m_barcode) {
        if (isFilled)
            m_barcode->setItemFillColor(numberOf(fill));
        if (!m_barsAreClear)
            m_barcode->setItemTextColor(numberOf(m_barcode->getItemTextColor()));
        return true;
    }
    TextColors::replace(
        *m_text, numbered, [&](const QColor &pixel) { return numberOf(nearestColor(pixel, m_colors)); });
    m_text->setItemFillColor(isFilled ? numberOf(fill) : ItemColors::transparent);
    if (!m_penIsClear)
        m_text->setItemPenColor(numberOf(m_text->getItemPenColor()));
    return true;
}

bool PrintCopy::reduceText(const QColor &ink)
{
    const auto prints = [&](const QColor &color) { return (color == ink) == (m_mode == Mode::Positive); };
    const auto reduced
        = [&](const QColor &color) { return prints(color) ? ItemColors::black : ItemColors::white; };
    const QList<QColor> colors = TextColors::of(*m_text);
    TextColors::replace(
        *m_text, reduced, [&](const QColor &pixel) { return reduced(nearestColor(pixel, m_colors)); });
    return std::ranges::any_of(colors, prints);
}

bool PrintCopy::reduceShape(const QColor &ink)
{
    // The text's own reduction would give all letters one colour.
    if (m_text)
        return m_mode == Mode::Negative ? m_text->FillableItem::resetItemColorsNegative(ink)
                                        : m_text->FillableItem::resetItemColors(ink, false, false);
    return m_mode == Mode::Negative ? m_item->resetItemColorsNegative(ink)
                                    : m_item->resetItemColors(ink, false, false);
}

/// A reduction takes a line without a pen style for one of which nothing is painted.
bool PrintCopy::reduceEnds(const QColor &pen, const QColor &ink)
{
    const bool prints = (pen == ink) == (m_mode == Mode::Positive);
    if (auto *colored = dynamic_cast<ColoredItem *>(m_item.get()))
        colored->setItemPenColor(prints ? ItemColors::black : ItemColors::white);
    return prints;
}

void PrintCopy::restoreClearPen()
{
    auto *colored = dynamic_cast<ColoredItem *>(m_item.get());
    if (!colored || !m_penIsClear)
        return;
    // The reduction has made it opaque white, which would clear what shows through it.
    colored->setItemPenColor(ItemColors::transparent);
    if (!m_fillable || m_fillable->getPreprintedImage().isNull())
        return;
    m_fillable->setPreprintedImage({});
    m_fillable->preparePrintImage();
}

void PrintCopy::preparePicture()
{
    if (!m_fillable || m_fillable->getPreprintedImage().isNull())
        return;
    QImage picture = m_fillable->getPreprintedImage();
    m_fillable->setPreprintedImage({}); // the only owner now, so that the changes copy no pixels
    picture = std::move(picture).mirrored(m_item->getItemHorizontalMirror(), m_item->getItemVerticalMirror());
    picture.setDevicePixelRatio(m_scaling);
    m_fillable->setPreprintedImage(picture);
    alignPicture();
}

void PrintCopy::alignPicture()
{
    if (m_graphics->transform().type() > QTransform::TxTranslate)
        return;
    // Dot upon dot: between two dots, Qt could draw a row twice or leave one out.
    const QPointF corner = m_graphics->mapToScene(QPointF()) * m_scaling;
    const QPointF whole(std::round(corner.x()), std::round(corner.y()));
    m_graphics->setPos(m_graphics->pos() + (whole - corner) / m_scaling);
}

bool PrintCopy::outlineIsPainted() const
{
    return m_fillable && PaintedColors::penOf(*m_item) != ItemColors::transparent;
}

void PrintCopy::handTo(QGraphicsScene &scene)
{
    if (m_barcode) {
        static_cast<void>(m_item.release());
        scene.addItem(new PlateBarcode(std::unique_ptr<BarcodeItem>(m_barcode)));
        return;
    }
    if (m_backdrop)
        m_backdrop->handTo(scene);
    const bool asPicture = m_item->addItemToPrintScene(&scene, 1.0);
    if (asPicture && outlineIsPainted()) {
        // The picture ends within the outline, which is therefore drawn once more over it.
        m_fillable->setPreprintedImage({});
        m_fillable->setItemFillColor(ItemColors::transparent);
        scene.addItem(m_graphics);
    } else if (asPicture) {
        return;
    }
    static_cast<void>(m_item.release()); // the scene's own now
}
