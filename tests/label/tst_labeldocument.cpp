// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "label/labeldocument.h"
#include "label/labellimits.h"

#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// "where: what" of every problem.
QStringList shortTexts(const Problems &problems)
{
    QStringList texts;
    for (const Problem &problem : problems)
        texts.append(problem.where + u": "_s + problem.what);
    return texts;
}

} // namespace

class tst_LabelDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newDocumentIsSound();
    void pageInUnitsAndDots_data();
    void pageInUnitsAndDots();
    void pageHasLimits_data();
    void pageHasLimits();
    void inkNamesAreFileNames_data();
    void inkNamesAreFileNames();
    void inkNamesAreUnique();
    void thereAreOneToEightInks();
    void inkColorsAreOpaqueRgb_data();
    void inkColorsAreOpaqueRgb();
    void inkColorsAreDistinct();
    void paperIsOpaque();
    void itemsArePaintedOnThePaper();
    void itemsStayInOrder();
    void thereAreAtMostTwentyThousandItems();
    void geometryIsFiniteAndDrawable_data();
    void geometryIsFiniteAndDrawable();
    void perspectiveIsGeometryToo();
    void onlyAHundredProblemsAreListed();
    void problemsAreOneLine_data();
    void problemsAreOneLine();
};

void tst_LabelDocument::newDocumentIsSound()
{
    const LabelDocument document;
    QCOMPARE(document.pageSize(), QSizeF(100, 50));
    QCOMPARE(document.designDpi(), 300.0);
    QCOMPARE(document.inks().size(), 1);
    QCOMPARE(document.inks()[0].name, u"black"_s);
    QCOMPARE(document.inks()[0].color, QColor(0, 0, 0));
    QCOMPARE(document.paper(), QColor(255, 255, 255));
    QCOMPARE(document.dither(), Dither::Diffusion);
    QVERIFY(document.items().empty());
    QVERIFY(document.problems().isEmpty());
}

void tst_LabelDocument::pageInUnitsAndDots_data()
{
    QTest::addColumn<QSizeF>("millimetres");
    QTest::addColumn<double>("designDpi");
    QTest::addColumn<QSizeF>("units");
    QTest::addColumn<double>("outputDpi");
    QTest::addColumn<QSize>("dots");

    QTest::newRow("whole inches") << QSizeF(25.4, 50.8) << 300.0 << QSizeF(300, 600) << 600.0
                                  << QSize(600, 1200);
    // 100 / 25.4 × 203 = 799.21…, 50 / 25.4 × 203 = 399.6…
    QTest::newRow("rounded") << QSizeF(100, 50) << 254.0 << QSizeF(1000, 500) << 203.0 << QSize(799, 400);
    QTest::newRow("half a dot") << QSizeF(12.7, 25.4) << 10.0 << QSizeF(5, 10) << 11.0 << QSize(6, 11);
}

void tst_LabelDocument::pageInUnitsAndDots()
{
    QFETCH(QSizeF, millimetres);
    QFETCH(double, designDpi);
    QFETCH(double, outputDpi);
    LabelDocument document;
    document.setPageSize(millimetres);
    document.setDesignDpi(designDpi);
    QTEST(document.pageSizeInUnits(), "units");
    QTEST(document.pageSizeInDots(outputDpi), "dots");
}

