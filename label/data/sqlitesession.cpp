// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/sqlitesession.h"

#include <QSqlDriver>
#include <QSqlError>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

/// The database behind an open connection. Null if it is of another SQLite than the one that we are linked
/// to, whose functions would not understand it.
sqlite3 *handleOf(const QSqlDatabase &database)
{
    QSqlQuery version(u"SELECT sqlite_source_id()"_s, database);
    const QVariant handle = database.driver()->handle();
    if (!version.next() || version.value(0).toString().toUtf8() != sqlite3_sourceid()
        || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        return nullptr;
    return *static_cast<sqlite3 *const *>(handle.constData());
}

} // namespace

SqliteSession::SqliteSession(
    std::unique_ptr<SqlConnection> connection, const SqlSource::Options &options, sqlite3 *handle)
    : SqlSession(std::move(connection), options)
    , m_guard(handle, options)
{
}

std::unique_ptr<SqliteSession> SqliteSession::open(
    std::unique_ptr<SqlConnection> connection, const SqlSource::Options &options, Problems &problems)
{
    if (sqlite3 *handle = handleOf(connection->database()))
        return std::unique_ptr<SqliteSession>(new SqliteSession(std::move(connection), options, handle));
    problems.append({ connection->display(), {}, u"Qt's driver for SQLite is made for another SQLite"_s,
        u"on Debian, install libqt6sql6-sqlite"_s });
    return {};
}

bool SqliteSession::ask(const QString &query)
{
    m_guard.startTime();
    // A query without tables would not even find out that the file is no database.
    return run(u"SELECT 1 FROM sqlite_schema LIMIT 1"_s) && run(query);
}

std::optional<SqlSession::Values> SqliteSession::next()
{
    m_guard.startTime();
    std::optional<Values> row = SqlSession::next();
    // Without the memory to hand it over, Qt takes a value for an empty one.
    if (row && m_guard.verdict() == SqliteGuard::TooLarge) {
        fail(tooLarge());
        return {};
    }
    return row;
}

Problem SqliteSession::tooLarge() const
{
    return problemOf(u"the query takes too much memory"_s, u"let it choose fewer or smaller columns"_s);
}

Problem SqliteSession::explained(const QSqlError &error) const
{
    switch (m_guard.verdict()) {
    case SqliteGuard::TooSlow:
        return tooSlow();
    case SqliteGuard::TooLarge:
        return tooLarge();
    case SqliteGuard::Forbidden:
        return problemOf(u"the query does more than read"_s, u"let it be a SELECT"_s);
    default:
        break;
    }
    // Qt refuses it, and SQLite knows of no error.
    if (error.databaseText() == QLatin1StringView(sqlite3_errstr(SQLITE_OK)))
        return problemOf(u"the query holds more than one statement"_s, u"let it be one SELECT"_s);
    return SqlSession::explained(error);
}
