// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "label/itempainter.h"
#include "label/labeldocument.h"

#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr short qrCode = 58;
constexpr short code128 = 20;
constexpr short noSymbology = 2;

using Change = void (*)(BarcodeItem &item);

} // namespace
Q_DECLARE_METATYPE(Change)

/// Items painted without a scene.
class tst_ItemPainter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void barcodesArePaintedAsTheyPaintThemselves_data();
    void barcodesArePaintedAsTheyPaintThemselves();
};

void tst_ItemPainter::barcodesArePaintedAsTheyPaintThemselves_data()
{
    QTest::addColumn<short>("symbol");
    QTest::addColumn<QString>("text");
    QTest::addColumn<Change>("change");
    QTest::newRow("plain") << qrCode << u"QR Code 12345"_s << Change([](BarcodeItem &) {});
    QTest::newRow("coloured") << qrCode << u"QR Code 12345"_s << Change([](BarcodeItem &item) {
        item.setItemTextColor(QColor(200, 0, 20));
        item.setItemFillColor(QColor(255, 255, 0, 90));
    });
    QTest::newRow("turned and mirrored") << qrCode << u"QR Code 12345"_s << Change([](BarcodeItem &item) {
        item.setItemRotation(30.0);
        item.setItemHorizontalMirror(true);
    });
    QTest::newRow("in its proportions") << qrCode << u"QR Code 12345"_s << Change([](BarcodeItem &item) {
        item.setItemSize(QSizeF(280.0, 120.0));
        item.setBarcodeAspectRatio(1);
        item.setItemVerticalMirror(true);
    });
    QTest::newRow("centred") << qrCode << u"QR Code 12345"_s << Change([](BarcodeItem &item) {
        item.setItemSize(QSizeF(280.0, 120.0));
        item.setBarcodeAspectRatio(2);
    });
    QTest::newRow("of a level") << qrCode << u"QR Code 12345"_s << Change([](BarcodeItem &item) {
        item.setBarcodeSecurityLevel(4);
        item.setBarcodeOption2(6);
    });
    QTest::newRow("a line in a font") << code128 << u"ABC-123"_s << Change([](BarcodeItem &item) {
        item.setItemFontFamily(u"DejaVu Sans"_s);
        item.setItemFontSize(14);
        item.setItemBold(true);
        item.setItemItalic(true);
        item.setItemUnderline(true);
        item.setItemAlignment(Qt::AlignLeft);
    });
    QTest::newRow("a line above") << code128 << u"ABC-123"_s << Change([](BarcodeItem &item) {
        item.setBarcodeTextAbove(true);
        item.setBarcodeWhiteSpace(5);
        item.setBarcodeHeight(20);
    });
    QTest::newRow("without a line") << code128 << u"ABC-123"_s
                                    << Change([](BarcodeItem &item) { item.setBarcodeHideText(true); });
    QTest::newRow("refused") << short(13) << u"no number"_s
                             << Change([](BarcodeItem &item) { item.setItemFillColor(QColor(255, 255, 0)); });
    QTest::newRow("no symbology") << noSymbology << u"12"_s << Change([](BarcodeItem &) {});
}

void tst_ItemPainter::barcodesArePaintedAsTheyPaintThemselves()
{
    QFETCH(const short, symbol);
    QFETCH(const QString, text);
    QFETCH(const Change, change);
    auto made = std::make_unique<BarcodeItem>();
    made->setBarcodeSymbol(symbol);
    made->setBarcodeText(text);
    made->setItemSize(QSizeF(150.0, 150.0));
    made->setPos(70.0, 60.0);
    change(*made);
    LabelDocument document;
    BarcodeItem &item = *made;
    document.addItem(std::move(made));

    const auto painted = [](auto &&paint) {
        QImage image(400, 300, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        paint(painter);
        return image;
    };
    const QImage itself = painted([&](QPainter &painter) {
        painter.setWorldTransform(item.sceneTransform());
        painter.setClipPath(item.shape());
        const QStyleOptionGraphicsItem option;
        item.paint(&painter, &option, nullptr);
    });
    QVERIFY(itself != painted([](QPainter &) {}));
    QCOMPARE(painted([&](QPainter &painter) { ItemPainter::paint(painter, document); }), itself);
}

QTEST_MAIN(tst_ItemPainter)
#include "tst_itempainter.moc"
