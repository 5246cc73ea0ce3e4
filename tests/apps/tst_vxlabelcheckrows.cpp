// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"

#include <QDir>
#include <QTest>
#include <QXmlStreamReader>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace BatchLabels;

namespace {

/// A text of a row of sku, name and qty, in a box of one line of few letters.
QByteArray stockLabel()
{
    const QString html = u"<p style=\"font-family:'DejaVu Sans'; font-size:10pt\">${name}</p>"_s;
    const QJsonObject box { { u"itemShape"_s, 0x10016 }, { u"itemHtml"_s, html }, { u"itemPositionX"_s, 10 },
        { u"itemPositionY"_s, 20 }, { u"itemWidth"_s, 100 }, { u"itemHeight"_s, 26 } };
    return toJson(labelWith({ box, text(10, 60, u"${sku}"_s) }));
}

/// The number of the label, near the edge: one digit of some 9 dots is on the label, two of them are not.
QByteArray countingLabel()
{
    return toJson(labelWith({ text(180, 10, u"${#}"_s) }));
}

struct TestCase
{
    QString name;
    QString failure; ///< the rule; empty for none
};

QList<TestCase> casesOf(const QByteArray &xml)
{
    QList<TestCase> cases;
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() == u"testcase"_s)
            cases.append({ reader.attributes().value(u"name"_s).toString(), {} });
        else if (reader.name() == u"failure"_s)
            cases.last().failure = reader.attributes().value(u"type"_s).toString();
    }
    return reader.hasError() ? QList<TestCase>() : cases;
}

/// So many good rows.
QByteArray stock(int rows)
{
    QByteArray table = "sku,name,qty\n";
    for (int row = 1; row <= rows; ++row)
        table += 'S' + QByteArray::number(row) + ",Apple,1\n";
    return table;
}

} // namespace

/// What a batch would make of the rows, told before it: and whatever happens, a report.
class tst_VxLabelCheckRows : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void rowsFailAsInABatch_data();
    void rowsFailAsInABatch();
    void optionsAreRefusedAsByABatch_data();
    void optionsAreRefusedAsByABatch();
    void rowsAreKnownByTheirKey();
    void copiesThatCountAreAllChecked();
    void rowsWithoutCopiesAreNotChecked();
    void placesHaveFieldsOfTheirOwn_data();
    void placesHaveFieldsOfTheirOwn();
    void everyEndHasAReport_data();
    void everyEndHasAReport();
    void manyReasonsAreNotMistakenForTheFirst();
    void progressIsTold();
    void interruptedChecksTellWhatTheyHaveFound();
    void batchesFailRowsThatACheckDoes_data();
    void batchesFailRowsThatACheckDoes();
    void batchesRefuseWhatIsWrongWithEveryRow();
};

void tst_VxLabelCheckRows::init()
{
    renew();
    write(u"a.vxl"_s, stockLabel());
}

void tst_VxLabelCheckRows::rowsFailAsInABatch_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("table"); // whose second row fails
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QByteArray>("words");
    const QStringList named { u"-o"_s, u"out/{sku}.{ink}.png"_s };
    const QStringList counted = named + QStringList { u"--copies-field=qty"_s };
    const auto row = [](const char *name, const QStringList &arguments, const QByteArray &second,
                         const char *rule, const char *words) {
        QTest::newRow(name) << arguments << "sku,name,qty\nA,Apple,1\n" + second + "\nC,Cherry,1\n"
                            << QString::fromUtf8(rule) << QByteArray(words);
    };
    row("no name", named, ",Pear,1", "unusable-name", "cannot name a file: it is empty");
    row("two of a name", named, "a,Pear,1", "unusable-name",
        "another label of this batch has the name \"out/a.black.png\"");
    row("a name elsewhere", named, "../../x,Pear,1", "unusable-name", "../../x");
    row("a hidden name", named, ".x,Pear,1", "unusable-name", ".x");
    row("two PDFs of a name", { u"-o"_s, u"{name}.pdf"_s, u"--format=pdf"_s }, "B,Apple,1", "unusable-name",
        "another label of this batch has the name \"Apple.pdf\"");
    row("no number of copies", counted, "B,Pear,some", "unusable-copies",
        "\"some\" is no number of copies; use a whole number from 0 to 10000");
    row("too many copies", counted, "B,Pear,10001", "unusable-copies", "\"10001\" is no number of copies");
    row("half a copy", counted, "B,Pear,1.5", "unusable-copies", "\"1.5\" is no number of copies");
    row("copies of a name", { u"-o"_s, u"{row}-{ink}.png"_s, u"--copies-field=qty"_s }, "B,Pear,-1",
        "unusable-copies", "\"-1\" is no number of copies");
}

