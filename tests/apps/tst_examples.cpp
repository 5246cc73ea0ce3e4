// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/programfolder.h"

#include <QFile>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const auto helloProgram = QStringLiteral(VX_HELLO);

} // namespace

/// The signs of examples/ and the program that the manual begins with.
class tst_Examples : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(); }

    void examplesAreWhatTheirToolMakes();
    void examplePlatesAreRight_data();
    void examplePlatesAreRight();
    void helloSavesItsItemPlatesAndProof();
};

void tst_Examples::examplesAreWhatTheirToolMakes()
{
    const ProgramResult result
        = runCommand(u"python3"_s, { u"-B"_s, sourceFile(u"examples/tools/make_examples.py"_s), path() });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.code, 0);
    for (const QString &name : exampleNames()) {
        QFile example(exampleFile(name));
        QVERIFY(example.open(QIODevice::ReadOnly));
        QCOMPARE(read(name + u".vxl"_s), example.readAll());
    }
}

void tst_Examples::examplePlatesAreRight_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("dpi");
    QTest::addColumn<QStringList>("options");
    for (const QString &name : exampleNames()) {
        const QStringList options
            = name == u"calibration-sheet"_s ? QStringList { u"--rulers"_s } : QStringList();
        for (const QString &dpi : { u"203.2"_s, u"300"_s, u"600"_s })
            QTest::addRow("%s at %s dpi", qPrintable(name), qPrintable(dpi)) << name << dpi << options;
    }
}

void tst_Examples::examplePlatesAreRight()
{
    QFETCH(QString, name);
    QFETCH(QString, dpi);
    QFETCH(QStringList, options);
    const ProgramResult separated
        = run({ u"separate"_s, exampleFile(name), u"-o"_s, u"plates"_s, u"--dpi"_s, dpi });
    QCOMPARE(separated.err, QByteArray());
    QCOMPARE(separated.code, 0);
    const ProgramResult checked = runCommand(u"python3"_s,
        QStringList { toolFile(u"check_plates.py"_s), exampleFile(name), u"plates"_s, dpi } + options);
    QCOMPARE(checked.err, QByteArray());
    QCOMPARE(checked.out, QByteArray());
    QCOMPARE(checked.code, 0);
}

void tst_Examples::helloSavesItsItemPlatesAndProof()
{
    const ProgramResult result
        = runCommand(u"/usr/bin/env"_s, { u"QT_QPA_PLATFORM=offscreen"_s, helloProgram });
    QCOMPARE(result.code, 0);
    QCOMPARE(files(),
        QStringList({ u"hello.black.png"_s, u"hello.item.png"_s, u"hello.proof.png"_s, u"hello.red.png"_s }));
    // The outline of 24 lies inside the 300 x 300 of the square.
    const QImage item(path(u"hello.item.png"_s));
    QCOMPARE(item.pixelColor(150, 150), QColor(Qt::red));
    QCOMPARE(item.pixelColor(150, 20), QColor(Qt::black));
    QCOMPARE(item.pixelColor(150, 28), QColor(Qt::red));
    // The diamond's centre is at (590, 295), and its upper corner 300 / 2 x sqrt(2) = 212 dots above.
    const QImage proof(path(u"hello.proof.png"_s));
    QCOMPARE(proof.size(), QSize(1181, 591));
    QCOMPARE(proof.pixelColor(590, 295), QColor(Qt::red));
    QCOMPARE(proof.pixelColor(590, 295 - 190), QColor(Qt::black));
    QCOMPARE(proof.pixelColor(590, 295 - 220), QColor(Qt::white));
}

QTEST_GUILESS_MAIN(tst_Examples)

#include "tst_examples.moc"
