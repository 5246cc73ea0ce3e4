// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/csvsource.h"
#include "label/labellimits.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QStringList texts(const Problems &problems)
{
    QStringList texts;
    for (const Problem &problem : problems)
        texts.append(problem.where.isEmpty() ? problem.what : problem.where + u": "_s + problem.what);
    return texts;
}

} // namespace

/// Rows from files of separated values.
class tst_CsvSource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void rowsAreRead_data();
    void rowsAreRead();
    void encodingsAreRead_data();
    void encodingsAreRead();
    void rowsKnowTheirLines();
    void rowsOfAnotherLengthAreBroken();
    void whatEndsTheSource_data();
    void whatEndsTheSource();
    void whatCannotBeOpened_data();
    void whatCannotBeOpened();
    void longFilesAreReadInPieces();
    void rowsAreEstimated_data();
    void rowsAreEstimated();

private:
    QString written(const QByteArray &bytes) const;
    std::unique_ptr<CsvSource> opened(const QByteArray &bytes, const CsvDialect &dialect = {}) const;

    QTemporaryDir m_folder;
};

QString tst_CsvSource::written(const QByteArray &bytes) const
{
    QFile file(m_folder.filePath(u"rows.csv"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("not written");
    return file.fileName();
}

std::unique_ptr<CsvSource> tst_CsvSource::opened(const QByteArray &bytes, const CsvDialect &dialect) const
{
    Problems problems;
    std::unique_ptr<CsvSource> source
        = CsvSource::open(DataInput::open(written(bytes), problems), dialect, problems);
    if (!source)
        qFatal("%s", qPrintable(texts(problems).join(u'\n')));
    return source;
}

void tst_CsvSource::rowsAreRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("values"); // of all rows, the names first
    const QStringList plain { u"a"_s, u"b"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s };
    const auto row = [](const char *name, const QByteArray &bytes, const QStringList &values) {
        QTest::newRow(name) << bytes << values;
    };
    row("commas", "a,b\n1,2\n3,4\n", plain);
    row("no end of the last line", "a,b\n1,2\n3,4", plain);
    row("carriage returns", "a,b\r\n1,2\r\n3,4\r\n", plain);
    row("semicolons", "a;b\n1;2\n3;4\n", plain);
    row("tabulators", "a\tb\n1\t2\n3\t4\n", plain);
    row("bars", "a|b\n1|2\n3|4\n", plain);
    row("empty lines", "\na,b\n\n1,2\n\n\n3,4\n\n", plain);
    row("quotes", "\"a\",\"b\"\n\"1\",2\n3,\"4\"\n", plain);
    row("delimiter in quotes", "a,b\n\"1,5\",2\n", { u"a"_s, u"b"_s, u"1,5"_s, u"2"_s });
    row("comma in a quoted name", "\"a,x\";b\n1;2\n", { u"a,x"_s, u"b"_s, u"1"_s, u"2"_s });
    row("doubled quotes", "a\n\"6\"\" pipe\"\n", { u"a"_s, u"6\" pipe"_s });
    row("line end in quotes", "a,b\n\"1\r\n2\",3\n", { u"a"_s, u"b"_s, u"1\r\n2"_s, u"3"_s });
    row("blanks are kept", "a, b\n 1 ,\t2\n", { u"a"_s, u" b"_s, u" 1 "_s, u"\t2"_s });
    row("empty values", "a,b,c\n,,\n\"\",x,\n", { u"a"_s, u"b"_s, u"c"_s, {}, {}, {}, {}, u"x"_s, {} });
    row("one column", "a\n1\n2\n", { u"a"_s, u"1"_s, u"2"_s });
    row("semicolons behind an empty line", "\r\n\na;b\n1;2\n3;4\n", plain);
    row("semicolons, no line end", "a;b", { u"a"_s, u"b"_s });
    row("no rows", "a,b\n", { u"a"_s, u"b"_s });
}

void tst_CsvSource::rowsAreRead()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, values);
    const std::unique_ptr<CsvSource> source = opened(bytes);
    QStringList found = source->columns();
    qint64 number = 0;
    for (RowResult result = source->next(); result.kind != RowResult::End; result = source->next()) {
        QCOMPARE(result.kind, RowResult::Data);
        QCOMPARE(result.row.number, ++number);
        found += result.row.values;
    }
    QCOMPARE(found, values);
    QCOMPARE(source->next().kind, RowResult::End);
}

