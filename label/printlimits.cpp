// SPDX-License-Identifier: BSD-3-Clause
#include "label/printlimits.h"

#include "items/core/item.h"
#include "items/core/limits.h"
#include "label/labellimits.h"
#include "label/paintedcolors.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

bool fits(QSize dots)
{
    return std::max(dots.width(), dots.height()) <= Limits::MaxImageSide
        && qint64(dots.width()) * dots.height() <= Limits::MaxImagePixels;
}

/// The highest whole resolution at which the page fits.
int highestDpi(const LabelDocument &document)
{
    const QSizeF inches = document.pageSize() / 25.4;
    const double bySide = Limits::MaxImageSide / std::max(inches.width(), inches.height());
    const double byArea = std::sqrt(double(Limits::MaxImagePixels) / (inches.width() * inches.height()));
    // One more, because sides are rounded to whole dots.
    int dpi = Limits::toInt(std::min({ bySide, byArea, LabelLimits::MaxDpi })) + 1;
    while (dpi > 1 && !fits(document.pageSizeInDots(dpi)))
        --dpi;
    return dpi;
}

Problems pageProblems(const LabelDocument &document, double dpi)
{
    const QSize dots = document.pageSizeInDots(dpi);
    if (dots.isEmpty())
        return { { {}, u"/page"_s, u"the page is smaller than a dot at %1 dpi"_s.arg(dpi),
            u"use a larger page or a higher resolution"_s } };
    if (fits(dots))
        return {};
    return { { {}, u"/page"_s,
        u"the page has %1 x %2 dots at %3 dpi, which is too many"_s.arg(dots.width())
            .arg(dots.height())
            .arg(dpi),
        u"use at most %1 dpi or a smaller page"_s.arg(highestDpi(document)) } };
}

/// Gradients print through pictures of their whole size, which are all in memory together.
Problems gradientProblems(const LabelDocument &document, double scaling)
{
    double dots = 0.0;
    double longestSide = 0.0;
    for (const std::unique_ptr<Item> &item : document.items()) {
        if (!item->getItemIsVisible() || !PaintedColors::fillIsGradient(*item))
            continue;
        const QSizeF size = item->getItemSize() * scaling;
        dots += size.width() * size.height();
        longestSide = std::max({ longestSide, size.width(), size.height() });
    }
    if (dots <= LabelLimits::GradientPixels && longestSide <= Limits::MaxImageSide)
        return {};
    return { { {}, u"/items"_s,
        u"the gradients of the document are too large: they may have %1 dots together and %2 along a side"_s
            .arg(LabelLimits::GradientPixels)
            .arg(Limits::MaxImageSide),
        u"use smaller or fewer gradients, or a lower resolution"_s } };
}

} // namespace

Problems printProblems(const LabelDocument &document, double dpi)
{
    if (!(dpi >= LabelLimits::MinDpi && dpi <= LabelLimits::MaxDpi))
        return { { {}, {}, u"%1 dpi is no resolution to print in"_s.arg(dpi),
            u"use %1 to %2 dpi"_s.arg(LabelLimits::MinDpi).arg(LabelLimits::MaxDpi) } };
    return pageProblems(document, dpi) + gradientProblems(document, dpi / document.designDpi());
}
