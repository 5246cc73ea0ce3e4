// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/programfolder.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int barcodeCode = 0x1001D;
constexpr int ean = 13;
constexpr int qrCode = 58;

/// A barcode in the corner of the page, or where own keys put it.
QJsonObject barcode(int symbol, const QString &text, double width, double height, const QJsonObject &own = {})
{
    QJsonObject item { { u"itemShape"_s, barcodeCode }, { u"itemId"_s, 1 }, { u"barcodeSymbol"_s, symbol },
        { u"barcodeText"_s, text }, { u"itemWidth"_s, width }, { u"itemHeight"_s, height },
        { u"itemTextColor"_s, u"#000000"_s }, { u"barcodeHideText"_s, true } };
    for (auto it = own.begin(); it != own.end(); ++it)
        item[it.key()] = it.value();
    return item;
}

/// A page of 200 x 100 units at 100 dpi.
QByteArray labelWith(const QJsonArray &items)
{
    const QJsonObject label { { u"format"_s, u"vxlabel"_s }, { u"version"_s, 6 },
        { u"page"_s, QJsonObject { { u"width"_s, 50.8 }, { u"height"_s, 25.4 }, { u"dpi"_s, 100 } } },
        { u"paper"_s, u"#ffffff"_s },
        { u"inks"_s,
            QJsonArray { QJsonObject { { u"name"_s, u"black"_s }, { u"color"_s, u"#000000"_s } },
                QJsonObject { { u"name"_s, u"red"_s }, { u"color"_s, u"#ff0000"_s } } } },
        { u"items"_s, items } };
    return QJsonDocument(label).toJson();
}

} // namespace

/// What vxlabel tells of barcodes.
class tst_VxLabelBarcodes : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(); }

    void listsSymbologiesForPeople();
    void listsSymbologiesForPrograms();
    void inspectsBarcodes();
    void reportsModules();
    void modulesAreWholeDots();
    void warnsOfWhatWillNotScan_data();
    void warnsOfWhatWillNotScan();
    void warnsOfBarsThatNoInkPrints();
};

void tst_VxLabelBarcodes::listsSymbologiesForPeople()
{
    const ProgramResult result = run({ u"barcodes"_s });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.code, 0);
    const QByteArrayList lines = result.out.split('\n');
    const auto wordsOf = [&lines](const QByteArray &name) {
        for (const QByteArray &line : lines) {
            if (line.contains("  " + name + "  "))
                return line.simplified();
        }
        return QByteArray();
    };
    QCOMPARE(lines.first().simplified(), QByteArray("number name kind GS1 text ECI"));
    QCOMPARE(wordsOf("EAN"), QByteArray("13 EAN linear - yes -"));
    QCOMPARE(wordsOf("GS1-128"), QByteArray("16 GS1-128 linear yes yes -"));
    QCOMPARE(wordsOf("PDF417"), QByteArray("55 PDF417 stacked - - yes"));
    QCOMPARE(wordsOf("QR Code"), QByteArray("58 QR Code matrix yes - yes"));
    QCOMPARE(wordsOf("USPS POSTNET"), QByteArray("40 USPS POSTNET postal - - -"));
}

void tst_VxLabelBarcodes::listsSymbologiesForPrograms()
{
    const ProgramResult result = run({ u"barcodes"_s, u"--json"_s });
    QCOMPARE(result.err, QByteArray());
    const QJsonArray all = QJsonDocument::fromJson(result.out)["barcodes"_L1].toArray();
    QVERIFY(all.size() > 80);
    QVERIFY(all.contains(QJsonObject { { u"number"_s, 71 }, { u"name"_s, u"Data Matrix"_s },
        { u"kind"_s, u"matrix"_s }, { u"gs1"_s, true }, { u"text"_s, false }, { u"eci"_s, true } }));
}

void tst_VxLabelBarcodes::inspectsBarcodes()
{
    write(u"a.vxl"_s,
        labelWith({ barcode(qrCode, u"a text of thirty letters or so"_s, 40, 40),
            barcode(ean, u"590123412345"_s, 100, 40, { { u"itemFillColor"_s, u"#ff0000"_s } }) }));
    const QByteArrayList lines = run({ u"inspect"_s, u"a.vxl"_s }).out.split('\n');
    QVERIFY(lines[7].endsWith("-    none           QR Code #000000 \"a text of thirty letter…\""));
    QVERIFY(lines[8].endsWith("-    solid #ff0000  EAN #000000 \"590123412345\""));

    const ProgramResult json = run({ u"inspect"_s, u"a.vxl"_s, u"--json"_s });
    const QJsonArray items = QJsonDocument::fromJson(json.out)["items"_L1].toArray();
    QCOMPARE(items[1]["barcode"_L1].toObject(),
        QJsonObject({ { u"symbol"_s, ean }, { u"symbology"_s, u"EAN"_s }, { u"color"_s, u"#000000"_s },
            { u"content"_s, u"590123412345"_s } }));
}

