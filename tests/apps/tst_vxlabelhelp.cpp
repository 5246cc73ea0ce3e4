// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

/// What the program tells about itself.
class tst_VxLabelHelp : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { renew(); } // rows of data are asked for before a test begins
    void init() { renew(); }

    void showsHelp_data();
    void showsHelp();
    void helpIsACommandAsWell_data() { addCommands(); }
    void helpIsACommandAsWell();
    void helpKnowsTheCommands();
    void showsExitCodes();
    void fitsIntoTerminals_data() { addCommands(); }
    void fitsIntoTerminals();
    void examplesRun_data() { addCommands(); }
    void examplesRun();
    void showsVersions();
    void makesAManualPage();

private:
    /// A row for the program, whose name is empty, and for each of its commands.
    void addCommands() const;
    [[nodiscard]] QString helpOn(const QString &command) const;
    [[nodiscard]] QStringList commands() const;
    /// The indented lines below a heading.
    [[nodiscard]] static QStringList linesBelow(const QString &text, const QRegularExpression &heading);
    [[nodiscard]] static QStringList examplesOf(const QString &help);
    /// The files that examples name.
    void prepareFiles(const QString &command) const;
    /// The version in the file name of a library that the program loads: "6.4.2".
    [[nodiscard]] QString versionOfLibrary(const QString &name) const;
};

QStringList tst_VxLabelHelp::linesBelow(const QString &text, const QRegularExpression &heading)
{
    QStringList lines;
    const qsizetype begin = text.indexOf(heading);
    if (begin < 0)
        return lines;
    for (const QString &line : text.mid(begin).split(u'\n').sliced(1)) {
        if (!line.startsWith(u"  "_s))
            break;
        lines.append(line.sliced(2));
    }
    return lines;
}

QStringList tst_VxLabelHelp::examplesOf(const QString &help)
{
    static const QRegularExpression heading(u"^Examples?:$"_s, QRegularExpression::MultilineOption);
    return linesBelow(help, heading);
}

QString tst_VxLabelHelp::helpOn(const QString &command) const
{
    QStringList arguments { command, u"--help"_s };
    arguments.removeAll(QString());
    const ProgramResult result = run(arguments);
    return result.code == 0 && result.err.isEmpty() ? QString::fromUtf8(result.out) : QString();
}

QStringList tst_VxLabelHelp::commands() const
{
    static const QRegularExpression heading(u"^Commands:$"_s, QRegularExpression::MultilineOption);
    QStringList names;
    for (const QString &line : linesBelow(helpOn({}), heading)) {
        if (!line.startsWith(u' '))
            names.append(line.section(u' ', 0, 0));
    }
    return names;
}

void tst_VxLabelHelp::addCommands() const
{
    QTest::addColumn<QString>("command");
    QTest::newRow("vxlabel") << QString();
    for (const QString &command : commands())
        QTest::newRow(qPrintable(command)) << command;
}

void tst_VxLabelHelp::showsHelp_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("contents");
    QTest::newRow("program") << QString()
                             << QStringList { u"\nUsage: vxlabel [OPTIONS] COMMAND\n"_s, u"\nCommands:\n"_s,
                                    u"\n  render "_s, u"\n  separate "_s, u"\n  batch "_s, u"\n  merge "_s,
                                    u"\n  inspect "_s, u"\n  convert "_s, u"\n  barcodes "_s,
                                    u"\n  completion "_s, u"\n  --keep-going "_s, u"\n  --version "_s,
                                    u"\nSee also:\n"_s };
    QTest::newRow("render") << u"render"_s
                            << QStringList { u"\nUsage: vxlabel render LABEL -o FILE [OPTIONS]\n"_s,
                                   u"\n  --dpi N  "_s, u"\n  --force  "_s, u"\n  -o, --output FILE  "_s,
                                   u"diffusion, ordered or\n"_s, u"threshold;"_s, u"\n  --keep-going "_s };
    QTest::newRow("separate") << u"separate"_s
                              << QStringList { u"\nUsage: vxlabel separate LABEL -o DIR [OPTIONS]\n"_s,
                                     u"\n  --negative  "_s, u"\n  --overprint  "_s,
                                     u"\n  --format FORMAT  "_s };
    QTest::newRow("batch") << u"batch"_s
                           << QStringList { u"\nData:\n  --data SOURCE  "_s, u"\nRows:\n  --rows LIST  "_s,
                                  u"\nPlates:\n  --format FORMAT  "_s,
                                  u"\nFiles:\n  -o, --output PATTERN  "_s, u" from 1 to 256\n"_s,
                                  u"not with\n"_s, u"\nOptions:\n  -h, --help  "_s };
    QTest::newRow("merge") << u"merge"_s
                           << QStringList { u"\nUsage: vxlabel merge MANIFEST... -o FILE [OPTIONS]\n"_s };
    QTest::newRow("inspect") << u"inspect"_s
                             << QStringList { u"\nUsage: vxlabel inspect LABEL [OPTIONS]\n"_s };
    QTest::newRow("convert") << u"convert"_s
                             << QStringList { u"\nUsage: vxlabel convert LABEL TARGET [OPTIONS]\n"_s };
    QTest::newRow("barcodes") << u"barcodes"_s << QStringList { u"\nUsage: vxlabel barcodes [OPTIONS]\n"_s };
    QTest::newRow("completion") << u"completion"_s
                                << QStringList { u"\nUsage: vxlabel completion SHELL [OPTIONS]\n"_s };
}

