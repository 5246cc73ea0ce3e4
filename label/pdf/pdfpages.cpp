// SPDX-License-Identifier: BSD-3-Clause
#include "label/pdf/pdfpages.h"

#include "label/itempainter.h"
#include "label/labeldocument.h"
#include "label/labellimits.h"
#include "label/onebit.h"
#include "label/outputfailure.h"
#include "label/pdf/pdfstream.h"
#include "label/pdf/stablehashes.h"
#include "label/wording.h"

#include <QFileDevice>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <cmath>
#include <deque>

using namespace Qt::StringLiterals;

namespace {

constexpr double millimetresPerInch = 25.4;
constexpr double pointsPerInch = 72.0;
/// The resolution of what Qt cannot write as vectors, which are conical gradients.
constexpr int unitsPerInch = 300;

/// In dots: what nobody sees, but more than numbers lose by rounding.
constexpr double hair = 1e-3;

QString nameOf(const QIODevice &device)
{
    const auto *file = qobject_cast<const QFileDevice *>(&device);
    return file ? file->fileName() : QString();
}

QPageLayout layoutOf(QSizeF roundedPoints)
{
    const QPageSize size(roundedPoints, QPageSize::Point, u"label"_s, QPageSize::ExactMatch);
    return { size, QPageLayout::Portrait, QMarginsF() };
}

bool isPageSide(double millimetres)
{
    return millimetres >= LabelLimits::MinPageSide && millimetres <= LabelLimits::MaxPageSide;
}

bool refuse(Problems &problems, const QString &what, const QString &advice = {})
{
    problems.append({ {}, {}, what, advice });
    return false;
}

bool isPlate(const QImage &plate, Problems &problems)
{
    return plate.format() == QImage::Format_Mono
        || refuse(problems, u"the picture is no plate of one bit per dot"_s);
}

bool isResolution(double dpi, Problems &problems)
{
    if (dpi >= LabelLimits::MinDpi && dpi <= LabelLimits::MaxDpi)
        return true;
    return refuse(problems, u"%1 dpi is no resolution"_s.arg(dpi),
        u"use %1 to %2 dpi"_s.arg(LabelLimits::MinDpi).arg(LabelLimits::MaxDpi));
}

} // namespace

class PdfPages::Writing
{
public:
    Writing(QIODevice &device, const PdfInformation &information, Documents documents)
        : m_file(nameOf(device))
        , m_documents(documents)
        , m_stream(device, information.created)
        , m_writer(&m_stream)
    {
        m_stream.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
        m_writer.setPdfVersion(QPagedPaintDevice::PdfVersion_1_6); // the first that has pages of 10 m
        m_writer.setTitle(information.title);
        m_writer.setCreator(information.creator);
        m_writer.setResolution(unitsPerInch);
    }

    [[nodiscard]] int count() const { return m_count; }

    /// Qt knows pages of whole points alone. Its page is the exact one with a little more on the right and at
    /// the bottom, from which it measures heights.
    void beginPage(QSizeF points)
    {
        const QSizeF rounded(std::ceil(points.width()), std::ceil(points.height()));
        m_writer.setPageLayout(layoutOf(rounded));
        if (m_count == 0)
            m_painter.begin(&m_writer);
        else
            m_writer.newPage(); // writes the one before
        m_stream.setPageSize(points, rounded);
        ++m_count;
        m_page = points / pointsPerInch * millimetresPerInch;
        m_painter.setRenderHint(QPainter::LosslessImageRendering);
        m_painter.setRenderHint(QPainter::NonCosmeticBrushPatterns);
        m_offset = (rounded.height() - points.height()) / pointsPerInch * unitsPerInch;
    }