void tst_CsvSource::encodingsAreRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("encoding");
    const QString text = u"größe,ein\nµ,€\n"_s;
    const auto as = [&text](QStringConverter::Encoding encoding, QStringConverter::Flag flag) {
        return QByteArray(QStringEncoder(encoding, flag)(text));
    };
    constexpr auto plain = QStringConverter::Flag::Default;
    constexpr auto marked = QStringConverter::Flag::WriteBom;
    QTest::newRow("UTF-8") << text.toUtf8() << QByteArray();
    QTest::newRow("UTF-8 with a mark") << as(QStringConverter::Utf8, marked) << QByteArray();
    QTest::newRow("UTF-16 LE with a mark") << as(QStringConverter::Utf16LE, marked) << QByteArray();
    QTest::newRow("UTF-16 BE with a mark") << as(QStringConverter::Utf16BE, marked) << QByteArray();
    QTest::newRow("UTF-16 LE named") << as(QStringConverter::Utf16LE, plain) << QByteArray("UTF-16LE");
    QTest::newRow("Windows-1252") << QByteArray("gr\xF6\xDF"
                                                "e,ein\n\xB5,\x80\n")
                                  << QByteArray("windows-1252");
}

void tst_CsvSource::encodingsAreRead()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, encoding);
    const std::unique_ptr<CsvSource> source = opened(bytes, { encoding, 0 });
    QCOMPARE(source->columns(), QStringList({ u"größe"_s, u"ein"_s }));
    QCOMPARE(source->next().row.values, QStringList({ u"µ"_s, u"€"_s }));
}

void tst_CsvSource::rowsKnowTheirLines()
{
    const std::unique_ptr<CsvSource> source = opened("a,b\n1,\"2\n3\n\"\n\n4,5\n");
    const QString name = m_folder.filePath(u"rows.csv"_s);
    QCOMPARE(source->next().row.address, name + u":2"_s);
    QCOMPARE(source->next().row.address, name + u":6"_s);
}

void tst_CsvSource::rowsOfAnotherLengthAreBroken()
{
    const std::unique_ptr<CsvSource> source = opened("a,b\n1\n1,2\n1,2,3\n");
    const RowResult narrow = source->next();
    QCOMPARE(narrow.kind, RowResult::Broken);
    QCOMPARE(texts({ narrow.problem }), QStringList { u"line 2: 1 values for 2 columns"_s });
    QCOMPARE(source->next().kind, RowResult::Data);
    const RowResult wide = source->next();
    QCOMPARE(wide.kind, RowResult::Broken);
    QCOMPARE(wide.row.number, 3);
    QCOMPARE(texts({ wide.problem }), QStringList { u"line 4: 3 values for 2 columns"_s });
}

void tst_CsvSource::whatEndsTheSource_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char *name, const QByteArray &bytes, const QString &problem) {
        QTest::newRow(name) << bytes << problem;
    };
    row("quote in a value", "a,b\n1,2\n3\"x,4\n", u"line 3: a quote in the middle of a value"_s);
    row("text behind a quote", "a,b\n1,2\n\"3\"x,4\n", u"line 3: a quote in the middle of a value"_s);
    row("open quote", "a,b\n1,2\n\"3,4\n5,6\n",
        u"line 3: a value that begins with a quote, and does not end with one"_s);
    row("no UTF-8", "a,b\n1,2\n\xF6,4\n", u"line 3: is not written in UTF-8"_s);
    row("half a character at the end", "a,b\n1,2\n3,\xC3", u"line 3: is not written in UTF-8"_s);
    row("half a pair of bytes",
        QByteArray("\xFF\xFE"
                   "a\0\n\0"
                   "1\0\n",
            9),
        u"line 2: is not written in UTF-16LE"_s);
    row("many values", "a,b\n1,2\n" + QByteArray(LabelLimits::MaxColumns, ',') + "\n",
        u"line 3: more than 4096 values in a row"_s);
}