void tst_VxLabelCheckRows::rowsFailAsInABatch()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, table);
    QFETCH(QString, rule);
    QFETCH(QByteArray, words);
    write(u"stock.csv"_s, table);
    const QStringList all = QStringList { u"a.vxl"_s, u"--data=stock.csv"_s } + arguments;
    const ProgramResult checked = run(QStringList { u"check"_s, u"--json"_s } + all);
    QCOMPARE(checked.err, QByteArray());
    QCOMPARE(checked.code, 1);
    QCOMPARE(files(), QStringList({ u"a.vxl"_s, u"stock.csv"_s }));
    const QList<QJsonObject> found = objectsOf(checked.out);
    QCOMPARE(found.size(), 2);
    QCOMPARE(found[0][u"rule"_s].toString(), rule);
    QCOMPARE(found[0][u"row"_s].toInt(), 2);
    const QByteArray told = run(QStringList { u"check"_s } + all).out;
    QVERIFY2(told.startsWith("stock.csv:3: error [" + rule.toUtf8() + "]: ") && told.contains(words), told);

    const ProgramResult printed = run(QStringList { u"batch"_s } + all);
    QCOMPARE(printed.code, 1);
    QVERIFY2(printed.err.startsWith("vxlabel: stock.csv:3: ") && printed.err.contains(words), printed.err);
    QVERIFY2(printed.out.startsWith("2 rows printed") && printed.out.endsWith(", 1 failed\n"), printed.out);
}

void tst_VxLabelCheckRows::optionsAreRefusedAsByABatch_data()
{
    QTest::addColumn<QStringList>("arguments"); // of a batch
    QTest::addColumn<QByteArray>("words");
    const auto row = [](const char *name, const QStringList &arguments, const char *words) {
        QTest::newRow(name) << arguments << QByteArray(words);
    };
    const QString good = u"{sku}.{ink}.png"_s;
    row("no such place", { u"-o"_s, u"{skew}.{ink}.png"_s },
        "there is no column \"skew\"; did you mean \"sku\"?");
    row("an open place", { u"-o"_s, u"{sku.png"_s }, "a single { in \"{sku.png\"");
    row("one name for all inks", { u"-o"_s, u"{sku}.png"_s }, "gives all inks one name; add {ink}");
    row("no PDF", { u"-o"_s, good, u"--format=pdf"_s }, "names no PDFs; let the names end in .pdf");
    row("no such key", { u"-o"_s, good, u"--key=nme"_s },
        "there is no column \"nme\"; did you mean \"name\"?");
    row("no such copies", { u"-o"_s, good, u"--copies-field=number"_s }, "there is no column \"number\"");
    row("no such rows", { u"-o"_s, good, u"--rows=7-"_s }, "--rows: chooses none of the rows that there are");
}

void tst_VxLabelCheckRows::optionsAreRefusedAsByABatch()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, words);
    write(u"stock.csv"_s, stock(3));
    const QStringList all = QStringList { u"a.vxl"_s, u"--data=stock.csv"_s } + arguments;
    const ProgramResult checked = run(QStringList { u"check"_s } + all);
    QCOMPARE(checked.err, QByteArray());
    QCOMPARE(checked.code, 2);
    QVERIFY2(checked.out.startsWith("a.vxl: error [unusable-option]: ") && checked.out.contains(words)
            && checked.out.endsWith("label checked: 1 error, 0 warnings\n"),
        checked.out);
    const ProgramResult printed = run(QStringList { u"batch"_s } + all);
    QCOMPARE(printed.code, 2);
    QVERIFY2(printed.err.contains(words), printed.err);
}

void tst_VxLabelCheckRows::rowsAreKnownByTheirKey()
{
    write(u"stock.csv"_s, "sku,name,qty\nA,Apple,x\nB,,1\n");
    const QStringList all { u"check"_s, u"a.vxl"_s, u"--data=stock.csv"_s, u"--key=name"_s,
        u"--copies-field=qty"_s };
    const QList<TestCase> cases = casesOf(run(all + QStringList { u"--junit"_s }).out);
    QCOMPARE(cases.size(), 3);
    QCOMPARE(cases[0].name, u"row 1: Apple"_s);
    QCOMPARE(cases[0].failure, u"unusable-copies"_s);
    QCOMPARE(cases[1].name, u"row 2"_s);
    QCOMPARE(objectsOf(run(all + QStringList { u"--json"_s }).out)[0][u"key"_s].toString(), u"Apple"_s);
}