void tst_VxLabelHelp::showsHelp()
{
    QFETCH(QString, command);
    QFETCH(QStringList, contents);
    const QString text = helpOn(command);
    QVERIFY(text.startsWith(u"Shows, checks and separates"_s) || !command.isEmpty());
    for (const QString &content : contents)
        QVERIFY2(text.contains(content), qPrintable(content + text));
}

void tst_VxLabelHelp::helpIsACommandAsWell()
{
    QFETCH(QString, command);
    QStringList arguments { u"help"_s, command };
    arguments.removeAll(QString());
    const ProgramResult result = run(arguments);
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.code, 0);
    QVERIFY(!result.out.isEmpty());
    QCOMPARE(QString::fromUtf8(result.out), helpOn(command));
}

void tst_VxLabelHelp::helpKnowsTheCommands()
{
    const ProgramResult mistyped = run({ u"help"_s, u"bach"_s });
    QCOMPARE(mistyped.code, 2);
    QVERIFY2(isOneLine(mistyped.err) && mistyped.err.endsWith("not bach; did you mean \"batch\"?\n"),
        mistyped.err);
}

void tst_VxLabelHelp::showsExitCodes()
{
    static const QRegularExpression heading(u"^Exit codes:$"_s, QRegularExpression::MultilineOption);
    QStringList codes;
    for (const QString &line : linesBelow(helpOn({}), heading)) {
        if (!line.startsWith(u' '))
            codes.append(line.section(u' ', 0, 0));
    }
    QCOMPARE(codes, QStringList({ u"0"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"130"_s }));
}

void tst_VxLabelHelp::fitsIntoTerminals()
{
    QFETCH(QString, command);
    const QString text = helpOn(command);
    QVERIFY(!text.isEmpty());
    const QStringList examples = examplesOf(text);
    for (const QString &line : text.split(u'\n'))
        QVERIFY2(line.size() <= 80 || examples.contains(line.mid(2)), qPrintable(line));
}

void tst_VxLabelHelp::prepareFiles(const QString &command) const
{
    const QDir labels(sourceFile(u"examples"_s));
    for (const QString &name : labels.entryList({ u"*.vxl"_s }))
        QVERIFY(QFile::copy(labels.filePath(name), path(name)));
    using namespace BatchLabels;
    write(u"shelf.vxl"_s,
        toJson(labelWith({ boundText(10, 10, 1, u"name"_s), text(10, 35, u"${price:%.2f}"_s) },
            { QJsonObject {
                { u"id"_s, 1 }, { u"kind"_s, u"csv"_s }, { u"location"_s, u"prices.csv"_s } } })));
    write(u"prices.csv"_s, prices);
    for (int share = 0; command == u"merge"_s && share < 4; ++share)
        expect({ u"batch"_s, u"shelf.vxl"_s, u"-o"_s, u"out/{sku}.{ink}.png"_s, u"--shard"_s,
                   u"%1/4"_s.arg(share) },
            0);
}

