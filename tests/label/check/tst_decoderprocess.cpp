// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "label/check/decoderprocess.h"
#include "tests/label/printing.h"

#include <QFile>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

/// A Data Matrix of four dots for each module, on bare paper.
QImage pictureOf(const QString &text)
{
    constexpr short dataMatrix = 71;
    LabelDocument document = Printing::blackAndRed({ 20, 20 });
    auto item = std::make_unique<BarcodeItem>();
    item->setBarcodeSymbol(dataMatrix);
    item->setBarcodeText(text);
    Printing::addItem(document, std::move(item), { 50, 50, 100, 100 },
        { .fill = Printing::nothing, .pen = Printing::black });
    const Separation separation = Printing::separated(document, { .dpi = 254.0 });
    return separation.plates[0].image.convertToFormat(QImage::Format_Grayscale8);
}

/// The processes that this one has made and that live.
QList<pid_t> readers()
{
    QFile file(u"/proc/self/task/%1/children"_s.arg(getpid()));
    QList<pid_t> processes;
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray &process : file.readAll().simplified().split(' ')) {
            if (!process.isEmpty())
                processes.append(process.toInt());
        }
    }
    return processes;
}

} // namespace

/// The reader of barcodes in a process of its own.
class tst_DecoderProcess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsOneAfterTheOther();
    void nothingIsRead_data();
    void nothingIsRead();
    void aDeadReaderIsReplaced();
    void theReaderEndsWithItsOwner();
};

void tst_DecoderProcess::readsOneAfterTheOther()
{
    DecoderProcess decoder;
    QCOMPARE(decoder.read(pictureOf(u"A1"_s), "DataMatrix"), QStringList { u"A1"_s });
    QCOMPARE(
        decoder.read(pictureOf(u"Gr\u00f6\u00dfe"_s), "DataMatrix"), QStringList { u"Gr\u00f6\u00dfe"_s });
    QCOMPARE(decoder.read(pictureOf(u"A2"_s), "QRCode|DataMatrix"), QStringList { u"A2"_s });
    QCOMPARE(readers().size(), 1);
}

void tst_DecoderProcess::nothingIsRead_data()
{
    QTest::addColumn<QImage>("picture");
    QTest::addColumn<QByteArray>("formats");
    QImage white(64, 64, QImage::Format_Grayscale8);
    white.fill(255);
    QTest::newRow("nothing there") << white << QByteArray("DataMatrix");
    QTest::newRow("another format") << pictureOf(u"A1"_s) << QByteArray("QRCode");
    QTest::newRow("no format") << pictureOf(u"A1"_s) << QByteArray("NoSuchFormat");
    QTest::newRow("a picture of a pixel") << white.copy(0, 0, 1, 1) << QByteArray("DataMatrix");
    QTest::newRow("no picture") << QImage() << QByteArray("DataMatrix");
}

void tst_DecoderProcess::nothingIsRead()
{
    QFETCH(QImage, picture);
    QFETCH(QByteArray, formats);
    DecoderProcess decoder;
    QCOMPARE(decoder.read(picture, formats), QStringList());
    QCOMPARE(decoder.read(pictureOf(u"A1"_s), "DataMatrix"), QStringList { u"A1"_s });
}

void tst_DecoderProcess::aDeadReaderIsReplaced()
{
    DecoderProcess decoder;
    const QImage picture = pictureOf(u"A1"_s);
    QCOMPARE(decoder.read(picture, "DataMatrix"), QStringList { u"A1"_s });
    const QList<pid_t> before = readers();
    QCOMPARE(before.size(), 1);
    kill(before[0], SIGABRT);
    QCOMPARE(decoder.read(picture, "DataMatrix"), QStringList());
    QCOMPARE(decoder.read(picture, "DataMatrix"), QStringList { u"A1"_s });
    QCOMPARE(readers().size(), 1);
    QVERIFY(readers() != before);
}

void tst_DecoderProcess::theReaderEndsWithItsOwner()
{
    {
        DecoderProcess decoder;
        QVERIFY(readers().isEmpty()); // it begins with the first picture
        QVERIFY(!decoder.read(pictureOf(u"A1"_s), "DataMatrix").isEmpty());
        QCOMPARE(readers().size(), 1);
    }
    QVERIFY(readers().isEmpty());
}

QTEST_MAIN(tst_DecoderProcess)
#include "tst_decoderprocess.moc"