void tst_VxLabelCheckRows::copiesThatCountAreAllChecked()
{
    write(u"a.vxl"_s, countingLabel());
    write(u"stock.csv"_s, "sku,qty\nA,8\nB,3\nC,0\n"); // labels 1 to 8, and 9 to 11
    const QStringList all { u"check"_s, u"a.vxl"_s, u"--data=stock.csv"_s, u"--json"_s };
    QCOMPARE(objectsOf(run(all).out).size(), 1);
    const QStringList counted = all + QStringList { u"--copies-field=qty"_s };
    for (const QStringList &arguments : { counted, counted + QStringList { u"--rows=2"_s } }) {
        const QList<QJsonObject> found = objectsOf(run(arguments).out);
        QCOMPARE(found.size(), 2);
        QCOMPARE(found[0][u"rule"_s].toString(), u"off-label"_s);
        QCOMPARE(found[0][u"row"_s].toInt(), 2);
    }
}

void tst_VxLabelCheckRows::rowsWithoutCopiesAreNotChecked()
{
    write(u"stock.csv"_s, "sku,name,qty\nA,Apple,1\nB,one two three four,0\n");
    const QStringList all { u"check"_s, u"a.vxl"_s, u"--data=stock.csv"_s };
    QCOMPARE(run(all + QStringList { u"--copies-field=qty"_s }).out,
        QByteArray("2 rows checked: nothing found\n"));
    const ProgramResult result = run(all);
    QVERIFY2(result.out.startsWith("stock.csv:3: error [text-overflow]: /items/1: "), result.out);
}

void tst_VxLabelCheckRows::placesHaveFieldsOfTheirOwn_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QJsonValue>("where");
    const QJsonValue none(QJsonValue::Undefined);
    QTest::newRow("an item") << QByteArray("B,one two three four,1") << u"text-overflow"_s << u"a.vxl"_s
                             << QJsonValue(u"/items/1"_s);
    QTest::newRow("copies") << QByteArray("B,Pear,x") << u"unusable-copies"_s << u"stock.csv:3"_s
                            << QJsonValue(u"column \"qty\""_s);
    QTest::newRow("a name") << QByteArray("a,Pear,1") << u"unusable-name"_s << u"stock.csv:3"_s << none;
    QTest::newRow("a broken row") << QByteArray("B,Pear") << u"broken-row"_s << u"stock.csv"_s
                                  << QJsonValue(u"line 3"_s);
}

void tst_VxLabelCheckRows::placesHaveFieldsOfTheirOwn()
{
    QFETCH(QByteArray, row);
    QFETCH(QString, rule);
    QFETCH(QString, file);
    QFETCH(QJsonValue, where);
    write(u"stock.csv"_s, "sku,name,qty\nA,Apple,1\n" + row + '\n');
    const ProgramResult result = run({ u"check"_s, u"a.vxl"_s, u"--data=stock.csv"_s, u"--json"_s,
        u"--copies-field=qty"_s, u"-o"_s, u"{sku}.{ink}.png"_s });
    const QJsonObject found = objectsOf(result.out)[0];
    QCOMPARE(found[u"rule"_s].toString(), rule);
    QCOMPARE(found[u"row"_s].toInt(), 2);
    QCOMPARE(found[u"address"_s].toString(), u"stock.csv:3"_s);
    QCOMPARE(found[u"file"_s].toString(), file);
    QCOMPARE(found[u"where"_s], where);
}

