// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"

#include <QStringList>

#include <optional>

/// Where an SQL database is, and in whose name it is asked. It holds no password, and so nothing that is
/// shown of it does.
struct VX_LABEL_EXPORT SqlLocation
{
    enum Kind { Sqlite, PostgreSql, Odbc };

    /// The location that a URL names:
    /// - `sqlite:prices.db`: a file below baseFolder; `sqlite:///data/prices.db`: one anywhere.
    /// - `postgresql://user@host:5432/database` or `postgres:`, with the options sslmode, sslrootcert and
    ///   target_session_attrs behind a "?". What is left out is what the server's client library takes it
    ///   for.
    /// - `odbc:DSN=prices;UID=user`: a connection string. It may name a data source, or a driver by its name
    /// in
    ///   odbcinst.ini, and the server, database and user; what else a driver can be told, its own path
    ///   included, belongs in a data source, since it can have a driver load and write files.
    ///
    /// "%20" stands for a blank in the first two. Nothing, with the reason in problems, for any other text,
    /// and for one with a password, which is not repeated there.
    [[nodiscard]] static std::optional<SqlLocation> fromUrl(
        const QString &url, const QString &baseFolder, Problems &problems);

    /// Whether a text begins like the URL of a database rather than the name of a file.
    [[nodiscard]] static bool isUrl(const QString &text);
    /// The URL of a file that is an SQLite database, as its first bytes tell; nothing for any other path.
    [[nodiscard]] static std::optional<QString> urlOfFile(const QString &path);
    /// What is wrong with a text that begins like a URL, of which nothing can be read; nothing for a file,
    /// for the URL of a database, and for any other text. Only the scheme is repeated.
    [[nodiscard]] static std::optional<Problem> unknownScheme(const QString &text);

    Kind kind = Sqlite;
    QString display; ///< for people
    QString database; ///< an absolute path, the name of a database, or an ODBC connection string
    QString host; ///< of PostgreSQL
    QString user; ///< of PostgreSQL
    int port = -1; ///< of PostgreSQL; -1: the usual one
    QStringList options; ///< of PostgreSQL: "sslmode=require"
};