/// A QR Code of few letters has 21 modules on a side: in 200 dots, 9 each. An EAN-13 has 95, and 11 and 7 of
/// white space at its sides: in 200 dots, one each.
void tst_VxLabelBarcodes::reportsModules()
{
    write(u"a.vxl"_s,
        labelWith({ barcode(qrCode, u"B123456"_s, 100, 100), barcode(ean, u"590123412345"_s, 100, 40) }));
    const ProgramResult result = run({ u"separate"_s, u"a.vxl"_s, u"-o"_s, u"out"_s, u"--dpi=200"_s });
    QCOMPARE(result.err, QByteArray());
    const QByteArrayList lines = result.out.split('\n');
    QCOMPARE(lines[2].simplified(), QByteArray("barcode 1 QR Code 21 modules 9 dots each X 1.143 mm"));
    QCOMPARE(lines[3].simplified(), QByteArray("barcode 1 EAN 113 modules 1 dot each X 0.127 mm"));
}

/// 21 modules in 100 dots are 4 dots each, 84 together, in the middle: from the 8th on.
void tst_VxLabelBarcodes::modulesAreWholeDots()
{
    write(u"a.vxl"_s, labelWith({ barcode(qrCode, u"B123456"_s, 100, 100) }));
    QCOMPARE(run({ u"separate"_s, u"a.vxl"_s, u"-o"_s, u"."_s }).code, 0);
    const QImage plate(path(u"a.black.png"_s));
    const auto isBlack = [&plate](int x, int y) { return qGray(plate.pixel(x, y)) == 0; };
    QVERIFY(!isBlack(7, 50) && isBlack(8, 8) && isBlack(91, 8) && !isBlack(92, 8));
    // Its finder pattern: 7 modules black, of which the ring within is white, and then a white one.
    QVERIFY(isBlack(8 + 27, 8) && !isBlack(8 + 28, 8));
    QVERIFY(isBlack(8 + 3, 8 + 14) && !isBlack(8 + 4, 8 + 14) && !isBlack(8 + 7, 8 + 14)
        && isBlack(8 + 8, 8 + 14));
    for (int y = 8; y < 92; y += 4) {
        for (int x = 8; x < 92; x += 4) {
            for (int dot = 0; dot < 16; ++dot)
                QCOMPARE(isBlack(x + dot % 4, y + dot / 4), isBlack(x, y));
        }
    }
}

void tst_VxLabelBarcodes::warnsOfWhatWillNotScan_data()
{
    QTest::addColumn<QJsonObject>("item");
    QTest::addColumn<QByteArray>("warning");
    // 15 units at 100 dpi are 3.81 mm; 21/15 of them 5.334 mm, at 140 dpi.
    QTest::newRow("too small") << barcode(qrCode, u"B123456"_s, 15, 15)
                               << QByteArray("barcode 1 (QR Code): 21 modules in 15 dots; make it at least "
                                             "5.4 mm wide or print at 203 dpi");
    QTest::newRow("too low") << barcode(qrCode, u"B123456"_s, 100, 15)
                             << QByteArray("barcode 1 (QR Code): 21 modules in 15 dots; make it at least "
                                           "5.4 mm high or print at 203 dpi");
    QTest::newRow("stretched") << barcode(qrCode, u"B123456"_s, 100, 50)
                               << QByteArray("barcode 1 (QR Code): its modules are stretched to 4 x 2 dots; "
                                             "make it square");
    QTest::newRow("refused")
        << barcode(ean, u"59012341234X"_s, 100, 40)
        << QByteArray(
               "barcode 1 (EAN): the symbology does not take the text; change the text or the symbology");
    QTest::newRow("too long") << barcode(ean, u"1"_s.repeated(40), 100, 40)
                              << QByteArray("barcode 1 (EAN): the text is too long for the symbology; change "
                                            "the text or the symbology");
    QTest::newRow("turned") << barcode(
        qrCode, u"B123456"_s, 50, 50, { { u"itemRotation"_s, 30 }, { u"itemPositionX"_s, 100 } })
                            << QByteArray("barcode 1 (QR Code): turned as it is, its modules do not fall on "
                                          "whole dots; turn it by right angles");
}

void tst_VxLabelBarcodes::warnsOfWhatWillNotScan()
{
    QFETCH(QJsonObject, item);
    QFETCH(QByteArray, warning);
    write(u"a.vxl"_s, labelWith({ item }));
    const ProgramResult result = run({ u"separate"_s, u"a.vxl"_s, u"-o"_s, u"out"_s });
    QCOMPARE(result.err, "vxlabel: warning: a.vxl: /items/0: " + warning + '\n');
    QCOMPARE(result.code, 0);
}

void tst_VxLabelBarcodes::warnsOfBarsThatNoInkPrints()
{
    write(u"a.vxl"_s,
        labelWith({ barcode(qrCode, u"B123456"_s, 50, 50, { { u"itemTextColor"_s, u"#00ff00"_s } }) }));
    QCOMPARE(run({ u"separate"_s, u"a.vxl"_s, u"-o"_s, u"out"_s }).err,
        QByteArray("vxlabel: warning: a.vxl: /items/0: no ink prints the bars #00ff00 of barcode 1; use an "
                   "ink's colour "
                   "or add an ink\n"));
}

QTEST_GUILESS_MAIN(tst_VxLabelBarcodes)
#include "tst_vxlabelbarcodes.moc"
