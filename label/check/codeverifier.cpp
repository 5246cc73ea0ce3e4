// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/codeverifier.h"

#include "items/barcode/barcodeitem.h"
#include "label/check/codecontent.h"
#include "label/check/codedecoder.h"
#include "label/check/decoderprocess.h"
#include "label/check/pageplace.h"
#include "label/check/scannerlight.h"
#include "label/jsonpointer.h"
#include "label/proof.h"
#include "label/wording.h"

#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;
using ScannerLight::Light;

namespace {

/// Bare paper around what is looked at, in modules: readers need some.
constexpr double bareModules = 4.0;
/// A reader misses modules of few pixels now and then, which a camera would show larger.
constexpr std::array enlargements { 1, 2, 3 };
/// Larger pictures are not enlarged.
constexpr qint64 mostPixels = 16'000'000;

QString nameOf(const BarcodeItem &barcode, const PrintedBarcode &printed)
{
    return printed.symbology.isEmpty() ? Wording::item(barcode)
                                       : u"%1 (%2)"_s.arg(Wording::item(barcode), printed.symbology);
}

QImage enlarged(const QImage &image, int factor)
{
    return factor == 1 ? image : image.scaled(image.size() * factor);
}

/// What becomes of negative plates.
Separation positiveOf(Separation negative)
{
    for (Plate &plate : negative.plates)
        plate.image.invertPixels();
    return negative;
}

/// The picture with the barcode upright.
QImage turnedBack(const QImage &image, const BarcodeItem &barcode)
{
    const QTransform transform = barcode.sceneTransform();
    const double degrees = std::atan2(transform.m12(), transform.m11()) * 180.0 / M_PI;
    return image.transformed(QTransform().rotate(-90.0 * std::round(degrees / 90.0)));
}

} // namespace

/// The plates on the stock.
class CodeVerifier::Scan
{
public:
    Scan(const LabelDocument &document, const Separation &separation, const SeparationOptions &options)
        : m_composed(proofOf(options.negative ? positiveOf(separation) : separation))
        , m_scaling(options.dpi / document.designDpi())
        , m_paper(separation.paper.rgb())
    {
    }

    /// What a scanner sees of the barcode and the free space around it, in black and white.
    [[nodiscard]] QImage of(const BarcodeItem &barcode, const PrintedBarcode &printed, Light light) const
    {
        const QRectF zone = PagePlace::zoneOf(barcode, printed).boundingRect();
        const QRect dots
            = QRectF(zone.topLeft() * m_scaling, zone.size() * m_scaling).toAlignedRect() & m_composed.rect();
        const int bare = int(std::ceil(bareModules * std::max(printed.dots.width(), 1.0)));
        QImage seen(dots.size() + QSize(2 * bare, 2 * bare), QImage::Format_Grayscale8);
        seen.fill(255);
        const std::array<uchar, 256> greys = greysIn(light);
        for (int y = 0; y < dots.height(); ++y) {
            const uchar *from = m_composed.constScanLine(dots.top() + y) + dots.left();
            std::transform(from, from + dots.width(), seen.scanLine(bare + y) + bare,
                [&greys](uchar inks) { return greys[inks]; });
        }
        return seen;
    }

private:
    /// What is seen of each set of inks: 0 is dark.
    [[nodiscard]] std::array<uchar, 256> greysIn(Light light) const
    {
        std::array<uchar, 256> greys {};
        const QList<QRgb> colors = m_composed.colorTable();
        for (qsizetype i = 0; i < colors.size(); ++i) {
            greys[std::size_t(i)] = ScannerLight::isDark(colors[i], m_paper, light) ? 0 : 255;
        }
        return greys;
    }

    QImage m_composed; ///< indexed by the inks that lie on each other
    double m_scaling; ///< dots per scene unit
    QRgb m_paper;
};

bool CodeVerifier::isPossible()
{
    return CodeDecoder::isAvailable();
}