void tst_VxLabelCheckRows::everyEndHasAReport_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("code");
    const auto row
        = [](const char *name, const QStringList &arguments, const char *rule, const char *file, int code) {
              QTest::newRow(name) << arguments << QString::fromUtf8(rule) << QString::fromUtf8(file) << code;
          };
    row("missing data", { u"a.vxl"_s, u"--data=gone.csv"_s }, "unreadable-data", "gone.csv", 4);
    row("no such source", { u"a.vxl"_s, u"--data=@7"_s }, "unreadable-data", "a.vxl", 4);
    row("no database", { u"a.vxl"_s, u"--data=sqlite:gone.db"_s, u"--query=SELECT 1"_s }, "unreadable-data",
        "gone.db", 4);
    row("no question", { u"a.vxl"_s, u"--data=sqlite:gone.db"_s }, "unreadable-data", "a.vxl", 4);
    row("no columns", { u"a.vxl"_s, u"--data=empty.csv"_s }, "unreadable-data", "empty.csv", 4);
    row("no label", { u"gone.vxl"_s }, "broken-label", "gone.vxl", 3);
    row("a broken label", { u"broken.vxl"_s }, "broken-label", "broken.vxl", 3);
    row("another column", { u"a.vxl"_s, u"--data=other.csv"_s }, "data-binding", "a.vxl", 3);
    row("no such layer", { u"a.vxl"_s, u"--layer=top"_s }, "unknown-layer", "a.vxl", 3);
    row("no such rows", { u"a.vxl"_s, u"--data=stock.csv"_s, u"--rows=7"_s }, "unusable-option", "a.vxl", 2);
}

void tst_VxLabelCheckRows::everyEndHasAReport()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, rule);
    QFETCH(QString, file);
    QFETCH(int, code);
    write(u"broken.vxl"_s, "{ \"format\": ");
    write(u"stock.csv"_s, stock(1));
    write(u"other.csv"_s, "ean\n4\n");
    write(u"empty.csv"_s, "");
    const QStringList all = QStringList { u"check"_s } + arguments;
    const ProgramResult xml = run(all + QStringList { u"--junit"_s });
    QCOMPARE(xml.err, QByteArray());
    QCOMPARE(xml.code, code);
    const QList<TestCase> cases = casesOf(xml.out);
    QCOMPARE(cases.size(), 1);
    QCOMPARE(cases[0].name, u"label"_s);
    QCOMPARE(cases[0].failure, rule);
    const ProgramResult json = run(all + QStringList { u"--json"_s });
    QCOMPARE(json.code, code);
    const QList<QJsonObject> objects = objectsOf(json.out);
    QCOMPARE(objects[0][u"rule"_s].toString(), rule);
    QVERIFY2(objects[0][u"file"_s].toString().endsWith(file), json.out.constData());
    QCOMPARE(objects.last()[u"errors"_s].toInteger(), objects.size() - 1);
}

void tst_VxLabelCheckRows::manyReasonsAreNotMistakenForTheFirst()
{
    const QByteArrayList broken { R"({"sku":1)", R"({"sku" 1})", R"({"sku":1e})", R"({"sku":tru})",
        R"({"sku":"x})", R"({"sku":1} x)", R"([1])", R"({"sku":1,})", R"({"sku":2e})" };
    write(u"rows.jsonl"_s, "{\"name\":\"a\",\"sku\":\"b\",\"qty\":1}\n" + broken.join('\n') + '\n');
    const QByteArrayList lines
        = run({ u"check"_s, u"a.vxl"_s, u"--data"_s, u"rows.jsonl"_s }).out.trimmed().split('\n');
    QCOMPARE(lines.size(), 7); // six reasons, of which the last one has room for all others
    QVERIFY2(lines[2].endsWith("(2 rows: 4, 10)"), lines[2]); // illegal numbers
    for (const int alone : { 0, 1, 3, 4 })
        QVERIFY2(!lines[alone].contains(" rows"), lines[alone]);
    QVERIFY2(lines[5].endsWith("(3 rows for this and other reasons: 7, 8, 9)"), lines[5]);
}

void tst_VxLabelCheckRows::progressIsTold()
{
    write(u"stock.csv"_s, stock(3) + "S4,one two three four,1\n");
    const QStringList all { u"check"_s, u"a.vxl"_s, u"--data=stock.csv"_s, u"--json"_s };
    QCOMPARE(run(all).err, QByteArray());
    QCOMPARE(run(all + QStringList { u"--progress=none"_s }).err, QByteArray());
    const ProgramResult told = run(all + QStringList { u"--progress=json"_s });
    const QJsonObject last = objectsOf(told.err).last();
    QCOMPARE(last[u"rows"_s].toInt(), 4);
    QCOMPARE(last[u"errors"_s].toInt(), 1);
    QCOMPARE(last[u"warnings"_s].toInt(), 0);
    QVERIFY(last[u"rowsPerSecond"_s].toDouble() > 0.0);
    const ProgramResult line = run(all + QStringList { u"--progress=line"_s });
    QVERIFY2(line.err.startsWith("4 rows, ") && line.err.endsWith(", 1 error\n"), line.err);
    QCOMPARE(line.out, told.out);
}

