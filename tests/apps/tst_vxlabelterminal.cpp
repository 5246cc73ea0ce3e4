// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"
#include "tests/apps/pseudoterminal.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// Colours on terminals, and nowhere else; and data that would steer a terminal.
class tst_VxLabelTerminal : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(); }

    void coloursComplaints_data();
    void coloursComplaints();
    void coloursWarningsOtherwise();
    void coloursComplaintsOfJobs();
    void showsProgressOnTerminalsOnly_data();
    void showsProgressOnTerminalsOnly();
    void showsControlCharacters_data();
    void showsControlCharacters();
    void showsControlCharactersOfTablesAnywhere();

private:
    /// What the program writes to the streams that are a terminal, with these variables beside others.
    [[nodiscard]] QByteArray runOnTerminal(
        const QStringList &arguments, const QList<int> &streams, const QStringList &variables = {}) const;
};

QByteArray tst_VxLabelTerminal::runOnTerminal(
    const QStringList &arguments, const QList<int> &streams, const QStringList &variables) const
{
    PseudoTerminal terminal;
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"NO_COLOR"_s);
    environment.insert(u"TERM"_s, u"xterm"_s);
    for (const QString &variable : variables)
        environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(path());
    process.setStandardInputFile(QProcess::nullDevice());
    terminal.connect(process, streams);
    process.start(program(), arguments);
    if (!process.waitForFinished(patience))
        return "no end";
    return terminal.written() + process.readAllStandardError();
}

void tst_VxLabelTerminal::coloursComplaints_data()
{
    QTest::addColumn<QList<int>>("terminals");
    QTest::addColumn<QStringList>("variables");
    QTest::addColumn<bool>("isColoured");
    const QList<int> errors { 2 };
    QTest::newRow("terminal") << errors << QStringList() << true;
    QTest::newRow("pipe") << QList<int>() << QStringList() << false;
    QTest::newRow("only the output is a terminal") << QList<int> { 1 } << QStringList() << false;
    QTest::newRow("NO_COLOR") << errors << QStringList { u"NO_COLOR=1"_s } << false;
    QTest::newRow("NO_COLOR that means no") << errors << QStringList { u"NO_COLOR=0"_s } << false;
    QTest::newRow("empty NO_COLOR") << errors << QStringList { u"NO_COLOR="_s } << true;
    QTest::newRow("dumb terminal") << errors << QStringList { u"TERM=dumb"_s } << false;
    QTest::newRow("unknown terminal") << errors << QStringList { u"TERM="_s } << false;
}

void tst_VxLabelTerminal::coloursComplaints()
{
    QFETCH(QList<int>, terminals);
    QFETCH(QStringList, variables);
    QFETCH(bool, isColoured);
    const QByteArray name = isColoured ? "\x1b[1;31mvxlabel:\x1b[0m" : "vxlabel:";
    QCOMPARE(runOnTerminal({ u"print"_s }, terminals, variables),
        name + " \"print\" was not expected; see vxlabel --help\n");
}

void tst_VxLabelTerminal::coloursWarningsOtherwise()
{
    using namespace SampleLabels;
    write(u"green.vxl"_s, toJson(smallLabelWith({ { u"itemFillColor"_s, u"#00ff00"_s } })));
    const QByteArray warning = runOnTerminal({ u"separate"_s, u"green.vxl"_s, u"-o"_s, u"."_s }, { 2 });
    QVERIFY2(warning.startsWith("\x1b[1;33mvxlabel:\x1b[0m warning: green.vxl: /items/0"), warning);
    QCOMPARE(warning.count('\x1b'), 2);
}

void tst_VxLabelTerminal::coloursComplaintsOfJobs()
{
    write(u"shelf.vxl"_s, BatchLabels::priceLabel());
    write(u"prices.csv"_s, "sku,name,price\nA1,Apple,cheap\n");
    const QByteArray errors = runOnTerminal({ u"batch"_s, u"shelf.vxl"_s, u"-o"_s, u"{sku}.{ink}.png"_s,
                                                u"--jobs"_s, u"2"_s, u"--progress"_s, u"none"_s },
        { 2 });
    QVERIFY2(errors.startsWith("\x1b[1;31mvxlabel:\x1b[0m /") && errors.contains("/prices.csv:2: "), errors);
    QCOMPARE(errors.count('\n'), 1);
}

