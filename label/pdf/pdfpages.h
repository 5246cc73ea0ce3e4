// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QDateTime>
#include <QLineF>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QTransform>

#include <memory>

class LabelDocument;
class QIODevice;
class QImage;

/// What a PDF tells about itself.
struct PdfInformation
{
    QString title = {};
    QString creator = QStringLiteral("VXLabel"); ///< the program that made what is shown
    /// When the file was made; not in the file if invalid. Nothing else in it depends on when, or in which
    /// time zone, it is written.
    QDateTime created = {};
};

/// Writes a PDF of one or many pages, each to the device as soon as it is complete: what is kept of earlier
/// pages is a few numbers, the fonts' used letters and where shared pictures are. Paths, texts, barcodes and
/// drawings are vectors, with fonts embedded; pictures have their own pixels, without loss. Equal input gives
/// equal bytes.
///
///     AtomicFile file(path);
///     bool done = file.open(false, problems);
///     PdfPages pages(file.device(), { title });
///     while (done && next(document))
///         done = pages.addPage(document, problems);
///     done = done && pages.finish(problems) && file.commit(problems);
///
/// Lengths are in millimetres, from the page's top left. What is refused is told in problems, and not in the
/// file. Needs a QGuiApplication, as fonts do.
class VX_LABEL_EXPORT PdfPages
{
public:
    /// Whether the colour of the stock is painted below the items. What is printed on the stock itself, or on
    /// white, needs no paint there.
    enum class Paper { Clear, Painted };

    /// Whether documents may have problems(), or their user knows that they have none.
    enum class Documents { Unknown, Sound };

    /// A hairline in points, as for crop marks.
    static constexpr double Hairline = 0.25;

    /// The device is open for writing, and outlives the pages. Nothing is written before the first page.
    explicit PdfPages(
        QIODevice &device, const PdfInformation &information = {}, Documents documents = Documents::Unknown);
    /// Without finish() before, the file is none that could be read.
    ~PdfPages();
    Q_DISABLE_COPY_MOVE(PdfPages)

    /// A page that shows a document and is of its size, exact to a millionth of a point. False, and no page,
    /// when the document has problems() or the device has failed.
    [[nodiscard]] bool addPage(const LabelDocument &document, Problems &problems, Paper paper = Paper::Clear);
    /// A page that a plate fills, dot by dot: its sides are whole dots, so up to half a dot from those of the
    /// label.
    [[nodiscard]] bool addPlate(const QImage &plate, double dpi, Problems &problems);

    /// Begins a page, and completes the one before. Sides are from 0.1 mm to 10 m.
    [[nodiscard]] bool beginPage(QSizeF size, Problems &problems);
    /// Paints a document on the page that has been begun, with its own page's top left at a point. Nothing of
    /// it shows beyond its own page. The document stays the caller's, and may change afterwards.
    [[nodiscard]] bool place(
        const LabelDocument &document, QPointF topLeft, Problems &problems, Paper paper = Paper::Clear);
    /// The same with its page scaled, mirrored or turned: onPage leads from there to the page that has been
    /// begun. Nothing shows beyond the area either.
    [[nodiscard]] bool place(const LabelDocument &document, const QTransform &onPage, const QRectF &area,
        Problems &problems, Paper paper = Paper::Clear);
    /// Paints a plate (QImage::Format_Mono, of which 1 prints) in black on white, as a picture of one bit per
    /// dot and of as many dots per inch.
    [[nodiscard]] bool placePlate(const QImage &plate, double dpi, QPointF topLeft, Problems &problems);
    /// A black line, of a width in points.
    [[nodiscard]] bool placeLine(QLineF line, double width, Problems &problems);

    /// How many pages have been begun.
    [[nodiscard]] int count() const;
    /// Completes the file, except for closing the device. The last call. False if there are no pages, or the
    /// device did not take everything: a full disk may show as late as here.
    [[nodiscard]] bool finish(Problems &problems);

private:
    class Writing;
    std::unique_ptr<Writing> m_writing;
};
