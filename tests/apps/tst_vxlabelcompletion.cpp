// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/programfolder.h"
#include "tests/apps/pseudoterminal.h"
#include "tests/apps/samplelabels.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

using namespace Qt::StringLiterals;

/// What bash offers behind the arguments that are typed already.
class tst_VxLabelCompletion : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void completes_data();
    void completes();
    void staysQuiet_data();
    void staysQuiet();
    void offersOptionsOfTheCommand();
    void completesWhatIsTyped_data();
    void completesWhatIsTyped();

private:
    /// What is offered for the last word, in alphabetical order.
    [[nodiscard]] QStringList offered(const QStringList &words) const;
};

void tst_VxLabelCompletion::init()
{
    renew();
    for (const QString &name : { u"label.vxl"_s, u"my label.vxl"_s, u"my other.vxb"_s, u"prices.csv"_s,
             u"notes.txt"_s, u"out.jsonl"_s, u"-odd.vxl"_s, u"it's.vxl"_s })
        write(name, SampleLabels::toJson(SampleLabels::smallLabel()));
    QVERIFY(QDir(path()).mkdir(u"plates"_s));
    QVERIFY(QDir(path()).mkdir(u"more labels"_s));
    write(u"more labels/in it.vxl"_s, {});
}

QStringList tst_VxLabelCompletion::offered(const QStringList &words) const
{
    const QString script = uR"(source <("$0" completion bash) || exit
        complete -p vxlabel || exit
        COMP_WORDS=(vxlabel "$@")
        COMP_CWORD=$#
        _vxlabel
        printf '%s\n' "${COMPREPLY[@]}" | sort)"_s;
    const ProgramResult result
        = runCommand(u"bash"_s, QStringList { u"--norc"_s, u"-c"_s, script, program() } + words);
    QStringList lines = QString::fromUtf8(result.out).split(u'\n', Qt::SkipEmptyParts);
    if (!result.err.isEmpty() || result.code != 0 || lines.isEmpty())
        return { u"failed: "_s + QString::fromUtf8(result.err) };
    if (lines.takeFirst() != u"complete -F _vxlabel vxlabel"_s)
        return { u"nothing is registered"_s };
    return lines;
}

void tst_VxLabelCompletion::completes_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const QString &words, const QString &expected) {
        QTest::newRow(name) << words.split(u'|') << expected.split(u'|', Qt::SkipEmptyParts);
    };
    row("command", u"sep"_s, u"separate"_s);
    row("command behind an option", u"--keep-going|ren"_s, u"render"_s);
    row("options of the program", u"--"_s,
        u"--help|--help-all|--keep-going|--max-file|--max-memory|--max-time|--version"_s);
    row("option", u"separate|label.vxl|--ov"_s, u"--overprint"_s);
    row("options that begin alike", u"batch|--da"_s, u"--data|--data-format|--date"_s);
    row("option of the program behind a command", u"inspect|--kee"_s, u"--keep-going"_s);
    row("all values", u"render|label.vxl|--dither|"_s, u"diffusion|ordered|threshold"_s);
    row("value", u"render|--dither|o"_s, u"ordered"_s);
    row("value behind =", u"render|--dither|=|th"_s, u"threshold"_s);
    row("all values behind =", u"batch|--on-error|="_s, u"skip|stop"_s);
    row("value that is an argument", u"completion|"_s, u"bash"_s);
    row("file", u"inspect|la"_s, u"label.vxl"_s);
    row("files with blanks", u"inspect|my"_s, u"my label.vxl|my other.vxb"_s);
    row("behind a backslash", u"inspect|my\\ l"_s, u"my label.vxl"_s);
    row("between quotation marks", u"inspect|\"my o"_s, u"my other.vxb"_s);
    row("between apostrophes", u"inspect|'my o"_s, u"my other.vxb"_s);
    row("in a folder with a blank", u"inspect|more\\ labels/"_s, u"more labels/in it.vxl"_s);
    row("with an apostrophe", u"inspect|it"_s, u"it's.vxl"_s);
    row("labels and folders only", u"convert|"_s,
        u"-odd.vxl|it's.vxl|label.vxl|more labels|my label.vxl|my other.vxb|plates"_s);
    row("second file", u"convert|label.vxl|my\\ o"_s, u"my other.vxb"_s);
    row("any file", u"batch|label.vxl|--data|p"_s, u"plates|prices.csv"_s);
    row("file of a database", u"batch|label.vxl|--data|sqlite|:|n"_s, u"notes.txt"_s);
    row("folder", u"separate|label.vxl|-o|"_s, u"more labels|plates"_s);
    row("every manifest", u"merge|a.jsonl|b.jsonl|o"_s, u"out.jsonl"_s);
    row("behind --", u"inspect|--|-"_s, u"-odd.vxl"_s);
    row("behind a value", u"render|--dpi|300|la"_s, u"label.vxl"_s);
}

