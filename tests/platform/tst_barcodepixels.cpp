// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/barcodeencoder.h"
#include "platform/zint/geometryof.h"
#include "platform/zint/symbolpainter.h"
#include "tests/support/barcodes.h"

#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using Barcodes::barcode;
using Zint::QZint;

namespace {

const QRectF frame(3.3, 2.7, 71.5, 50.25);

QImage paper()
{
    QImage image(120, 110, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

QZint withoutText(int symbol)
{
    QZint code = barcode(symbol, symbol == 13 ? u"590123412345"_s : u"A1"_s);
    code.setHideText(true);
    return code;
}

/// The modules of a symbol that is stretched into the frame.
class Modules
{
public:
    explicit Modules(const QZint &code)
        : m_geometry(Zint::geometryOf(code))
        , m_scale(m_geometry->size.width() / frame.width(), m_geometry->size.height() / frame.height())
    {
    }

    [[nodiscard]] QPointF moduleAt(QPointF point) const
    {
        const QPointF inFrame = point - frame.topLeft();
        return { inFrame.x() * m_scale.x(), inFrame.y() * m_scale.y() };
    }

    [[nodiscard]] bool isDark(QPointF module) const
    {
        return std::ranges::any_of(m_geometry->bars.front().rects, [module](const QRectF &bar) {
            return bar.left() <= module.x() && module.x() < bar.right() && bar.top() <= module.y()
                && module.y() < bar.bottom();
        });
    }

    /// Whether the modules within a distance of the point are all alike.
    [[nodiscard]] bool areAlikeAround(QPointF point, double distance) const
    {
        const auto isDarkAt
            = [this, point](double dx, double dy) { return isDark(moduleAt(point + QPointF(dx, dy))); };
        const int dark = isDarkAt(-distance, -distance) + isDarkAt(distance, -distance)
            + isDarkAt(-distance, distance) + isDarkAt(distance, distance);
        return dark == 0 || dark == 4;
    }

    /// Whether the point lies on the upper or lower edge of modules.
    [[nodiscard]] bool isBetweenRows(QPointF point) const
    {
        const double y = moduleAt(point).y();
        return std::abs(y - std::round(y)) < 0.05;
    }

private:
    std::shared_ptr<const Zint::SymbolGeometry> m_geometry;
    QPointF m_scale;
};

QSet<QRgb> coloursOf(const QImage &image)
{
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    }
    return colours;
}

QImage painted(const QZint &code, double opacity = 1.0)
{
    QImage image = paper();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(opacity);
    code.render(painter, frame, QZint::IgnoreAspectRatio);
    return image;
}

} // namespace

/// Symbols in pictures, pixel by pixel.
class tst_BarcodePixels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everyPixelFollowsItsModule_data();
    void everyPixelFollowsItsModule();
    void tallSymbolsAreFilledAlike_data();
    void tallSymbolsAreFilledAlike();
    void edgesAreHard_data();
    void edgesAreHard();
    void translucentBarsDoNotAddUp();
    void clippingIsRespectedAndStays();
    void oddTransformsDoNoHarm_data();
    void oddTransformsDoNoHarm();
};

void tst_BarcodePixels::everyPixelFollowsItsModule_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<double>("pixelRatio");
    QTest::addColumn<QImage::Format>("format");

    const auto colours = QImage::Format_ARGB32_Premultiplied;
    for (const int symbol : { 58, 71, 55, 20, 13, 70 }) {
        QTest::addRow("%d: plain", symbol) << symbol << QTransform() << 1.0 << colours;
        QTest::addRow("%d: scaled", symbol) << symbol << QTransform(1.37, 0, 0, 1.9, 0, 0) << 1.0 << colours;
        QTest::addRow("%d: turned right", symbol)
            << symbol << QTransform(0, 1.2, -1.2, 0, 90, 1) << 1.0 << colours;
        QTest::addRow("%d: mirrored", symbol) << symbol << QTransform(-1, 0, 0, 1, 100, 0) << 1.0 << colours;
        QTest::addRow("%d: rotated", symbol)
            << symbol << QTransform(1, 0.5, -0.5, 1, 30, 1) << 1.0 << colours;
        QTest::addRow("%d: two dots to a pixel", symbol) << symbol << QTransform() << 2.0 << colours;
        QTest::addRow("%d: black and white", symbol) << symbol << QTransform() << 1.0 << QImage::Format_Mono;
    }
}

void tst_BarcodePixels::everyPixelFollowsItsModule()
{
    QFETCH(int, symbol);
    QFETCH(QTransform, transform);
    QFETCH(double, pixelRatio);
    QFETCH(QImage::Format, format);
    const QZint code = withoutText(symbol);
    QImage image = paper().convertToFormat(format);
    image.setDevicePixelRatio(pixelRatio);
    QPainter painter(&image);
    painter.setTransform(transform);
    code.render(painter, frame, QZint::IgnoreAspectRatio);
    const QTransform back = painter.deviceTransform().inverted();
    painter.end();

    const Modules modules(code);
    const double tolerance = transform.isRotating() ? 0.2 : 0.05;
    int dark = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QPointF point = back.map(QPointF(x + 0.5, y + 0.5));
            if (!modules.areAlikeAround(point, tolerance)) // an edge near a centre may fall to either side
                continue;
            if (transform.isRotating()
                && modules.isBetweenRows(point)) // on a slant, bars that meet may leave a dot
                continue;
            const bool isDark = modules.isDark(modules.moduleAt(point));
            QCOMPARE(image.pixelColor(x, y), QColor(isDark ? Qt::black : Qt::white));
            dark += isDark ? 1 : 0;
        }
    }
    QVERIFY(dark > 500);
}

