// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/postgressession.h"

#include <QElapsedTimer>
#include <QSqlError>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRows = 256;
/// Of the rows that are taken at a time, in characters, give or take one row.
constexpr qsizetype enoughText = 4'000'000;

qsizetype lengthOf(const QStringList &values)
{
    qsizetype length = 0;
    for (const QString &value : values)
        length += value.size();
    return length;
}

} // namespace

PostgresSession::PostgresSession(std::unique_ptr<SqlConnection> connection, const SqlSource::Options &options)
    : SqlSession(std::move(connection), options)
{
}

bool PostgresSession::ask(const QString &query)
{
    return run(u"BEGIN READ ONLY"_s) && run(u"SET LOCAL client_min_messages = error"_s) && limitTime()
        && openCursor(query) && fetch();
}

bool PostgresSession::limitTime()
{
    return run(u"SET LOCAL statement_timeout = %1"_s.arg(options().patience.count()));
}

bool PostgresSession::openCursor(const QString &query)
{
    // As a value, it cannot be more than one statement. Qt's prepared statements could: it sends them as
    // text.
    return run(u"SET LOCAL standard_conforming_strings = on"_s)
        && run(
            u"SELECT set_config('vxlabel.query', '%1', true)"_s.arg(QString(query).replace(u"'"_s, u"''"_s)))
        && run(u"DO $$DECLARE answer refcursor := 'vxlabel_answer';"
               "BEGIN OPEN answer NO SCROLL FOR EXECUTE current_setting('vxlabel.query'); END$$"_s);
}

bool PostgresSession::fetch()
{
    m_asked = m_next;
    m_came = 0;
    return limitTime() && run(u"FETCH %1 FROM vxlabel_answer"_s.arg(m_asked));
}

bool PostgresSession::receive()
{
    QElapsedTimer timer;
    timer.start();
    // A fetch that gave as many rows as it could has not seen the end.
    if (m_came == m_asked && !fetch())
        return false;
    qsizetype length = 0;
    // Without delay: for the server, a statement lasts until its last row is taken.
    for (; length < enoughText && m_came < m_asked && advance(); ++m_came) {
        m_received.push_back(current());
        length += lengthOf(m_received.back().values);
    }
    const bool isEasy = length < enoughText / 4 && timer.elapsed() < options().patience.count() / 10;
    m_next = isEasy ? std::min(2 * m_asked, mostRows) : 1;
    return !m_received.empty();
}

std::optional<SqlSession::Values> PostgresSession::next()
{
    if (m_received.empty() && (problem() || !receive()))
        return {};
    Values row = std::move(m_received.front());
    m_received.pop_front();
    return row;
}

Problem PostgresSession::explained(const QSqlError &error) const
{
    // What the server calls them: query_canceled, read_only_sql_transaction, invalid_cursor_definition.
    if (error.nativeErrorCode() == "57014"_L1)
        return tooSlow();
    if (error.nativeErrorCode() == "25006"_L1)
        return problemOf(u"the query does more than read"_s, u"let it be a SELECT"_s);
    if (error.nativeErrorCode() == "42P11"_L1)
        return problemOf(u"the query is not a single one that reads"_s, u"let it be a SELECT"_s);
    return SqlSession::explained(error);
}