void tst_VxLabelCompletion::completes()
{
    QFETCH(QStringList, words);
    QFETCH(QStringList, expected);
    QCOMPARE(offered(words), expected);
}

void tst_VxLabelCompletion::staysQuiet_data()
{
    QTest::addColumn<QStringList>("words");
    const auto row = [](const char *name, const QString &words) { QTest::newRow(name) << words.split(u'|'); };
    row("unknown command", u"pri"_s);
    row("behind an unknown command", u"print|la"_s);
    row("number", u"render|label.vxl|--dpi|"_s);
    row("one label too many", u"inspect|label.vxl|"_s);
    row("option behind --", u"inspect|--|--js"_s);
    row("what a shell would run", u"inspect|$(touch ran)"_s);
    row("what a shell would run as a value", u"render|--dither|$(touch ran)"_s);
    row("what a shell would run as a command", u"$(touch ran)|l"_s);
}

void tst_VxLabelCompletion::staysQuiet()
{
    QFETCH(QStringList, words);
    QCOMPARE(offered(words), QStringList());
    QVERIFY(!files().contains(u"ran"_s));
}

void tst_VxLabelCompletion::offersOptionsOfTheCommand()
{
    const QStringList render = offered({ u"render"_s, u"-"_s });
    QVERIFY(render.contains(u"--dpi"_s) && render.contains(u"--output"_s) && render.contains(u"--help"_s));
    QVERIFY(!render.contains(u"--data"_s) && !render.contains(u"--overprint"_s));
    QCOMPARE(QSet<QString>(render.begin(), render.end()).size(), render.size());
    QVERIFY(offered({ u"batch"_s, u"--"_s }).contains(u"--data"_s));
}

void tst_VxLabelCompletion::completesWhatIsTyped_data()
{
    QTest::addColumn<QByteArray>("keys");
    QTest::newRow("command and file") << QByteArray("vxlabel insp\tlab\t");
    QTest::newRow("file with a blank") << QByteArray("vxlabel inspect my\\ l\t");
    QTest::newRow("file between quotation marks") << QByteArray("vxlabel inspect \"my l\t");
    QTest::newRow("value") << QByteArray(
        "vxlabel render label.vxl -o proof.png --dither=th\t; vxlabel inspect l\t");
}

void tst_VxLabelCompletion::completesWhatIsTyped()
{
    QFETCH(QByteArray, keys);
    PseudoTerminal terminal;
    QProcess bash;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"PATH"_s, QFileInfo(program()).absolutePath() + u':' + environment.value(u"PATH"_s));
    environment.insert(u"TERM"_s, u"dumb"_s);
    environment.insert(u"INPUTRC"_s, u"/dev/null"_s);
    bash.setProcessEnvironment(environment);
    bash.setWorkingDirectory(path());
    terminal.connect(bash, { 0, 1, 2 });
    bash.start(u"bash"_s, { u"--norc"_s, u"--noprofile"_s, u"-i"_s });
    QVERIFY(bash.waitForStarted());
    terminal.type("source <(vxlabel completion bash)\n" + keys + "\nexit\n");
    QVERIFY(bash.waitForFinished(patience));
    const QByteArray written = terminal.written();
    QVERIFY2(written.contains("page    25.4 x 12.7 mm"), written);
    QVERIFY2(!written.contains("vxlabel: "), written);
}

QTEST_GUILESS_MAIN(tst_VxLabelCompletion)

#include "tst_vxlabelcompletion.moc"