void tst_BarcodePixels::tallSymbolsAreFilledAlike_data()
{
    QTest::addColumn<int>("height");

    QTest::newRow("as one region") << Zint::MaxRegionHeight;
    QTest::newRow("as rectangles") << Zint::MaxRegionHeight + 1;
}

void tst_BarcodePixels::tallSymbolsAreFilledAlike()
{
    QFETCH(int, height);
    QZint code = withoutText(58);
    code.setFgColor(QColor(0, 0, 255, 100)); // nothing may be filled twice
    QImage image(42, height, QImage::Format_ARGB32_Premultiplied); // two dots a module
    image.fill(Qt::white);
    QPainter painter(&image);
    code.render(painter, image.rect(), QZint::IgnoreAspectRatio);
    painter.end();

    const auto bars = Zint::geometryOf(code)->bars.front().rects;
    int dark = 0;
    for (const QRectF &bar : bars)
        dark += int(bar.width() * bar.height());
    int found = 0;
    for (int row = 0; row < 21; ++row) {
        for (int column = 0; column < 21; ++column)
            found += image.pixel(2 * column, (2 * row + 1) * height / 42) == qRgb(255, 255, 255) ? 0 : 1;
    }
    QCOMPARE(found, dark);
    QCOMPARE(coloursOf(image).size(), 2);
}

void tst_BarcodePixels::edgesAreHard_data()
{
    QTest::addColumn<int>("symbol");

    for (const int symbol : { 20, 58, 57, 115, 144 })
        QTest::addRow("%d", symbol) << symbol;
}

void tst_BarcodePixels::edgesAreHard()
{
    QFETCH(int, symbol);
    QZint code = withoutText(symbol);
    code.setBgColor(Qt::yellow);
    QSet<QRgb> expected { qRgb(255, 255, 255), qRgb(255, 255, 0), qRgb(0, 0, 0) };
    if (symbol == 144)
        expected.unite({ qRgb(0, 255, 255), qRgb(255, 0, 255), qRgb(0, 255, 0) });
    QCOMPARE(coloursOf(painted(code)), expected);
}

void tst_BarcodePixels::translucentBarsDoNotAddUp()
{
    for (const int symbol : { 13, 24, 55, 57, 58, 74 }) {
        QZint code = withoutText(symbol);
        QCOMPARE(coloursOf(painted(code, 0.5)).size(), 2);
        code.setFgColor(QColor(0, 0, 255, 100));
        QCOMPARE(coloursOf(painted(code)).size(), 2);
    }
}

void tst_BarcodePixels::clippingIsRespectedAndStays()
{
    QZint code = withoutText(58);
    const QRect clip(20, 10, 30, 25);
    QImage image = paper();
    QPainter painter(&image);
    painter.setClipRect(clip);
    code.render(painter, frame, QZint::IgnoreAspectRatio);
    painter.fillRect(clip.adjusted(-5, -5, 5, 5), QColor(255, 0, 0, 128));
    painter.end();
    int dark = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            QCOMPARE(pixel == qRgb(255, 255, 255), !clip.contains(x, y));
            dark += qRed(pixel) < 200 ? 1 : 0;
        }
    }
    QVERIFY(dark > 100);
}

void tst_BarcodePixels::oddTransformsDoNoHarm_data()
{
    QTest::addColumn<QTransform>("transform");

    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double odd : { 0.0, 1e-300, 1e-9, 1e9, 1e300, nan, infinity, -infinity }) {
        QTest::addRow("scale %g", odd) << QTransform::fromScale(odd, odd);
        QTest::addRow("width %g", odd) << QTransform::fromScale(odd, 1);
        QTest::addRow("turned %g", odd) << QTransform(0, odd, odd, 0, 0, 0);
        QTest::addRow("slant %g", odd) << QTransform(odd, odd, -1, 1, 0, 0);
        QTest::addRow("translation %g", odd) << QTransform::fromTranslate(odd, odd);
    }
}

void tst_BarcodePixels::oddTransformsDoNoHarm()
{
    QFETCH(QTransform, transform);
    for (const int symbol : { 20, 58, 57, 115 }) {
        QImage image = paper();
        QPainter painter(&image);
        painter.setTransform(transform);
        barcode(symbol, u"A1"_s).render(painter, frame, QZint::IgnoreAspectRatio);
        painter.resetTransform();
        painter.fillRect(0, 0, 1, 1, Qt::red);
        QCOMPARE(image.pixelColor(0, 0), QColor(Qt::red));
    }
}

QTEST_MAIN(tst_BarcodePixels)
#include "tst_barcodepixels.moc"