void tst_VxLabelCheckRows::interruptedChecksTellWhatTheyHaveFound()
{
    write(u"stock.csv"_s, "sku,name,qty\nA,one two three four,1\n" + stock(200'000).mid(13));
    const auto process
        = start(program(), { u"check"_s, u"a.vxl"_s, u"--data=stock.csv"_s, u"--progress=json"_s });
    process->setReadChannel(QProcess::StandardError);
    QTRY_VERIFY_WITH_TIMEOUT(process->bytesAvailable() > 0, 60'000);
    ::kill(pid_t(process->processId()), SIGINT);
    QVERIFY(process->waitForFinished(patience));
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 130);
    const QByteArray out = process->readAllStandardOutput();
    QVERIFY2(out.startsWith("stock.csv:2: error [text-overflow]"), out);
    QVERIFY2(out.contains("a.vxl: error [interrupted]: the check was interrupted"), out);
    QVERIFY2(out.endsWith(" rows checked: 2 errors, 0 warnings\n"), out);
    QVERIFY(process->readAllStandardError().endsWith("vxlabel: interrupted\n"));
}

void tst_VxLabelCheckRows::batchesFailRowsThatACheckDoes_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("isPrinted");
    QTest::addColumn<QByteArray>("words"); // on standard error
    const QStringList checked { u"--check"_s };
    const QStringList strictly { u"--check"_s, u"--strict"_s };
    const QByteArray higher = "vxlabel: stock.csv:3: /items/1: ";
    const QByteArray borrowed = "its font has no U+0E01"; // Thai, which DejaVu Sans has not
    QTest::newRow("unchecked") << QByteArray("one two three four") << QStringList() << true << QByteArray();
    QTest::newRow("good") << QByteArray("Apple") << strictly << true << QByteArray();
    QTest::newRow("error") << QByteArray("one two three four") << checked << false << higher;
    QTest::newRow("warning") << QByteArray("\xE0\xB8\x81") << checked << true << borrowed;
    QTest::newRow("warning that counts") << QByteArray("\xE0\xB8\x81") << strictly << false << borrowed;
}

void tst_VxLabelCheckRows::batchesFailRowsThatACheckDoes()
{
    QFETCH(QByteArray, name);
    QFETCH(QStringList, arguments);
    QFETCH(bool, isPrinted);
    QFETCH(QByteArray, words);
    write(u"stock.csv"_s, "sku,name,qty\nA,Apple,1\nB," + name + ",1\n");
    const ProgramResult result
        = run(QStringList { u"batch"_s, u"a.vxl"_s, u"--data=stock.csv"_s, u"-o"_s, u"out/{sku}.{ink}.png"_s }
            + arguments);
    QCOMPARE(result.code, isPrinted ? 0 : 1);
    QCOMPARE(result.out, QByteArray(isPrinted ? "2 rows printed\n" : "1 row printed, 1 failed\n"));
    QVERIFY2(words.isEmpty() ? result.err.isEmpty() : result.err.contains(words), result.err);
    QCOMPARE(files(u"out"_s).size(), isPrinted ? 5 : 3);
    const QList<QJsonObject> record = objectsOf(read(u"out/manifest.jsonl"_s));
    QCOMPARE(record[2][u"status"_s].toString(), isPrinted ? u"printed"_s : u"failed"_s);
    QCOMPARE(record[2][u"problems"_s].toArray().size(), isPrinted ? 0 : 1);
}

void tst_VxLabelCheckRows::batchesRefuseWhatIsWrongWithEveryRow()
{
    write(u"a.vxl"_s, toJson(labelWith({ text(150, 60, u"Beyond the edge"_s), text(10, 60, u"${sku}"_s) })));
    write(u"stock.csv"_s, stock(2));
    const QStringList batch { u"batch"_s, u"a.vxl"_s, u"--data=stock.csv"_s, u"-o"_s,
        u"out/{sku}.{ink}.png"_s };
    const ProgramResult result = run(batch + QStringList { u"--check"_s });
    QCOMPARE(result.code, 3);
    QVERIFY2(result.err.startsWith("vxlabel: a.vxl: /items/1: ")
            && result.err.contains("of its content lie off the label"),
        result.err);
    QVERIFY(!QDir(path(u"out"_s)).exists());
    QCOMPARE(run(batch).code, 0);
}

QTEST_MAIN(tst_VxLabelCheckRows)
#include "tst_vxlabelcheckrows.moc"
