// SPDX-License-Identifier: BSD-3-Clause
#include "platform/text/whitespace.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_WhiteSpace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everyCharacterMustBeASpace_data();
    void everyCharacterMustBeASpace();
};

void tst_WhiteSpace::everyCharacterMustBeASpace_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("whiteSpace");

    QTest::newRow("null") << QString() << true;
    QTest::newRow("empty") << u""_s << true;
    QTest::newRow("blank") << u" "_s << true;
    QTest::newRow("tab, line feed, return") << u"\t\n\v\f\r"_s << true;
    QTest::newRow("no-break space") << u"\u00A0"_s << true;
    QTest::newRow("em space") << u"\u2003"_s << true;
    QTest::newRow("ideographic space") << u"\u3000"_s << true;
    QTest::newRow("line and paragraph separators") << u"\u2028\u2029"_s << true;
    QTest::newRow("letter") << u"a"_s << false;
    QTest::newRow("letter at the end") << u"  a"_s << false;
    QTest::newRow("letter at the start") << u"a  "_s << false;
    QTest::newRow("letter inside") << u" a "_s << false;
    QTest::newRow("full stop") << u"."_s << false;
    QTest::newRow("zero-width space") << u"\u200B"_s << false;
    QTest::newRow("null character") << QString(QChar(u'\0')) << false;
    QTest::newRow("beyond 16 bits") << u" \U0001F600"_s << false;
}

void tst_WhiteSpace::everyCharacterMustBeASpace()
{
    QFETCH(QString, text);
    QTEST(WhiteSpace::isWhiteSpace(text), "whiteSpace");
}

QTEST_MAIN(tst_WhiteSpace)
#include "tst_whitespace.moc"