    /// Runs a function that paints in units of which there are some in an inch, from a point in millimetres.
    /// It leaves the painter as it was, but for the transform: to save it takes Qt longer than most items.
    template <typename Paint> void paintAt(QPointF topLeft, double perInch, Paint &&paint)
    {
        const StableHashes stable;
        const QPointF place = topLeft / millimetresPerInch * unitsPerInch;
        m_painter.setWorldTransform(QTransform::fromTranslate(place.x(), m_offset + place.y())
                                        .scale(unitsPerInch / perInch, unitsPerInch / perInch));
        paint(m_painter);
    }

    void paint(const LabelDocument &document, QPointF topLeft, Paper paper)
    {
        const QRectF page(QPointF(), document.pageSizeInUnits());
        const bool isClipped = !isPage(topLeft, document.pageSize());
        paintAt(topLeft, document.designDpi(), [&](QPainter &painter) {
            if (isClipped) {
                painter.save();
                painter.setClipRect(page);
            }
            paintAll(painter, document, paper);
            if (isClipped)
                painter.restore();
        });
    }

    void paint(const LabelDocument &document, const QTransform &onPage, const QRectF &area, Paper paper)
    {
        const QRectF page(QPointF(), document.pageSizeInUnits());
        paintAt({}, millimetresPerInch, [&](QPainter &painter) {
            const double millimetresPerUnit = millimetresPerInch / document.designDpi();
            painter.save();
            painter.setClipRect(area);
            painter.setWorldTransform(
                QTransform::fromScale(millimetresPerUnit, millimetresPerUnit) * onPage, true);
            painter.setClipRect(page, Qt::IntersectClip);
            paintAll(painter, document, paper);
            painter.restore();
        });
    }

    /// The picture of a plate. Those of the last plates are kept: to one that is the same, Qt only refers.
    [[nodiscard]] QImage whiteOf(const QImage &plate)
    {
        const auto known = std::ranges::find(m_plates, plate.cacheKey(), &Known::plate);
        if (known != m_plates.end())
            return known->white;
        if (m_plates.size() == LabelLimits::MaxInks)
            m_plates.pop_front();
        m_plates.push_back({ plate.cacheKey(), OneBit::withWhiteSet(plate) });
        return m_plates.back().white;
    }

    [[nodiscard]] bool canWrite(Problems &problems) const
    {
        if (m_isComplete)
            return refuse(problems, u"the file is complete"_s);
        return !m_stream.hasFailed() || refuseFile(problems);
    }

    /// Whether there is a page to paint on.
    [[nodiscard]] bool canPaint(Problems &problems) const
    {
        return m_count > 0 ? canWrite(problems) : refuse(problems, u"no page has been begun"_s);
    }

    [[nodiscard]] bool isSound(const LabelDocument &document, Problems &problems) const
    {
        if (m_documents == Documents::Sound)
            return true;
        const Problems found = document.problems();
        problems += found;
        return found.isEmpty();
    }

    [[nodiscard]] bool finish(Problems &problems)
    {
        m_painter.end();
        m_isComplete = true;
        return m_stream.finish(m_count) || refuseFile(problems);
    }

private:
    static void paintAll(QPainter &painter, const LabelDocument &document, Paper paper)
    {
        if (paper == Paper::Painted)
            painter.fillRect(QRectF(QPointF(), document.pageSizeInUnits()), document.paper());
        ItemPainter::paint(painter, document);
    }

    /// Whether a rectangle is the whole page, at which everything ends anyway.
    [[nodiscard]] bool isPage(QPointF topLeft, QSizeF size) const
    {
        constexpr double nothing = 1e-6; // millimetres
        return topLeft.isNull() && std::abs(size.width() - m_page.width()) < nothing
            && std::abs(size.height() - m_page.height()) < nothing;
    }

    bool refuseFile(Problems &problems) const
    {
        problems.append(OutputFailure::ofFile(m_file, m_stream.failure()));
        return false;
    }

    struct Known
    {
        qint64 plate;
        QImage white;
    };

