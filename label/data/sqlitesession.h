// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/sqliteguard.h"
#include "label/data/sqlsession.h"

/// A query to an SQLite file, which a guard keeps from doing anything but reading.
class SqliteSession final : public SqlSession
{
public:
    /// Null, with the reason in problems, if the database cannot be guarded.
    [[nodiscard]] static std::unique_ptr<SqliteSession> open(
        std::unique_ptr<SqlConnection> connection, const SqlSource::Options &options, Problems &problems);

    [[nodiscard]] bool ask(const QString &query) override;
    [[nodiscard]] std::optional<Values> next() override;

private:
    SqliteSession(
        std::unique_ptr<SqlConnection> connection, const SqlSource::Options &options, sqlite3 *handle);

    [[nodiscard]] Problem tooLarge() const;
    [[nodiscard]] Problem explained(const QSqlError &error) const override;

    SqliteGuard m_guard;
};
