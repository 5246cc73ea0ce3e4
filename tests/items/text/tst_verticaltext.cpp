// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/verticaltext.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

/// Text from top to bottom: its two forms, and where its characters are.
class tst_VerticalText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void horizontalTextIsStacked_data();
    void horizontalTextIsStacked();
    void spacesAreKeptWhereAsked_data();
    void spacesAreKeptWhereAsked();
    void verticalTextIsJoined_data();
    void verticalTextIsJoined();
    void verticalTextReturnsAsItWas_data();
    void verticalTextReturnsAsItWas();
    void charactersStayWhole_data();
    void charactersStayWhole();
    void everyLineIsACharacter();
    void stackingKeepsWhiteSpace();
    void positionsBecomeIndices_data();
    void positionsBecomeIndices();
    void indicesBecomePositions_data();
    void indicesBecomePositions();
    void indicesComeBackFromTheirPositions();
};

namespace {

// An e with an acute accent of its own, a face and a letter from beyond the first plane.
const QString accented = u"e\u0301"_s;
const QString face = u"\U0001F600"_s;
const QString fraktur = u"\U0001D504"_s;

} // namespace

void tst_VerticalText::horizontalTextIsStacked_data()
{
    QTest::addColumn<QString>("horizontal");
    QTest::addColumn<QString>("vertical");

    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("one character") << u"A"_s << u"A"_s;
    QTest::newRow("no break after the last") << u"ABC"_s << u"A\nB\nC"_s;
    QTest::newRow("tab, two spaces, line feed") << u"A\tB  D\n"_s << u"A\n \nB\n \nD"_s;
    QTest::newRow("lines are joined without a space") << u"AB\nCD"_s << u"A\nB\nC\nD"_s;
    QTest::newRow("line breaks of two characters") << u"AB\r\nCD\r\n"_s << u"A\nB\nC\nD"_s;
    QTest::newRow("lone carriage returns") << u"A\rB"_s << u"A\nB"_s;
    QTest::newRow("white space at the ends") << u" \t AB \n "_s << u"A\nB"_s;
    QTest::newRow("nothing but white space") << u" \t\r\n "_s << QString();
    QTest::newRow("spaces around a line break") << u"A \n B"_s << u"A\n \nB"_s;
    QTest::newRow("other white space") << u"A\u00A0\u2003B"_s << u"A\n \nB"_s;
    QTest::newRow("surrogates") << u"A"_s + face + u"B"_s << u"A\n"_s + face + u"\nB"_s;
    QTest::newRow("combining marks") << u"n"_s + accented + u"t"_s << u"n\n"_s + accented + u"\nt"_s;
}

void tst_VerticalText::horizontalTextIsStacked()
{
    QFETCH(const QString, horizontal);
    QFETCH(const QString, vertical);
    QCOMPARE(VerticalText::fromHorizontal(horizontal), vertical);
}

void tst_VerticalText::spacesAreKeptWhereAsked_data()
{
    QTest::addColumn<QString>("horizontal");
    QTest::addColumn<QString>("vertical");

    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("at the ends") << u" A "_s << u" \nA\n "_s;
    QTest::newRow("two between") << u"A  B"_s << u"A\n \n \nB"_s;
    QTest::newRow("only spaces") << u"  "_s << u" \n "_s;
    QTest::newRow("tab and line breaks") << u"A\tB\r\nC\n"_s << u"A\n \nB\nC"_s;
    QTest::newRow("line and paragraph separators") << u"A\u2028B\u2029C"_s << u"A\n \nB\n \nC"_s;
}

void tst_VerticalText::spacesAreKeptWhereAsked()
{
    QFETCH(const QString, horizontal);
    QFETCH(const QString, vertical);
    QCOMPARE(VerticalText::fromHorizontalWithSpaces(horizontal), vertical);
}