    QString m_file;
    Documents m_documents;
    PdfStream m_stream;
    QPdfWriter m_writer;
    QPainter m_painter;
    std::deque<Known> m_plates;
    QSizeF m_page; ///< in millimetres
    double m_offset = 0.0; ///< of its top from that of Qt's page
    int m_count = 0;
    bool m_isComplete = false;
};

PdfPages::PdfPages(QIODevice &device, const PdfInformation &information, Documents documents)
    : m_writing(std::make_unique<Writing>(device, information, documents))
{
}

PdfPages::~PdfPages() = default;

bool PdfPages::addPage(const LabelDocument &document, Problems &problems, Paper paper)
{
    if (!m_writing->isSound(document, problems) || !beginPage(document.pageSize(), problems))
        return false;
    m_writing->paint(document, {}, paper);
    return true;
}

bool PdfPages::addPlate(const QImage &plate, double dpi, Problems &problems)
{
    if (!isPlate(plate, problems) || !isResolution(dpi, problems) || !m_writing->canWrite(problems))
        return false;
    // Programs that round pages up to whole dots must not find one more.
    m_writing->beginPage((QSizeF(plate.size()) - QSizeF(hair, hair)) / dpi * pointsPerInch);
    return placePlate(plate, dpi, {}, problems);
}

bool PdfPages::beginPage(QSizeF size, Problems &problems)
{
    if (!isPageSide(size.width()) || !isPageSide(size.height()))
        return refuse(problems,
            u"a page of %1 mm x %2 mm is out of range"_s.arg(
                Wording::number(size.width()), Wording::number(size.height())),
            u"use sides from %1 to %2 mm"_s.arg(LabelLimits::MinPageSide).arg(LabelLimits::MaxPageSide));
    if (!m_writing->canWrite(problems))
        return false;
    m_writing->beginPage(size / millimetresPerInch * pointsPerInch);
    return true;
}

bool PdfPages::place(const LabelDocument &document, QPointF topLeft, Problems &problems, Paper paper)
{
    if (!m_writing->canPaint(problems) || !m_writing->isSound(document, problems))
        return false;
    m_writing->paint(document, topLeft, paper);
    return true;
}

bool PdfPages::place(const LabelDocument &document, const QTransform &onPage, const QRectF &area,
    Problems &problems, Paper paper)
{
    if (!m_writing->canPaint(problems) || !m_writing->isSound(document, problems))
        return false;
    m_writing->paint(document, onPage, area, paper);
    return true;
}

bool PdfPages::placePlate(const QImage &plate, double dpi, QPointF topLeft, Problems &problems)
{
    if (!m_writing->canPaint(problems) || !isPlate(plate, problems) || !isResolution(dpi, problems))
        return false;
    const QImage white = m_writing->whiteOf(plate);
    if (white.isNull())
        return refuse(problems, u"not enough memory for the plate"_s);
    // Programs that show PDFs stretch pictures to all dots that these touch: a hair less than whole dots.
    const QRectF place = QRectF(QPointF(), QSizeF(plate.size())).adjusted(hair, hair, -hair, -hair);
    m_writing->paintAt(topLeft, dpi, [&](QPainter &painter) { painter.drawImage(place, white); });
    return true;
}

bool PdfPages::placeLine(QLineF line, double width, Problems &problems)
{
    if (!m_writing->canPaint(problems))
        return false;
    m_writing->paintAt({}, pointsPerInch, [&](QPainter &painter) {
        const QPen before = painter.pen();
        painter.setPen(QPen(Qt::black, width, Qt::SolidLine, Qt::FlatCap));
        const double pointsPerMillimetre = pointsPerInch / millimetresPerInch;
        painter.drawLine(QLineF(line.p1() * pointsPerMillimetre, line.p2() * pointsPerMillimetre));
        painter.setPen(before);
    });
    return true;
}

int PdfPages::count() const
{
    return m_writing->count();
}

bool PdfPages::finish(Problems &problems)
{
    return m_writing->canPaint(problems) && m_writing->finish(problems);
}
