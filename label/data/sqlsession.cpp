// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/sqlsession.h"

#include "label/data/odbcsession.h"
#include "label/data/postgressession.h"
#include "label/data/sqlerror.h"
#include "label/data/sqlitesession.h"
#include "label/data/sqlvalue.h"
#include "label/wording.h"

#include <QSqlError>
#include <QSqlRecord>

using namespace Qt::StringLiterals;

namespace {

/// Whether a text takes more bytes in UTF-8, where a unit of UTF-16 takes at most three.
bool isLonger(const QString &text, qint64 bytes)
{
    return text.size() > bytes / 3 && text.toUtf8().size() > bytes;
}

QStringList namesOf(const QSqlRecord &record)
{
    QStringList names;
    for (int i = 0; i < record.count(); ++i)
        names.append(record.fieldName(i));
    return names;
}

} // namespace

SqlSession::SqlSession(std::unique_ptr<SqlConnection> connection, const SqlSource::Options &options)
    : m_connection(std::move(connection))
    , m_options(options)
    , m_answer(m_connection->database())
{
    m_answer.setForwardOnly(true);
}

std::unique_ptr<SqlSession> SqlSession::open(const SqlLocation &location, const QString &password,
    const SqlSource::Options &options, Problems &problems)
{
    auto connection = std::make_unique<SqlConnection>(location);
    if (const std::optional<Problem> problem = connection->open(password)) {
        problems.append(*problem);
        return {};
    }
    switch (location.kind) {
    case SqlLocation::PostgreSql:
        return std::make_unique<PostgresSession>(std::move(connection), options);
    case SqlLocation::Odbc:
        return std::make_unique<OdbcSession>(std::move(connection), options);
    default:
        return SqliteSession::open(std::move(connection), options, problems);
    }
}

bool SqlSession::ask(const QString &query)
{
    return run(query);
}

std::optional<SqlSession::Values> SqlSession::next()
{
    return advance() ? std::optional(current()) : std::nullopt;
}

bool SqlSession::run(const QString &statement)
{
    if (!m_answer.exec(statement)) {
        m_problem = explained(m_answer.lastError());
        return false;
    }
    m_columns = namesOf(m_answer.record());
    return true;
}

bool SqlSession::advance()
{
    if (m_answer.next())
        return true;
    if (m_answer.lastError().isValid())
        m_problem = explained(m_answer.lastError());
    return false;
}

SqlSession::Values SqlSession::current() const
{
    Values row;
    for (qsizetype i = 0; i < m_columns.size(); ++i) {
        const std::optional<QString> text = SqlValue::text(valueAt(int(i)));
        if (!text)
            return { {}, u"column %1 holds bytes that are no UTF-8 text"_s.arg(Wording::quoted(m_columns[i])),
                u"leave it out of the query"_s };
        if (isLonger(*text, m_options.maxValueBytes))
            return { {},
                u"column %1 holds more than %2 bytes"_s.arg(Wording::quoted(m_columns[i]))
                    .arg(m_options.maxValueBytes),
                {} };
        row.values.append(*text);
    }
    return row;
}

Problem SqlSession::explained(const QSqlError &error) const
{
    return problemOf(SqlError::text(error), {});
}

Problem SqlSession::problemOf(const QString &what, const QString &advice) const
{
    return { m_connection->display(), {}, what, advice };
}

Problem SqlSession::tooSlow() const
{
    return problemOf(u"the query works for more than %1 s without giving a row"_s.arg(
                         Wording::number(double(m_options.patience.count()) / 1000.0)),
        u"let it choose fewer rows, or give the tables an index"_s);
}
