// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/sqlconnection.h"

#include "label/data/odbcstring.h"
#include "label/data/sqlerror.h"

#include <QFileInfo>
#include <QSqlError>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace {

struct Driver
{
    QLatin1StringView name;
    QLatin1StringView database; ///< for people
    QLatin1StringView package; ///< of Debian
};

constexpr Driver driverOf(SqlLocation::Kind kind)
{
    switch (kind) {
    case SqlLocation::PostgreSql:
        return { "QPSQL"_L1, "PostgreSQL"_L1, "libqt6sql6-psql"_L1 };
    case SqlLocation::Odbc:
        return { "QODBC"_L1, "ODBC"_L1, "libqt6sql6-odbc"_L1 };
    default:
        return { "QSQLITE"_L1, "SQLite"_L1, "libqt6sql6-sqlite"_L1 };
    }
}

/// Why a path holds no database; empty for an ordinary file.
QString obstacle(const QFileInfo &info)
{
    if (!info.exists())
        return u"does not exist"_s;
    if (info.isDir())
        return u"is a folder"_s;
    // A pipe or a device could keep the reader waiting.
    return info.isFile() ? QString() : u"is no ordinary file"_s;
}

QString connectOptions(const SqlLocation &location)
{
    switch (location.kind) {
    case SqlLocation::PostgreSql:
        return (location.options + QStringList { u"connect_timeout=10"_s }).join(u';');
    case SqlLocation::Odbc:
        return u"SQL_ATTR_ACCESS_MODE=SQL_MODE_READ_ONLY;SQL_ATTR_LOGIN_TIMEOUT=10"_s;
    default:
        return u"QSQLITE_OPEN_READONLY"_s;
    }
}

} // namespace

SqlConnection::SqlConnection(const SqlLocation &location)
    : m_location(location)
{
}

SqlConnection::~SqlConnection()
{
    const QString name = m_database.connectionName();
    // The connection cannot be removed while anything refers to it.
    m_database = QSqlDatabase();
    if (!name.isEmpty())
        QSqlDatabase::removeDatabase(name);
}

std::optional<Problem> SqlConnection::open(const QString &password)
{
    const Driver driver = driverOf(m_location.kind);
    if (!QSqlDatabase::isDriverAvailable(driver.name))
        return Problem { display(), {}, u"Qt's driver for %1 is not installed"_s.arg(driver.database),
            u"on Debian, install %1"_s.arg(driver.package) };
    if (m_location.kind == SqlLocation::Sqlite) {
        const QString reason = obstacle(QFileInfo(m_location.database));
        if (!reason.isEmpty())
            return Problem { display(), {}, reason, {} };
    }
    m_database = QSqlDatabase::addDatabase(driver.name, QUuid::createUuid().toString());
    configure(password);
    if (m_database.open())
        return {};
    const QString reason = SqlError::text(m_database.lastError());
    // Drivers do not repeat passwords; should one, its reason is of no use to anybody else.
    const bool isTold = password.isEmpty() || !reason.contains(password);
    return Problem { display(), {}, u"cannot be opened"_s + (isTold ? u": "_s + reason : QString()),
        reason.contains("password"_L1) ? u"is the password right? it comes from a password file, or for "
                                         "PostgreSQL from PGPASSWORD or ~/.pgpass"_s
                                       : QString() };
}

void SqlConnection::configure(const QString &password)
{
    const bool isOdbc = m_location.kind == SqlLocation::Odbc;
    m_database.setDatabaseName(isOdbc ? OdbcString(m_location.database).databaseName() : m_location.database);
    m_database.setHostName(m_location.host);
    m_database.setUserName(m_location.user);
    m_database.setPort(m_location.port);
    m_database.setPassword(isOdbc ? OdbcString::quoted(password) : password);
    m_database.setConnectOptions(connectOptions(m_location));
    m_database.setNumericalPrecisionPolicy(QSql::HighPrecision);
}
