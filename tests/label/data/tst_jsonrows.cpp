// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/jsonrows.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// Rows from JSON.
class tst_JsonRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void rowsAreRead_data();
    void rowsAreRead();
    void valuesBecomeTexts_data();
    void valuesBecomeTexts();
    void rowsKnowTheirPlaces();
    void onlyListsKnowHowManyTheyAre();
    void brokenRowsLeaveTheOthers_data();
    void brokenRowsLeaveTheOthers();
    void whatCannotBeOpened_data();
    void whatCannotBeOpened();

private:
    QString written(const QByteArray &bytes) const;
    std::unique_ptr<JsonRows> opened(const QByteArray &bytes) const;

    QTemporaryDir m_folder;
};

QString tst_JsonRows::written(const QByteArray &bytes) const
{
    QFile file(m_folder.filePath(u"rows.json"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("not written");
    return file.fileName();
}

std::unique_ptr<JsonRows> tst_JsonRows::opened(const QByteArray &bytes) const
{
    Problems problems;
    std::unique_ptr<JsonRows> rows = JsonRows::open(DataInput::open(written(bytes), problems), problems);
    if (!rows)
        qFatal("%s", qPrintable(problems.value(0).text()));
    return rows;
}

void tst_JsonRows::rowsAreRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("values"); // of all rows, the names first
    const QStringList plain { u"a"_s, u"b"_s, u"1"_s, u"2"_s, u"3"_s, QString() };
    QTest::newRow("list") << QByteArray(R"([{"b":"2","a":"1"},{"a":"3","b":null}])") << plain;
    QTest::newRow("list on many lines")
        << QByteArray("\n [\n{\"a\": \"1\",\n\"b\": \"2\"},\n{\"a\":\"3\"}\n]\n\n") << plain;
    QTest::newRow("list, a key in the second alone") << QByteArray(
        R"([{"a":"1"},{"b":"2"}])") << QStringList { u"a"_s, u"b"_s, u"1"_s, QString(), QString(), u"2"_s };
    QTest::newRow("lines") << QByteArray("{\"a\":\"1\",\"b\":\"2\"}\n\n{\"a\":\"3\"}") << plain;
    QTest::newRow("lines with a mark")
        << QByteArray("\xEF\xBB\xBF{\"a\":\"1\",\"b\":\"2\"}\r\n{\"a\":\"3\"}\r\n") << plain;
    QTest::newRow("one line") << QByteArray(R"({"a":"\u00fc"})") << QStringList { u"a"_s, u"ü"_s };
}

void tst_JsonRows::rowsAreRead()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, values);
    const std::unique_ptr<JsonRows> rows = opened(bytes);
    QStringList found = rows->columns();
    qint64 number = 0;
    for (RowResult result = rows->next(); result.kind != RowResult::End; result = rows->next()) {
        QCOMPARE(result.kind, RowResult::Data);
        QCOMPARE(result.row.number, ++number);
        found += result.row.values;
    }
    QCOMPARE(found, values);
    QCOMPARE(rows->next().kind, RowResult::End);
}

void tst_JsonRows::valuesBecomeTexts_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("text");
    QTest::newRow("text") << QByteArray(R"("a\nb")") << u"a\nb"_s;
    QTest::newRow("whole number") << QByteArray("4006381333931") << u"4006381333931"_s;
    QTest::newRow("large whole number") << QByteArray("9007199254740993") << u"9007199254740993"_s;
    QTest::newRow("fraction") << QByteArray("0.1") << u"0.1"_s;
    QTest::newRow("negative") << QByteArray("-12.5") << u"-12.5"_s;
    QTest::newRow("true") << QByteArray("true") << u"true"_s;
    QTest::newRow("false") << QByteArray("false") << u"false"_s;
    QTest::newRow("null") << QByteArray("null") << QString();
}

void tst_JsonRows::valuesBecomeTexts()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, text);
    QCOMPARE(opened("{\"x\":" + json + "}\n")->next().row.values, QStringList { text });
    QCOMPARE(opened("[{\"x\":" + json + "}]")->next().row.values, QStringList { text });
}