void tst_LabelDocument::pageHasLimits_data()
{
    QTest::addColumn<QSizeF>("page");
    QTest::addColumn<double>("dpi");
    QTest::addColumn<QStringList>("problems");

    QTest::newRow("smallest") << QSizeF(0.1, 0.1) << 10.0 << QStringList();
    QTest::newRow("largest") << QSizeF(10000, 10000) << 9600.0 << QStringList();
    QTest::newRow("too narrow") << QSizeF(0.09, 50) << 300.0
                                << QStringList(u"/page/width: 0.09 is out of range"_s);
    QTest::newRow("too wide") << QSizeF(10001, 50) << 300.0
                              << QStringList(u"/page/width: 10001 is out of range"_s);
    QTest::newRow("too low") << QSizeF(100, 0.09) << 300.0
                             << QStringList(u"/page/height: 0.09 is out of range"_s);
    QTest::newRow("too high") << QSizeF(100, 10001) << 300.0
                              << QStringList(u"/page/height: 10001 is out of range"_s);
    QTest::newRow("negative") << QSizeF(-1, 50) << 300.0 << QStringList(u"/page/width: -1 is out of range"_s);
    QTest::newRow("no numbers") << QSizeF(notANumber, infinity) << notANumber
                                << QStringList { u"/page/width: nan is out of range"_s,
                                       u"/page/height: inf is out of range"_s,
                                       u"/page/dpi: nan is out of range"_s };
    QTest::newRow("coarse") << QSizeF(100, 50) << 9.0 << QStringList(u"/page/dpi: 9 is out of range"_s);
    QTest::newRow("fine") << QSizeF(100, 50) << 9601.0 << QStringList(u"/page/dpi: 9601 is out of range"_s);
}

void tst_LabelDocument::pageHasLimits()
{
    QFETCH(QSizeF, page);
    QFETCH(double, dpi);
    LabelDocument document;
    document.setPageSize(page);
    document.setDesignDpi(dpi);
    QTEST(shortTexts(document.problems()), "problems");
}

void tst_LabelDocument::inkNamesAreFileNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("what");

    const QString strange = u" holds a character that file names do not take everywhere"_s;
    const QString ends = u" begins or ends with a character that hides or changes a file's name"_s;
    QTest::newRow("plain") << u"black"_s << QString();
    QTest::newRow("everything") << u"Spot 185_C-1.2"_s << QString();
    QTest::newRow("letters of any script") << u"Größe Ж 黑"_s << QString();
    QTest::newRow("longest") << QString(64, u'a') << QString();
    QTest::newRow("too long") << QString(65, u'a')
                              << u"\""_s + QString(39, u'a') + u"…\" is longer than 64 characters"_s;
    QTest::newRow("empty") << u""_s << u"the ink has no name"_s;
    QTest::newRow("folder") << u"../black"_s << u"\"../black\""_s + strange;
    QTest::newRow("backslash") << u"a\\b"_s << u"\"a\\b\""_s + strange;
    QTest::newRow("null") << u"a"_s + QChar(0) << u"\"a"_s + QChar(0) + u"\""_s + strange;
    QTest::newRow("line feed") << u"a\nb"_s << u"\"a\nb\""_s + strange;
    QTest::newRow("colon") << u"C:"_s << u"\"C:\""_s + strange;
    QTest::newRow("hidden") << u".black"_s << u"\".black\""_s + ends;
    QTest::newRow("option") << u"-black"_s << u"\"-black\""_s + ends;
    QTest::newRow("blank first") << u" black"_s << u"\" black\""_s + ends;
    QTest::newRow("blank last") << u"black "_s << u"\"black \""_s + ends;
}

void tst_LabelDocument::inkNamesAreFileNames()
{
    QFETCH(QString, name);
    QFETCH(QString, what);
    LabelDocument document;
    document.setInks({ { name, QColor(255, 0, 0) } });
    QCOMPARE(shortTexts(document.problems()),
        what.isEmpty() ? QStringList() : QStringList(u"/inks/0/name: "_s + what));
}

void tst_LabelDocument::inkNamesAreUnique()
{
    LabelDocument document;
    document.setInks({ { u"Red"_s, QColor(255, 0, 0) }, { u"blue"_s, QColor(0, 0, 255) },
        { u"rED"_s, QColor(128, 0, 0) } });
    QCOMPARE(shortTexts(document.problems()), QStringList(u"/inks/2/name: another ink is named \"rED\""_s));
}

void tst_LabelDocument::thereAreOneToEightInks()
{
    LabelDocument document;
    document.setInks({});
    QCOMPARE(shortTexts(document.problems()), QStringList(u"/inks: there is no ink to print in"_s));

    QList<Ink> inks;
    for (int i = 0; i < 8; ++i)
        inks.append({ QString::number(i), QColor(i, 0, 0) });
    document.setInks(inks);
    QCOMPARE(shortTexts(document.problems()), QStringList());

    inks.append({ u"ninth"_s, QColor(9, 0, 0) });
    document.setInks(inks);
    QCOMPARE(shortTexts(document.problems()), QStringList(u"/inks: there are more than 8 inks"_s));
}

