// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

/// A PostgreSQL server of its own, which asks for passwords, on a free port of this machine. It ends with the
/// object, and with this process if that ends first.
class PostgresServer
{
public:
    /// Starts the server; error() tells why there is none.
    PostgresServer();
    ~PostgresServer();
    Q_DISABLE_COPY_MOVE(PostgresServer)

    [[nodiscard]] const QString &error() const { return m_error; }
    [[nodiscard]] int port() const { return m_port; }
    [[nodiscard]] QString socketFolder() const { return m_folder.filePath(QStringLiteral("sockets")); }
    /// The one who may do everything, and the password.
    [[nodiscard]] static QString user() { return QStringLiteral("owner"); }
    [[nodiscard]] static QString password() { return QStringLiteral("s3cret;'word"); }

private:
    /// Runs to its end, or tells why it does not.
    bool run(const QString &program, const QStringList &arguments);
    /// The command to start a program as somebody other than root, as the server wants it.
    [[nodiscard]] QStringList command(const QString &program, const QStringList &arguments) const;
    bool prepareFolder();
    bool start();

    QTemporaryDir m_folder;
    QProcess m_server;
    QString m_programs; ///< their folder
    QString m_error;
    int m_port = 0;
};