void tst_VerticalText::verticalTextIsJoined_data()
{
    QTest::addColumn<QString>("vertical");
    QTest::addColumn<QString>("horizontal");

    QTest::newRow("one character") << u"A"_s << u"A"_s;
    QTest::newRow("two lines") << u"A\nB"_s << u"AB"_s;
    QTest::newRow("an empty line is a space") << u"A\n\nB"_s << u"A B"_s;
    QTest::newRow("a space is a space") << u"A\n \nB"_s << u"A B"_s;
    QTest::newRow("two empty lines") << u"A\n\n\nB"_s << u"A  B"_s;
    QTest::newRow("empty first line") << u"\nA"_s << u" A"_s;
    QTest::newRow("empty last line") << u"A\n"_s << u"A "_s;
    QTest::newRow("carriage returns") << u"A\rB"_s << u"AB"_s;
    QTest::newRow("several characters on a line") << u"AB\nCD"_s << u"ABCD"_s;
    QTest::newRow("surrogates") << face + u"\n"_s + fraktur << face + fraktur;
    QTest::newRow("combining marks") << accented + u"\nA"_s << accented + u"A"_s;
}

void tst_VerticalText::verticalTextIsJoined()
{
    QFETCH(const QString, vertical);
    QFETCH(const QString, horizontal);
    QCOMPARE(VerticalText::toHorizontal(vertical), horizontal);
}

void tst_VerticalText::verticalTextReturnsAsItWas_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("words") << u"Zum roten Ochsen"_s;
    QTest::newRow("right to left") << u"שלום"_s;
    QTest::newRow("surrogates") << face + u" "_s + fraktur;
    QTest::newRow("combining marks") << u"caf"_s + accented + u" au lait"_s;
}

void tst_VerticalText::verticalTextReturnsAsItWas()
{
    QFETCH(const QString, text);
    const QString vertical = VerticalText::fromHorizontal(text);
    QVERIFY(vertical != text);
    QCOMPARE(VerticalText::toHorizontal(vertical), text);
}

void tst_VerticalText::charactersStayWhole_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("characters");

    QTest::newRow("nothing") << QString() << QStringList();
    QTest::newRow("letters") << u"AB"_s << QStringList { u"A"_s, u"B"_s };
    QTest::newRow("spaces") << u" A "_s << QStringList { u" "_s, u"A"_s, u" "_s };
    QTest::newRow("surrogates") << face + fraktur << QStringList { face, fraktur };
    QTest::newRow("combining mark") << u"r"_s + accented << QStringList { u"r"_s, accented };
    QTest::newRow("two marks") << u"a\u0323\u0302b"_s << QStringList { u"a\u0323\u0302"_s, u"b"_s };
    QTest::newRow("only a mark") << u"\u0301"_s << QStringList { u"\u0301"_s };
    QTest::newRow("joined emoji") << u"a\U0001F468\u200D\U0001F469b"_s
                                  << QStringList { u"a"_s, u"\U0001F468\u200D\U0001F469"_s, u"b"_s };
    QTest::newRow("flags") << u"\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7"_s
                           << QStringList { u"\U0001F1E9\U0001F1EA"_s, u"\U0001F1EB\U0001F1F7"_s };
    QTest::newRow("colour of skin") << u"\U0001F44D\U0001F3FD"_s << QStringList { u"\U0001F44D\U0001F3FD"_s };
    QTest::newRow("Thai vowels and tones")
        << u"\u0E01\u0E35\u0E48\u0E01\u0E33"_s << QStringList { u"\u0E01\u0E35\u0E48"_s, u"\u0E01\u0E33"_s };
    QTest::newRow("mark on surrogates") << fraktur + u"\u0301"_s << QStringList { fraktur + u"\u0301"_s };
}

void tst_VerticalText::charactersStayWhole()
{
    QFETCH(const QString, text);
    QFETCH(const QStringList, characters);
    QCOMPARE(VerticalText::charactersOf(text), characters);
    const QString vertical = VerticalText::stacked(characters);
    QCOMPARE(VerticalText::charactersIn(vertical), characters.isEmpty() ? QStringList(u" "_s) : characters);
}

