// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/programfolder.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QProcessEnvironment bareEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto &name : { "DISPLAY"_L1, "WAYLAND_DISPLAY"_L1, "XDG_RUNTIME_DIR"_L1, "QT_QPA_PLATFORM"_L1,
             "LANG"_L1, "LC_ALL"_L1 })
        environment.remove(name);
    return environment;
}

} // namespace

QString ProgramFolder::program()
{
    return QStringLiteral(VX_PROGRAM);
}

QString ProgramFolder::sourceFile(const QString &name)
{
    return QStringLiteral(VX_SOURCE_DIR) + u'/' + name;
}

QString ProgramFolder::toolFile(const QString &name)
{
    return sourceFile(u"tests/tools/"_s + name);
}

QString ProgramFolder::exampleFile(const QString &name)
{
    return sourceFile(u"examples/%1.vxl"_s.arg(name));
}

QByteArray ProgramFolder::readExample(const QString &name)
{
    QFile file(exampleFile(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList ProgramFolder::exampleNames()
{
    return textExampleNames()
        + QStringList { u"bin-label"_s, u"calibration-sheet"_s, u"hazard-sign"_s, u"warning-sign"_s,
              u"wayfinding-sign"_s };
}

QStringList ProgramFolder::textExampleNames()
{
    return { u"address-label"_s, u"asset-tag"_s, u"price-sign"_s, u"product-label"_s, u"shelf-label"_s,
        u"shipping-label"_s, u"spare-parts-label"_s, u"spine-label"_s };
}

void ProgramFolder::renew()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void ProgramFolder::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray ProgramFolder::read(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList ProgramFolder::files(const QString &folder) const
{
    return QDir(path(folder))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

std::map<QString, QByteArray> ProgramFolder::contentsOf(const QString &folder) const
{
    std::map<QString, QByteArray> contents;
    for (const QString &name : files(folder))
        contents[name] = read(folder + u'/' + name);
    return contents;
}

std::unique_ptr<QProcess> ProgramFolder::start(const QString &command, const QStringList &arguments) const
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(bareEnvironment());
    process->setWorkingDirectory(m_folder->path());
    process->setStandardInputFile(QProcess::nullDevice());
    process->start(command, arguments);
    return process;
}

ProgramResult ProgramFolder::runCommand(const QString &command, const QStringList &arguments) const
{
    const auto process = start(command, arguments);
    if (!process->waitForFinished(patience) || process->exitStatus() != QProcess::NormalExit)
        return { -1, {}, "no normal end: " + process->readAllStandardError() };
    return { process->exitCode(), process->readAllStandardOutput(), process->readAllStandardError() };
}

ProgramResult ProgramFolder::run(const QStringList &arguments) const
{
    return runCommand(program(), arguments);
}

void ProgramFolder::expect(const QStringList &arguments, int code, const QByteArray &err) const
{
    const ProgramResult result = run(arguments);
    QCOMPARE(result.err, err);
    QCOMPARE(result.code, code);
}

void ProgramFolder::convert(const QStringList &labels) const
{
    for (qsizetype i = 1; i < labels.size(); ++i) {
        const ProgramResult result = run({ u"convert"_s, labels[i - 1], labels[i] });
        QCOMPARE(result.err, QByteArray());
        QCOMPARE(result.out, QByteArray());
        QCOMPARE(result.code, 0);
    }
}

bool isOneLine(const QByteArray &text)
{
    return text.count('\n') == 1 && text.endsWith('\n');
}