void tst_LabelDocument::inkColorsAreOpaqueRgb_data()
{
    QTest::addColumn<QColor>("color");

    QTest::newRow("invalid") << QColor();
    QTest::newRow("translucent") << QColor(255, 0, 0, 254);
    QTest::newRow("transparent") << QColor(Qt::transparent);
    QTest::newRow("HSV") << QColor::fromHsv(0, 255, 255);
    QTest::newRow("sixteen bits") << QColor::fromRgba64(0xFF00, 0, 0);
}

void tst_LabelDocument::inkColorsAreOpaqueRgb()
{
    QFETCH(QColor, color);
    LabelDocument document;
    document.setInks({ { u"red"_s, color } });
    QCOMPARE(shortTexts(document.problems()),
        QStringList(u"/inks/0/color: the ink's colour is no opaque RGB colour"_s));
}

void tst_LabelDocument::inkColorsAreDistinct()
{
    LabelDocument document;
    document.setPaper(QColor(255, 255, 0));
    document.setInks({ { u"red"_s, QColor(255, 0, 0) }, { u"rot"_s, QColor(255, 0, 0) },
        { u"yellow"_s, QColor(255, 255, 0) } });
    QCOMPARE(shortTexts(document.problems()),
        QStringList({ u"/inks/1/color: another ink is #ff0000"_s,
            u"/inks/2/color: #ffff00 is the paper's colour"_s }));
}

void tst_LabelDocument::paperIsOpaque()
{
    LabelDocument document;
    document.setPaper(QColor(255, 255, 255, 128));
    QCOMPARE(shortTexts(document.problems()),
        QStringList(u"/paper: the paper's colour is no opaque RGB colour"_s));
}

void tst_LabelDocument::itemsArePaintedOnThePaper()
{
    LabelDocument document;
    document.setPaper(QColor(255, 250, 240));
    auto *item = static_cast<RectangleItem *>(document.addItem(std::make_unique<RectangleItem>()));
    QCOMPARE(item->getSceneBackgroundColor(), QColor(255, 250, 240));
    document.setPaper(QColor(1, 2, 3));
    QCOMPARE(document.paper(), QColor(1, 2, 3));
    QCOMPARE(item->getSceneBackgroundColor(), QColor(1, 2, 3));
}

void tst_LabelDocument::itemsStayInOrder()
{
    LabelDocument document;
    Item *first = document.addItem(std::make_unique<RectangleItem>());
    Item *second = document.addItem(std::make_unique<RectangleItem>());
    QCOMPARE(document.items().size(), 2U);
    QCOMPARE(document.items()[0].get(), first);
    QCOMPARE(document.items()[1].get(), second);
    LabelDocument moved = std::move(document);
    QCOMPARE(moved.items()[1].get(), second);
}

void tst_LabelDocument::thereAreAtMostTwentyThousandItems()
{
    LabelDocument document;
    for (int i = 0; i < 20000; ++i)
        document.addItem(std::make_unique<RectangleItem>());
    QCOMPARE(shortTexts(document.problems()), QStringList());
    document.addItem(std::make_unique<RectangleItem>());
    QCOMPARE(shortTexts(document.problems()), QStringList(u"/items: 20001 items"_s));
}

