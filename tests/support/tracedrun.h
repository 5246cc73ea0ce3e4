// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

/// Running the test program once more, with a look at the files that it opens.
namespace TracedRun {

/// The files and connections that the program opens when it is started with these arguments, a line for each;
/// nothing if it does not end well. Needs VX_OPEN_CALLS_LIBRARY; the log is kept in the folder.
inline QByteArray openCalls(const QString &mode, const QString &folder)
{
    const QString log = folder + QLatin1Char('/') + mode + QStringLiteral(".log");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(VX_OPEN_CALLS_LIBRARY));
    environment.insert(QStringLiteral("VX_OPEN_CALLS"), log);
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("verify_asan_link_order=0"));
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), { mode, folder + QLatin1Char('/') });
    const bool ended = process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit;
    QFile file(log);
    return ended && process.exitCode() == 0 && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace TracedRun