void tst_JsonRows::rowsKnowTheirPlaces()
{
    const QString name = m_folder.filePath(u"rows.json"_s);
    const std::unique_ptr<JsonRows> lines = opened("{\"a\":1}\n\n{\"a\":2}\n");
    QCOMPARE(lines->next().row.address, name + u":1"_s);
    QCOMPARE(lines->next().row.address, name + u":3"_s);
    const std::unique_ptr<JsonRows> list = opened("[{\"a\":1},\n{\"a\":2}]");
    QCOMPARE(list->next().row.address, name + u":/0"_s);
    QCOMPARE(list->next().row.address, name + u":/1"_s);
}

void tst_JsonRows::onlyListsKnowHowManyTheyAre()
{
    QCOMPARE(opened(R"([{"a":1},{"a":2},{"a":3}])")->total(), 3);
    QVERIFY(!opened(R"({"a":1})")->total());
}

void tst_JsonRows::brokenRowsLeaveTheOthers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("problem"); // of the second of three rows
    const auto row = [](const char *name, const QByteArray &bytes, const QString &problem) {
        QTest::newRow(name) << bytes << problem;
    };
    row("no JSON", "{\"a\":1}\n{\"a\":x}\n{\"a\":3}\n",
        u"line 2, column 6: no valid JSON, illegal number; write text in double quotes, and numbers in "
        u"digits "
        "with a point"_s);
    row("a list on a line", "{\"a\":1}\n[1]\n{\"a\":3}\n", u"line 2: is no object"_s);
    row("unknown key", "{\"price\":1}\n{\"prise\":2}\n{\"price\":3}\n",
        u"line 2: \"prise\" is no column; did you mean \"price\"?"_s);
    row("further key", "{\"price\":1}\n{\"price\":1,\"note\":2}\n{\"price\":3}\n",
        u"line 2: \"note\" is no column; give the first object every key, with null for an empty value"_s);
    row("list in a row", R"([{"a":1},{"a":[2]},{"a":3}])",
        u"/1: \"a\" is neither a text nor a number; write its members as keys of the row itself"_s);
    row("number in the list", R"([{"a":1},2,{"a":3}])", u"/1: is no object"_s);
}

void tst_JsonRows::brokenRowsLeaveTheOthers()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, problem);
    const std::unique_ptr<JsonRows> rows = opened(bytes);
    QCOMPARE(rows->next().kind, RowResult::Data);
    const RowResult second = rows->next();
    QCOMPARE(second.kind, RowResult::Broken);
    QCOMPARE(second.problem.text(), m_folder.filePath(u"rows.json"_s) + u": "_s + problem);
    QCOMPARE(second.row.number, 2);
    const RowResult third = rows->next();
    QCOMPARE(third.kind, RowResult::Data);
    QCOMPARE(third.row.number, 3);
    QCOMPARE(third.row.values, QStringList { u"3"_s });
    QCOMPARE(rows->next().kind, RowResult::End);
}

void tst_JsonRows::whatCannotBeOpened_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("problem");
    const QString nothing
        = u"holds no object to take the columns from; write a list of objects, or an object "
          "on each line"_s;
    QTest::newRow("empty") << QByteArray() << nothing;
    QTest::newRow("blank") << QByteArray(" \n\t\n") << nothing;
    QTest::newRow("empty list") << QByteArray("[]") << nothing;
    QTest::newRow("empty object") << QByteArray("{}\n") << nothing;
    QTest::newRow("list of numbers") << QByteArray("[1,2]") << nothing;
    QTest::newRow("open list") << QByteArray("[{\"a\":1},\n")
                               << u"line 2, column 1: no valid JSON, unterminated array; look before this "
                                  "place for a missing comma, quote or bracket"_s;
    QTest::newRow("no UTF-8") << QByteArray("{\"a\":\"\xF6\"}\n")
                              << u"line 1: is not written in UTF-8; name the encoding, for example "
                                 "windows-1252"_s;
    QTest::newRow("key without a name")
        << QByteArray(R"({"":1})") << u"column 1: has no name; write one into the first row"_s;
}

void tst_JsonRows::whatCannotBeOpened()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, problem);
    Problems problems;
    QVERIFY(!JsonRows::open(DataInput::open(written(bytes), problems), problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].text(), m_folder.filePath(u"rows.json"_s) + u": "_s + problem);
}

QTEST_GUILESS_MAIN(tst_JsonRows)
#include "tst_jsonrows.moc"
