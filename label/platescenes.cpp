// SPDX-License-Identifier: BSD-3-Clause
#include "label/platescenes.h"

#include "items/core/item.h"
#include "items/core/itemcolors.h"
#include "label/printcopy.h"

namespace {

/// Paper and inks; the items compare their colours with plain RGB.
QList<QColor> colorsOf(const LabelDocument &document)
{
    QList<QColor> colors { QColor::fromRgb(document.paper().rgb()) };
    for (const Ink &ink : document.inks())
        colors += QColor::fromRgb(ink.color.rgb());
    return colors;
}

} // namespace

PlateScenes::PlateScenes(const LabelDocument &document, const SeparationOptions &options)
    : m_document(document)
    , m_options(options)
    , m_colors(colorsOf(document))
    , m_scaling(options.dpi / document.designDpi())
{
}

QSize PlateScenes::dots() const
{
    return m_document.pageSizeInDots(m_options.dpi);
}

QRgb PlateScenes::background() const
{
    return m_options.negative ? ItemColors::blackRgb : ItemColors::whiteRgb;
}

/// When inks print over each other, what has nothing in the ink stays out of its plate.
bool PlateScenes::takesPart(Item &item, const QColor &ink) const
{
    if (!item.getItemIsVisible())
        return false;
    return !m_options.overprint || !item.getAllowOverprint()
        || PrintCopy(item, m_scaling, PrintCopy::Mode::Positive, m_colors).reduceTo(ink);
}

void PlateScenes::add(QGraphicsScene &scene, Item &item, qsizetype ink) const
{
    const QColor &color = m_colors[ink + 1];
    if (!takesPart(item, color))
        return;
    const auto mode = m_options.negative ? PrintCopy::Mode::Negative : PrintCopy::Mode::Positive;
    PrintCopy copy(item, m_scaling, mode, m_colors);
    copy.reduceTo(color);
    copy.handTo(scene);
}

bool PlateScenes::addNumbered(QGraphicsScene &scene, Item &item) const
{
    if (m_options.negative || m_options.overprint)
        return false;
    if (!item.getItemIsVisible())
        return true;
    PrintCopy copy(item, m_scaling, PrintCopy::Mode::Positive, m_colors);
    if (!copy.numberInks())
        return false;
    copy.handTo(scene);
    return true;
}
