// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/data/postgresserver.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>

#include <arpa/inet.h>
#include <pwd.h>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int milliseconds = 60'000;

/// A port that nobody uses now.
int freePort()
{
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *general = reinterpret_cast<sockaddr *>(&address);
    const bool isBound = ::bind(socket, general, size) == 0 && ::getsockname(socket, general, &size) == 0;
    ::close(socket);
    return isBound ? ntohs(address.sin_port) : 0;
}

/// The folder of the newest server's programs; empty if there is none.
QString programFolder()
{
    const QDir versions(u"/usr/lib/postgresql"_s);
    const QStringList names
        = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
    for (const QString &name : names) {
        if (QFile::exists(versions.filePath(name + u"/bin/initdb"_s)))
            return versions.filePath(name + u"/bin"_s);
    }
    return {};
}

} // namespace

PostgresServer::PostgresServer()
    : m_programs(programFolder())
    , m_port(freePort())
{
    if (m_programs.isEmpty())
        m_error = u"there is no initdb: install postgresql"_s;
    else if (prepareFolder()
        && run(m_programs + u"/initdb"_s,
            { u"--pgdata"_s, m_folder.filePath(u"data"_s), u"--username"_s, user(), u"--auth"_s,
                u"scram-sha-256"_s, u"--pwfile"_s, m_folder.filePath(u"password"_s), u"--no-sync"_s,
                u"--encoding"_s, u"UTF8"_s, u"--locale"_s, u"C"_s }))
        start();
}

PostgresServer::~PostgresServer()
{
    if (m_server.state() == QProcess::NotRunning)
        return;
    // Fast shutdown: without waiting for those that are connected.
    ::kill(pid_t(m_server.processId()), SIGINT);
    if (!m_server.waitForFinished(milliseconds))
        m_server.kill();
    m_server.waitForFinished();
}

bool PostgresServer::prepareFolder()
{
    QFile file(m_folder.filePath(u"password"_s));
    if (!m_folder.isValid() || !QDir().mkdir(socketFolder()) || !file.open(QIODevice::WriteOnly)
        || file.write(password().toUtf8()) < 0) {
        m_error = u"there is no folder to work in"_s;
        return false;
    }
    file.close();
    const passwd *nobody = ::getpwnam("nobody");
    if (::geteuid() != 0 || !nobody)
        return true;
    for (const QString &path : { m_folder.path(), socketFolder(), file.fileName() }) {
        if (::chown(QFile::encodeName(path).constData(), nobody->pw_uid, nobody->pw_gid) != 0)
            m_error = path + u" cannot be given to nobody"_s;
    }
    return m_error.isEmpty();
}

QStringList PostgresServer::command(const QString &program, const QStringList &arguments) const
{
    QStringList command { u"setpriv"_s, u"--pdeathsig"_s, u"INT"_s };
    if (::geteuid() == 0)
        command += QStringList { u"--reuid"_s, u"nobody"_s, u"--regid"_s, u"nogroup"_s, u"--clear-groups"_s };
    return command + QStringList { program } + arguments;
}

bool PostgresServer::run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setWorkingDirectory(m_folder.path());
    const QStringList words = command(program, arguments);
    process.start(words.first(), words.sliced(1));
    if (process.waitForFinished(milliseconds) && process.exitStatus() == QProcess::NormalExit
        && process.exitCode() == 0)
        return true;
    m_error = program + u": "_s + process.errorString() + QString::fromUtf8(process.readAllStandardError());
    return false;
}

bool PostgresServer::start()
{
    const QStringList words = command(m_programs + u"/postgres"_s,
        { u"-D"_s, m_folder.filePath(u"data"_s), u"-p"_s, QString::number(m_port), u"-h"_s, u"127.0.0.1"_s,
            u"-k"_s, socketFolder(), u"-F"_s, u"-c"_s, u"logging_collector=off"_s });
    // Into a file: a pipe that nobody reads would stop the server.
    QFile log(m_folder.filePath(u"log"_s));
    m_server.setStandardErrorFile(log.fileName());
    m_server.setWorkingDirectory(m_folder.path());
    m_server.start(words.first(), words.sliced(1));
    QByteArray told;
    const QDeadlineTimer deadline(milliseconds);
    while (!told.contains("ready to accept connections")) {
        if (m_server.waitForFinished(50) || m_server.state() == QProcess::NotRunning
            || deadline.hasExpired()) {
            m_error = u"the server does not start: "_s + QString::fromUtf8(told);
            return false;
        }
        if (log.isOpen() || log.open(QIODevice::ReadOnly))
            told += log.readAll();
    }
    return true;
}