void tst_CsvSource::whatEndsTheSource()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, problem);
    Problems problems;
    const std::unique_ptr<CsvSource> source
        = CsvSource::open(DataInput::open(written(bytes), problems), {}, problems);
    RowResult result;
    if (source) {
        result = source->next();
        while (result.kind == RowResult::Data)
            result = source->next();
        QCOMPARE(result.kind, RowResult::Failed);
        problems.append(result.problem);
        QCOMPARE(source->next().kind, RowResult::Failed);
    }
    QCOMPARE(texts(problems), QStringList { problem });
}

void tst_CsvSource::whatCannotBeOpened_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<QString>("problem");
    QTest::newRow("empty") << QByteArray() << QByteArray() << u"is empty"_s;
    QTest::newRow("column without a name")
        << QByteArray("a,,c\n") << QByteArray() << u"column 2: has no name"_s;
    QTest::newRow("name twice") << QByteArray("a,b,a\n") << QByteArray()
                                << u"column 3: has the name of column 1, \"a\""_s;
    QTest::newRow("too many columns") << QByteArray(LabelLimits::MaxColumns, ',') << QByteArray()
                                      << u"line 1: more than 4096 values in a row"_s;
    QTest::newRow("unknown encoding")
        << QByteArray("a\n") << QByteArray("klingon") << u"\"klingon\" is no known encoding"_s;
}

void tst_CsvSource::whatCannotBeOpened()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, encoding);
    QFETCH(QString, problem);
    Problems problems;
    QVERIFY(!CsvSource::open(DataInput::open(written(bytes), problems), { encoding, 0 }, problems));
    QCOMPARE(texts(problems), QStringList { problem });
}

void tst_CsvSource::longFilesAreReadInPieces()
{
    constexpr int rows = 50'000;
    QByteArray bytes = "number,text\n";
    for (int i = 1; i <= rows; ++i)
        bytes += QByteArray::number(i) + ",\"größer, als\nman\"\n";
    const std::unique_ptr<CsvSource> source = opened(bytes);
    RowResult result = source->next();
    for (int i = 1; i <= rows; ++i, result = source->next()) {
        QCOMPARE(result.kind, RowResult::Data);
        QCOMPARE(result.row.values, QStringList({ QString::number(i), u"größer, als\nman"_s }));
    }
    QCOMPARE(result.kind, RowResult::End);
}

void tst_CsvSource::rowsAreEstimated_data()
{
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<int>("rows");
    QTest::newRow("one") << QByteArray("UTF-8") << 1;
    QTest::newRow("few") << QByteArray("UTF-8") << 40;
    QTest::newRow("many") << QByteArray("UTF-8") << 50'000;
    QTest::newRow("of wide characters") << QByteArray("UTF-16LE") << 50'000;
}

void tst_CsvSource::rowsAreEstimated()
{
    QFETCH(const QByteArray, encoding);
    QFETCH(const int, rows);
    QStringEncoder encoder(encoding.constData());
    const QString text = u"a,bbbb\n"_s + u"1,cccc\n"_s.repeated(rows); // all lines of one length
    const std::unique_ptr<CsvSource> source = opened(encoder.encode(text), { encoding, 0 });
    QVERIFY(!source->estimate());
    QVERIFY(!source->total());
    for (int i = 0; i < rows; ++i) {
        QCOMPARE(source->next().kind, RowResult::Data);
        QCOMPARE(source->estimate(), rows);
    }
}

QTEST_GUILESS_MAIN(tst_CsvSource)
#include "tst_csvsource.moc"
