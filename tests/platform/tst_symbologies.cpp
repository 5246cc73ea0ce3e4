// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/symbologies.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <zint.h>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;
using Zint::Symbology;
using Kind = Zint::Symbology::Kind;

Q_DECLARE_METATYPE(Zint::Symbology::Kind)

/// The table of symbologies.
class tst_Symbologies : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void numbersAreThoseOfLibzint();
    void namesAreDifferentAndNotEmpty();
    void numbersOfNoneAreNull_data();
    void numbersOfNoneAreNull();
    void abilitiesAreKnown_data();
    void abilitiesAreKnown();
    void compositesAreThoseWithCompositeData();
};

void tst_Symbologies::numbersAreThoseOfLibzint()
{
    QList<int> expected;
    for (int number = 0; number <= BARCODE_LAST; ++number) {
        if (ZBarcode_ValidID(number))
            expected.append(number);
    }
    QList<int> actual;
    for (const Symbology &symbology : Zint::symbologies()) {
        actual.append(symbology.number);
        QCOMPARE(Zint::symbologyOf(symbology.number), &symbology);
    }
    QCOMPARE(actual, expected);
}

void tst_Symbologies::namesAreDifferentAndNotEmpty()
{
    QSet<QString> names;
    for (const Symbology &symbology : Zint::symbologies()) {
        QVERIFY(!symbology.name.trimmed().isEmpty());
        names.insert(symbology.name);
    }
    QCOMPARE(names.size(), qsizetype(Zint::symbologies().size()));
}

void tst_Symbologies::numbersOfNoneAreNull_data()
{
    QTest::addColumn<int>("number");

    QTest::newRow("least") << std::numeric_limits<int>::min();
    QTest::newRow("0") << 0;
    QTest::newRow("an older number of a symbology") << 10;
    QTest::newRow("between two") << 95;
    QTest::newRow("behind the last") << 147;
    QTest::newRow("greatest") << std::numeric_limits<int>::max();
}

void tst_Symbologies::numbersOfNoneAreNull()
{
    QFETCH(int, number);
    QVERIFY(Zint::symbologyOf(number) == nullptr);
}

void tst_Symbologies::abilitiesAreKnown_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("name");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<bool>("takesGs1");
    QTest::addColumn<bool>("hasText");
    QTest::addColumn<bool>("takesEci");

    QTest::newRow("8") << 8 << u"Code 39"_s << Kind::Linear << false << true << false;
    QTest::newRow("13") << 13 << u"EAN"_s << Kind::Linear << false << true << false;
    QTest::newRow("16") << 16 << u"GS1-128"_s << Kind::Linear << true << true << false;
    QTest::newRow("20") << 20 << u"Code 128"_s << Kind::Linear << false << true << false;
    QTest::newRow("23") << 23 << u"Code 16K"_s << Kind::Stacked << true << false << false;
    QTest::newRow("55") << 55 << u"PDF417"_s << Kind::Stacked << false << false << true;
    QTest::newRow("57") << 57 << u"MaxiCode"_s << Kind::Matrix << false << false << true;
    QTest::newRow("58") << 58 << u"QR Code"_s << Kind::Matrix << true << false << true;
    QTest::newRow("70") << 70 << u"Royal Mail 4-State Customer Code"_s << Kind::Postal << false << false
                        << false;
    QTest::newRow("71") << 71 << u"Data Matrix"_s << Kind::Matrix << true << false << true;
    QTest::newRow("92") << 92 << u"Aztec Code"_s << Kind::Matrix << true << false << true;
    QTest::newRow("97") << 97 << u"Micro QR Code"_s << Kind::Matrix << false << false << false;
    QTest::newRow("130") << 130 << u"EAN Composite"_s << Kind::Composite << true << true << false;
}

void tst_Symbologies::abilitiesAreKnown()
{
    QFETCH(int, number);
    const Symbology *symbology = Zint::symbologyOf(number);
    QVERIFY(symbology != nullptr);
    QTEST(symbology->name, "name");
    QTEST(symbology->kind, "kind");
    QTEST(symbology->takesGs1, "takesGs1");
    QTEST(symbology->hasText, "hasText");
    QTEST(symbology->takesEci, "takesEci");
}

void tst_Symbologies::compositesAreThoseWithCompositeData()
{
    for (const Symbology &symbology : Zint::symbologies()) {
        const bool expected = ZBarcode_Cap(symbology.number, ZINT_CAP_COMPOSITE) != 0;
        QCOMPARE(symbology.kind == Kind::Composite, expected);
    }
}

QTEST_APPLESS_MAIN(tst_Symbologies)
#include "tst_symbologies.moc"