void tst_VxLabelHelp::examplesRun()
{
    QFETCH(QString, command);
    prepareFiles(command);
    const QStringList examples = examplesOf(helpOn(command));
    QVERIFY(!examples.isEmpty());
    const QString find = u"PATH='%1':$PATH\n"_s.arg(QFileInfo(program()).absolutePath());
    const QStringList before = files();
    bool writes = false;
    for (const QString &example : examples) {
        QVERIFY2(example.contains(u"vxlabel "_s + command), qPrintable(example));
        const ProgramResult result = runCommand(u"bash"_s, { u"-c"_s, find + example });
        QCOMPARE(result.err, QByteArray());
        QCOMPARE(result.code, 0);
        writes = writes || !result.out.isEmpty() || files() != before;
    }
    QVERIFY(writes);
}

QString tst_VxLabelHelp::versionOfLibrary(const QString &name) const
{
    const QString libraries = QString::fromUtf8(runCommand(u"ldd"_s, { program() }).out);
    const QRegularExpression line(u"%1\\.so\\S* => (\\S+)"_s.arg(name));
    const QString file = QFileInfo(line.match(libraries).captured(1)).canonicalFilePath();
    return file.section(u".so."_s, 1).section(u'.', 0, 2);
}

void tst_VxLabelHelp::showsVersions()
{
    QFile project(sourceFile(u"CMakeLists.txt"_s));
    QVERIFY(project.open(QIODevice::ReadOnly));
    static const QRegularExpression version(u"project\\(VXCanvasItem VERSION (\\d+\\.\\d+\\.\\d+)"_s);
    const QString own = version.match(QString::fromUtf8(project.readAll())).captured(1);
    QFile license(sourceFile(u"LICENSE"_s));
    QVERIFY(license.open(QIODevice::ReadOnly));
    const QString name = QString::fromUtf8(license.readLine()).trimmed();

    const ProgramResult result = run({ u"--version"_s });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.code, 0);
    const QStringList lines = QString::fromUtf8(result.out).split(u'\n');
    QCOMPARE(lines.size(), 7);
    QCOMPARE(lines[0], u"vxlabel "_s + own);
    QCOMPARE(lines[1], u"Qt "_s + versionOfLibrary(u"libQt6Core"_s));
    QCOMPARE(lines[2], u"libzint "_s + versionOfLibrary(u"libzint"_s));
    QVERIFY2(license.readAll().contains("Copyright (c) 2026, The VXCanvasItem authors"), "the licence");
    QCOMPARE(lines[4], u"Copyright (c) 2026 The VXCanvasItem authors"_s);
    QVERIFY2(lines[5].startsWith(name + u':'), qPrintable(lines[5]));
}

void tst_VxLabelHelp::makesAManualPage()
{
    const ProgramResult made
        = runCommand(u"bash"_s, { sourceFile(u"docs/tools/make_manual"_s), program(), u"vxlabel.1"_s });
    QCOMPARE(made.err, QByteArray());
    QCOMPARE(made.code, 0);
    const ProgramResult page
        = runCommand(u"groff"_s, { u"-man"_s, u"-ww"_s, u"-Tascii"_s, u"-P-cbou"_s, u"vxlabel.1"_s });
    QCOMPARE(page.err, QByteArray());
    QCOMPARE(page.code, 0);
    const QString text = QString::fromLatin1(page.out);
    QStringList sections;
    static const QRegularExpression heading(u"^[A-Z][A-Z ]+$"_s, QRegularExpression::MultilineOption);
    for (const QRegularExpressionMatch &match : heading.globalMatch(text))
        sections.append(match.captured(0));
    QStringList expected { u"NAME"_s, u"SYNOPSIS"_s, u"DESCRIPTION"_s, u"OPTIONS"_s };
    for (const QString &command : commands())
        expected.append(u"VXLABEL "_s + command.toUpper());
    QCOMPARE(
        sections, expected + QStringList({ u"EXIT CODES"_s, u"EXAMPLES"_s, u"COPYRIGHT"_s, u"SEE ALSO"_s }));
    static const QRegularExpression option(u"^  (?:-., )?(--\\S+)"_s, QRegularExpression::MultilineOption);
    for (const QString &command : commands()) {
        const QString section = text.section(u"\nVXLABEL %1\n"_s.arg(command.toUpper()), 1)
                                    .section(QRegularExpression(u"\n(?=[A-Z])"_s), 0, 0);
        const QString help = helpOn(command).section(u"\nOptions of all"_s, 0, 0);
        for (const QRegularExpressionMatch &match : option.globalMatch(help))
            QVERIFY2(section.contains(match.captured(1)), qPrintable(command + match.captured(1) + section));
    }
}

QTEST_GUILESS_MAIN(tst_VxLabelHelp)

#include "tst_vxlabelhelp.moc"