void tst_LabelDocument::geometryIsFiniteAndDrawable_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("what");

    const QString range = u" is beyond the drawable range of ±1e+07"_s;
    for (const char *key : { "itemWidth", "itemHeight", "itemScaleX", "itemScaleY", "itemZValue" }) {
        QTest::addRow("%s largest", key) << QByteArray(key) << 1e7 << QString();
        QTest::addRow("%s too large", key) << QByteArray(key) << 10000001.0 << u"10000001"_s + range;
        QTest::addRow("%s endless", key) << QByteArray(key) << infinity << u"inf is no finite number"_s;
    }
    for (const char *key : { "itemWidth", "itemHeight", "itemScaleX", "itemScaleY" })
        QTest::addRow("%s NaN", key) << QByteArray(key) << notANumber << u"nan is no finite number"_s;
    for (const char *key : { "itemWidth", "itemHeight" }) {
        QTest::addRow("%s zero", key) << QByteArray(key) << 0.0 << QString();
        QTest::addRow("%s negative", key) << QByteArray(key) << -0.5 << u"-0.5 is negative"_s;
    }
    QTest::newRow("negative scale") << QByteArray("itemScaleX") << -2.0 << QString();
}

void tst_LabelDocument::geometryIsFiniteAndDrawable()
{
    QFETCH(QByteArray, key);
    QFETCH(double, value);
    QFETCH(QString, what);
    LabelDocument document;
    document.addItem(std::make_unique<RectangleItem>());
    auto *item = static_cast<RectangleItem *>(document.addItem(std::make_unique<RectangleItem>()));
    QVERIFY(item->setProperty(key.constData(), value));
    QCOMPARE(shortTexts(document.problems()),
        what.isEmpty() ? QStringList() : QStringList(u"/items/1/%1: "_s.arg(QLatin1String(key)) + what));
}

void tst_LabelDocument::perspectiveIsGeometryToo()
{
    LabelDocument document;
    auto *item = static_cast<RectangleItem *>(document.addItem(std::make_unique<RectangleItem>()));
    item->setTransform(QTransform(1, 0, 0, 0, 1, 0, 0, 0, 2e7));
    QCOMPARE(shortTexts(document.problems()),
        QStringList(u"/items/0/itemTransform: 2e+07 is beyond the drawable range of ±1e+07"_s));
}

void tst_LabelDocument::onlyAHundredProblemsAreListed()
{
    LabelDocument document;
    const auto addBroken = [&] { document.addItem(std::make_unique<RectangleItem>())->setItemWidth(-1); };
    for (int i = 0; i < 100; ++i)
        addBroken();
    QCOMPARE(document.problems().size(), 100);
    addBroken();
    QCOMPARE(document.problems().size(), 101);
    QCOMPARE(document.problems().last().what, u"and 1 more problem"_s);
    addBroken();
    QCOMPARE(document.problems().size(), 101);
    QCOMPARE(document.problems().last().what, u"and 2 more problems"_s);
}

void tst_LabelDocument::problemsAreOneLine_data()
{
    QTest::addColumn<QStringList>("parts");
    QTest::addColumn<QString>("line");

    QTest::newRow("all") << QStringList { u"a.vxl"_s, u"/paper"_s, u"is missing"_s, u"add it"_s }
                         << u"a.vxl: /paper: is missing; add it"_s;
    QTest::newRow("no place") << QStringList { u"a.vxl"_s, u""_s, u"is empty"_s, u""_s }
                              << u"a.vxl: is empty"_s;
    QTest::newRow("no file") << QStringList { u""_s, u"byte 8"_s, u"is odd"_s, u""_s } << u"byte 8: is odd"_s;
    QTest::newRow("advice alone") << QStringList { u""_s, u""_s, u""_s, u"go on"_s } << u"go on"_s;
    QTest::newRow("controls") << QStringList { u"a\x1B[2J\n"_s, u""_s, u"\x7F\u0085é"_s, u""_s }
                              << u"a\\x1b[2J\\x0a: \\x7f\\x85é"_s;
    QTest::newRow("reordering") << QStringList { u"a\u202Elxv"_s, u""_s, u"\u2028"_s, u""_s }
                                << u"a\\u202elxv: \\u2028"_s;
}

void tst_LabelDocument::problemsAreOneLine()
{
    QFETCH(QStringList, parts);
    const Problem problem { parts[0], parts[1], parts[2], parts[3] };
    QTEST(problem.text(), "line");
}

QTEST_MAIN(tst_LabelDocument)
#include "tst_labeldocument.moc"