Problem CodeVerifier::unavailable()
{
    return { {}, {}, u"this build cannot read barcodes"_s,
        u"install ZXing 1.4 (libzxing-dev), build it again, or leave --verify out"_s };
}

CodeVerifier::CodeVerifier()
    : m_decoder(std::make_unique<DecoderProcess>())
{
}

CodeVerifier::~CodeVerifier() = default;

Problems CodeVerifier::takeNotes()
{
    return std::exchange(m_notes, {});
}

void CodeVerifier::note(const QString &about, const Problem &problem)
{
    if (m_noted.contains(about))
        return;
    m_noted.insert(about);
    m_notes.append(problem);
}

Problems CodeVerifier::verify(
    const LabelDocument &document, const Separation &separation, const SeparationOptions &options)
{
    Problems problems;
    if (separation.barcodes.empty())
        return problems;
    const Scan scan(document, separation, options);
    for (const PrintedBarcode &printed : separation.barcodes) {
        const Item &item = *document.items()[std::size_t(printed.item)];
        if (printed.isRefused())
            continue;
        if (std::optional<Problem> problem = verify(dynamic_cast<const BarcodeItem &>(item), printed, scan)) {
            problem->where = JsonPointer::element(u"/items"_s, printed.item);
            problems.append(*problem);
        }
    }
    return problems;
}

std::optional<Problem> CodeVerifier::verify(
    const BarcodeItem &barcode, const PrintedBarcode &printed, const Scan &scan)
{
    const std::optional<QByteArray> formats = CodeContent::formatsOf(barcode);
    if (!formats) {
        const QString name = printed.symbology.isEmpty() ? u"this symbology"_s : printed.symbology;
        const bool isShort = CodeContent::isKnown(barcode);
        const QString why = isShort
            ? u"takes no texts as short as %1"_s.arg(Wording::quoted(barcode.getBarcodeText()))
            : u"does not know it"_s;
        note(isShort ? name + u", short"_s : name,
            { {}, {}, u"%1 cannot be verified: the reader %2"_s.arg(name, why),
                u"read a print with your own scanner"_s });
        return {};
    }
    QString misread;
    for (const Light light : { Light::Red, Light::White }) {
        const std::optional<QString> read = bestReading(barcode, scan.of(barcode, printed, light), *formats);
        if (read && CodeContent::isThatOf(barcode, *read)) {
            noteLight(barcode, printed, light == Light::Red);
            return {};
        }
        if (misread.isEmpty())
            misread = read.value_or(QString());
    }
    const QString name = nameOf(barcode, printed);
    const QString text = Wording::quoted(barcode.getBarcodeText());
    if (misread.isEmpty())
        return Problem { {}, {}, u"%1: cannot be read from the plates; it has to be %2"_s.arg(name, text),
            u"look at the plates: it needs larger modules, free space or dark ink"_s };
    return Problem { {}, {},
        u"%1: reads as %2 from the plates; it has to be %3"_s.arg(name, Wording::quoted(misread), text),
        u"look at the plates: something lies on it, or beside it"_s };
}

std::optional<QString> CodeVerifier::bestReading(
    const BarcodeItem &barcode, const QImage &seen, const QByteArray &formats)
{
    std::optional<QString> best;
    for (const int factor : enlargements) {
        if (factor > 1 && qint64(seen.width()) * seen.height() * factor * factor > mostPixels)
            break;
        for (const QImage &picture : { seen, turnedBack(seen, barcode) }) {
            for (const QString &read : m_decoder->read(enlarged(picture, factor), formats)) {
                if (CodeContent::isThatOf(barcode, read))
                    return read;
                best = best.value_or(read);
            }
        }
    }
    return best;
}

void CodeVerifier::noteLight(const BarcodeItem &barcode, const PrintedBarcode &printed, bool isRed)
{
    if (isRed)
        return;
    const QString name = nameOf(barcode, printed);
    note(u"light of "_s + name,
        { {}, {}, name + u" is read in white light only: lasers do not see its ink"_s,
            u"print it in black, blue or green, or read it with a camera"_s });
}