void tst_VerticalText::everyLineIsACharacter()
{
    QCOMPARE(VerticalText::charactersIn(u"A\n\nB"_s), QStringList({ u"A"_s, u" "_s, u"B"_s }));
    QCOMPARE(VerticalText::charactersIn(u"A\n"_s), QStringList({ u"A"_s, u" "_s }));
    QCOMPARE(VerticalText::charactersIn(u"A\rAB\r\nC"_s), QStringList({ u"A"_s, u"AB"_s, u"C"_s }));
}

void tst_VerticalText::stackingKeepsWhiteSpace()
{
    QCOMPARE(VerticalText::stacked({ u" "_s, u" "_s, u"A"_s, u" "_s }), u" \n \nA\n "_s);
    QCOMPARE(VerticalText::stacked({}), QString());
}

void tst_VerticalText::positionsBecomeIndices_data()
{
    QTest::addColumn<QString>("vertical");
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("index");

    const QString abc = u"A\nB\nC"_s;
    QTest::newRow("nothing") << QString() << 0 << 0;
    QTest::newRow("before the first") << abc << 0 << 0;
    QTest::newRow("behind the first") << abc << 1 << 1;
    QTest::newRow("before the second") << abc << 2 << 1;
    QTest::newRow("behind the second") << abc << 3 << 2;
    QTest::newRow("before the last") << abc << 4 << 2;
    QTest::newRow("behind the last") << abc << 5 << 3;
    QTest::newRow("before the text") << abc << -7 << 0;
    QTest::newRow("behind the text") << abc << 99 << 3;

    const QString wide = face + u"\n"_s + accented + u"\nC"_s;
    QTest::newRow("within surrogates") << wide << 1 << 1;
    QTest::newRow("behind surrogates") << wide << 2 << 1;
    QTest::newRow("before a letter with a mark") << wide << 3 << 1;
    QTest::newRow("behind the mark") << wide << 5 << 2;
    QTest::newRow("before the letter after it") << wide << 6 << 2;
    QTest::newRow("behind all") << wide << 7 << 3;
}

void tst_VerticalText::positionsBecomeIndices()
{
    QFETCH(const QString, vertical);
    QFETCH(const int, position);
    QFETCH(const int, index);
    QCOMPARE(VerticalText::indexAt(vertical, position), index);
}

void tst_VerticalText::indicesBecomePositions_data()
{
    QTest::addColumn<QString>("vertical");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("position");

    const QString abc = u"A\nB\nC"_s;
    QTest::newRow("nothing") << QString() << 0 << 0;
    QTest::newRow("first") << abc << 0 << 0;
    QTest::newRow("second") << abc << 1 << 2;
    QTest::newRow("third") << abc << 2 << 4;
    QTest::newRow("end") << abc << 3 << 5;
    QTest::newRow("beyond the end") << abc << 99 << 5;
    QTest::newRow("before the start") << abc << -1 << 0;

    const QString wide = face + u"\n"_s + accented + u"\nC"_s;
    QTest::newRow("after surrogates") << wide << 1 << 3;
    QTest::newRow("after a mark") << wide << 2 << 6;
    QTest::newRow("end of wide characters") << wide << 3 << 7;
}

void tst_VerticalText::indicesBecomePositions()
{
    QFETCH(const QString, vertical);
    QFETCH(const int, index);
    QFETCH(const int, position);
    QCOMPARE(VerticalText::positionOf(vertical, index), position);
}

void tst_VerticalText::indicesComeBackFromTheirPositions()
{
    const QStringList characters { u"A"_s, face, u" "_s, accented, fraktur, u"B"_s };
    const QString vertical = VerticalText::stacked(characters);
    for (int index = 0; index <= characters.size(); ++index)
        QCOMPARE(VerticalText::indexAt(vertical, VerticalText::positionOf(vertical, index)), index);
}

QTEST_GUILESS_MAIN(tst_VerticalText)
#include "tst_verticaltext.moc"
