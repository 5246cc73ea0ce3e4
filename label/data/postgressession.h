// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/sqlsession.h"

#include <deque>

/// A query to a PostgreSQL server. The server itself sees to it that it is a single one, by opening a cursor
/// for it, that it changes nothing, in a transaction that is read-only, and that no part of the rows takes
/// too long.
class PostgresSession final : public SqlSession
{
public:
    PostgresSession(std::unique_ptr<SqlConnection> connection, const SqlSource::Options &options);

    [[nodiscard]] bool ask(const QString &query) override;
    [[nodiscard]] std::optional<Values> next() override;

private:
    /// Has the server watch the time. A query can change that, but not for the statement that is running.
    bool limitTime();
    bool openCursor(const QString &query);
    /// Asks for further rows.
    bool fetch();
    /// Takes rows from the server. False if there are none.
    bool receive();
    [[nodiscard]] Problem explained(const QSqlError &error) const override;

    std::deque<Values> m_received; ///< and not given
    int m_asked = 0; ///< rows that the last fetch() may give
    int m_came = 0; ///< of them
    int m_next = 1; ///< rows that the next one asks for
};
