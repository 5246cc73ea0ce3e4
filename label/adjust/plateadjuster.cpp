// SPDX-License-Identifier: BSD-3-Clause
#include "label/adjust/plateadjuster.h"

#include "items/core/limits.h"
#include "label/adjust/platebits.h"
#include "label/labellimits.h"
#include "label/onebit.h"
#include "label/printlimits.h"
#include "label/wording.h"

#include <QTransform>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double millimetresPerInch = 25.4;

/// A sound label at the resolutions of its print and of its content.
Problems scaleProblems(const LabelDocument &label, double dpi, double scale)
{
    if (scale == 1.0 || !label.problems().isEmpty())
        return {};
    const double scaled = dpi * scale;
    if (scaled < LabelLimits::MinDpi || scaled > LabelLimits::MaxDpi)
        return { { {}, {}, u"%1 dpi cannot be scaled by %2"_s.arg(dpi).arg(scale),
            u"the product of both has to be from %1 to %2"_s.arg(LabelLimits::MinDpi)
                .arg(LabelLimits::MaxDpi) } };
    const Problems unscaled = printProblems(label, dpi);
    if (!unscaled.isEmpty() || printProblems(label, scaled).isEmpty())
        return unscaled;
    return { { {}, {}, u"%1 dpi, scaled by %2, are too many dots for the label"_s.arg(dpi).arg(scale),
        u"use a lower resolution or a smaller scale"_s } };
}

/// A label whose whole print lies beyond its edges is not what anybody wants.
Problems offsetProblems(QSizeF printed, QPointF offset)
{
    if (std::abs(offset.x()) < printed.width() && std::abs(offset.y()) < printed.height())
        return {};
    return { { {}, {}, u"the offset moves everything off the label"_s,
        u"the label is %1 mm x %2 mm as it is printed"_s.arg(
            Wording::number(printed.width()), Wording::number(printed.height())) } };
}

/// Of both margins that are left, the smaller one where they differ by a dot; negative for what is cut.
int marginOf(int page, int content)
{
    return (page - content) >> 1;
}

bool areThere(const std::vector<Plate> &plates, Problems &problems)
{
    if (std::ranges::none_of(plates, [](const Plate &plate) { return plate.image.isNull(); }))
        return true;
    problems.append({ {}, {}, u"not enough memory for the plates"_s, u"use a lower resolution"_s });
    return false;
}

} // namespace

std::optional<PlateAdjuster> PlateAdjuster::of(const LabelDocument &label, const SeparationOptions &options,
    const PrintAdjustment &adjustment, Problems &problems)
{
    Problems found;
    const std::optional<InkMapping> inks = InkMapping::of(label.inks(), adjustment, found);
    found += scaleProblems(label, options.dpi, adjustment.scale);
    found += offsetProblems(
        adjustment.printedSize(label.pageSize()), adjustment.offset.millimetres(options.dpi));
    problems += found;
    return found.isEmpty() ? std::optional(PlateAdjuster(label, options, adjustment, *inks)) : std::nullopt;
}

PlateAdjuster::PlateAdjuster(const LabelDocument &label, const SeparationOptions &options,
    const PrintAdjustment &adjustment, const InkMapping &inks)
    : m_adjustment(adjustment)
    , m_inks(inks)
    , m_separation(options)
    , m_page(label.pageSizeInDots(options.dpi))
    , m_offset((adjustment.offset.millimetres(options.dpi) / millimetresPerInch * options.dpi).toPoint())
    , m_dpi(options.dpi)
    , m_isNegative(options.negative)
{
    m_separation.dpi *= adjustment.scale;
    // Inks are put together, and black is kept, before the others become negative.
    m_separation.negative = options.negative && m_inks.isPlain() && !m_inks.kept();
}

bool PlateAdjuster::apply(Separation &separation, Problems &problems) const
{
    for (PrintedBarcode &barcode : separation.barcodes)
        barcode.moduleWidth *= m_adjustment.scale;
    if (separation.plates.empty())
        return true;
    replaceInks(separation.plates);
    invertOthers(separation.plates);
    for (std::size_t i = 0; i < separation.plates.size(); ++i) {
        Plate &plate = separation.plates[i];
        plate.image = moved(plate.image, m_isNegative && i != m_inks.kept());
        plate.dots = OneBit::countBlack(plate.image);
        plate.dpi = m_dpi;
    }
    return areThere(separation.plates, problems);
}

void PlateAdjuster::replaceInks(std::vector<Plate> &plates) const
{
    if (m_inks.isPlain())
        return;
    std::vector<Plate> printed(std::size_t(m_inks.printed().size()));
    for (std::size_t i = 0; i < plates.size(); ++i) {
        const std::size_t target = m_inks.targets()[i];
        Plate &plate = printed[target];
        if (plate.image.isNull())
            plate = plates[i];
        else
            PlateBits::add(plate.image, plates[i].image);
        plate.ink = m_inks.printed()[qsizetype(target)];
    }
    plates = std::move(printed);
}

void PlateAdjuster::invertOthers(std::vector<Plate> &plates) const
{
    const bool inverts = m_isNegative && !m_separation.negative;
    for (std::size_t i = 0; i < plates.size(); ++i) {
        if (i == m_inks.kept())
            continue;
        if (inverts)
            plates[i].image.invertPixels();
        if (m_inks.kept())
            PlateBits::clear(plates[i].image, plates[*m_inks.kept()].image);
    }
}

std::optional<Separation> PlateAdjuster::seen(Separation separation, Problems &problems) const
{
    replaceInks(separation.plates);
    for (Plate &plate : separation.plates) {
        const QSize size = plate.image.size();
        const QRect part = printedPart(size);
        if (part.contains(plate.image.rect()))
            continue;
        const bool fill = m_separation.negative;
        const QImage printed = PlateBits::placed(plate.image, part.size(), -part.topLeft(), fill);
        plate.image = PlateBits::placed(printed, size, part.topLeft(), fill);
    }
    return areThere(separation.plates, problems) ? std::optional(std::move(separation)) : std::nullopt;
}

QPoint PlateAdjuster::placeOf(QSize content) const
{
    return { marginOf(m_page.width(), content.width()), marginOf(m_page.height(), content.height()) };
}

QRect PlateAdjuster::printedPart(QSize content) const
{
    const QRectF page(QPointF(), m_adjustment.turnsOnSide() ? m_page.transposed() : m_page);
    QTransform back;
    back.translate(m_page.width() / 2.0, m_page.height() / 2.0);
    if (m_adjustment.mirror)
        back.scale(-1.0, 1.0);
    back.rotate(-m_adjustment.rotation);
    back.translate(-page.width() / 2.0, -page.height() / 2.0);
    const QRectF part = back.mapRect(page & page.translated(-m_offset));
    return part.toRect().translated(-placeOf(content));
}

QImage PlateAdjuster::moved(const QImage &plate, bool fill) const
{
    QImage image = plate;
    if (image.size() != m_page)
        image = PlateBits::placed(image, m_page, placeOf(image.size()), fill);
    if (m_adjustment.mirror)
        image = PlateBits::mirrored(image);
    image = PlateBits::turned(image, m_adjustment.rotation / 90);
    if (!m_offset.isNull())
        image = PlateBits::placed(image, image.size(), m_offset, fill);
    const int dotsPerMetre = Limits::toInt(m_dpi / millimetresPerInch * 1000.0);
    if (image.dotsPerMeterX() != dotsPerMetre) {
        image.setDotsPerMeterX(dotsPerMetre);
        image.setDotsPerMeterY(dotsPerMetre);
    }
    return image;
}