void tst_VxLabelTerminal::showsProgressOnTerminalsOnly_data()
{
    QTest::addColumn<QStringList>("variables");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("terminal") << QStringList() << true;
    QTest::newRow("without colours") << QStringList { u"NO_COLOR=1"_s } << true;
    QTest::newRow("dumb terminal") << QStringList { u"TERM=dumb"_s } << false;
}

void tst_VxLabelTerminal::showsProgressOnTerminalsOnly()
{
    QFETCH(QStringList, variables);
    QFETCH(bool, isShown);
    write(u"shelf.vxl"_s, BatchLabels::priceLabel());
    write(u"prices.csv"_s, BatchLabels::prices);
    const QByteArray progress
        = runOnTerminal({ u"batch"_s, u"shelf.vxl"_s, u"-o"_s, u"{sku}.{ink}.png"_s }, { 2 }, variables);
    QCOMPARE(progress.contains("3 rows, "), isShown);
    QCOMPARE(progress.isEmpty(), !isShown);
}

void tst_VxLabelTerminal::showsControlCharacters_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("shown");
    QTest::newRow("names of options")
        << QStringList { u"inspect"_s, u"a.vxl"_s, u"--\x1b[2Jx"_s } << QByteArray("--\\x1b[2Jx");
    QTest::newRow("names of files") << QStringList { u"inspect"_s, u"\x1b]0;x\x07.vxl"_s }
                                    << QByteArray("\\x1b]0;x\\x07.vxl");
    QTest::newRow("values of options") << QStringList { u"render"_s, u"a.vxl"_s, u"-o"_s, u"a.png"_s,
        u"--dither"_s, u"\x1b[2J"_s } << QByteArray("not \\x1b[2J");
    QTest::newRow("names in documents")
        << QStringList { u"separate"_s, u"bad.vxl"_s, u"-o"_s, u"."_s } << QByteArray("\\x1b[41m");
    QTest::newRow("tables") << QStringList { u"inspect"_s, u"steering.vxl"_s }
                            << QByteArray("\"\\x1b[41m\\x9b1m\"");
    QTest::newRow("JSON") << QStringList { u"inspect"_s, u"steering.vxl"_s, u"--json"_s }
                          << QByteArray("\"\\u001b[41m\\x9b1m\"");
    QTest::newRow("columns of data") << QStringList { u"batch"_s, u"steering.vxl"_s, u"--data"_s,
        u"steering.csv"_s, u"-o"_s, u"{a}.{ink}.png"_s }
                                     << QByteArray("\\x1b[41m");
}

void tst_VxLabelTerminal::showsControlCharacters()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, shown);
    using namespace SampleLabels;
    write(u"bad.vxl"_s, toJson(smallLabelWith({ { u"\x1b[41m"_s, 1 } })));
    QJsonObject label = smallLabel();
    const QString steering = u"\x1b[41m\u009b1m"_s;
    label[u"items"_s] = QJsonArray { BatchLabels::text(1, 1, steering) };
    write(u"steering.vxl"_s, toJson(label));
    write(u"steering.csv"_s, "\x1b[41m\n1\n");

    const QByteArray both = runOnTerminal(arguments, { 1, 2 }, { u"NO_COLOR=1"_s });
    QVERIFY2(both.contains(shown), both);
    const QString text = QString::fromUtf8(both).remove(u'\n');
    const bool isPlain
        = std::ranges::none_of(text, [](QChar c) { return c.category() == QChar::Other_Control; });
    QVERIFY2(isPlain, both.toPercentEncoding(" \n"));
}

/// Tables are for people, whom they reach through pipes as well.
void tst_VxLabelTerminal::showsControlCharactersOfTablesAnywhere()
{
    using namespace SampleLabels;
    QJsonObject label = smallLabel();
    label[u"items"_s] = QJsonArray { BatchLabels::text(1, 1, u"\x1b[41m"_s) };
    write(u"steering.vxl"_s, toJson(label));
    const ProgramResult result = run({ u"inspect"_s, u"steering.vxl"_s });
    QVERIFY2(result.out.contains("\"\\x1b[41m\""), result.out);
    QVERIFY(!result.out.contains('\x1b'));
}

QTEST_GUILESS_MAIN(tst_VxLabelTerminal)

#include "tst_vxlabelterminal.moc"
