// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/sqlconnection.h"
#include "label/data/sqlsource.h"

#include <QSqlQuery>
#include <QVariant>

#include <memory>

class QSqlError;

/// One query to a database, and its rows. What it cannot change in the database, and for how long it may
/// work, depends on the kind of database.
class SqlSession
{
public:
    /// A row, or why its values cannot be used.
    struct Values
    {
        QStringList values;
        QString what; ///< empty for a usable row
        QString advice;
    };

    /// Opens the location. Null, with the reason in problems, if that cannot be done.
    [[nodiscard]] static std::unique_ptr<SqlSession> open(const SqlLocation &location,
        const QString &password, const SqlSource::Options &options, Problems &problems);
    virtual ~SqlSession() = default;
    Q_DISABLE_COPY_MOVE(SqlSession)

    /// Asks; once. False, with problem(), if there is no answer.
    [[nodiscard]] virtual bool ask(const QString &query);
    /// The next row of the answer. Nothing at the end, and with problem() where there is no more to be had.
    [[nodiscard]] virtual std::optional<Values> next();
    /// Why the last call gave nothing.
    [[nodiscard]] const std::optional<Problem> &problem() const { return m_problem; }

    /// The names of the columns, once it was asked.
    [[nodiscard]] const QStringList &columns() const { return m_columns; }

protected:
    SqlSession(std::unique_ptr<SqlConnection> connection, const SqlSource::Options &options);

    /// Whether the database does it; otherwise, problem() tells why not.
    bool run(const QString &statement);
    /// Whether there is a further row of what run() gave; without one, problem() may tell why.
    bool advance();
    /// The row that advance() has come to.
    [[nodiscard]] Values current() const;
    /// The value of a column in that row, as the kind of database means it.
    [[nodiscard]] virtual QVariant valueAt(int column) const { return m_answer.value(column); }
    /// What to tell a person of an error.
    [[nodiscard]] virtual Problem explained(const QSqlError &error) const;
    [[nodiscard]] Problem problemOf(const QString &what, const QString &advice) const;
    [[nodiscard]] Problem tooSlow() const;
    void fail(const Problem &problem) { m_problem = problem; }

    [[nodiscard]] const QSqlDatabase &database() const { return m_connection->database(); }
    [[nodiscard]] QSqlQuery &answer() { return m_answer; }
    [[nodiscard]] const QSqlQuery &answer() const { return m_answer; }
    [[nodiscard]] const SqlSource::Options &options() const { return m_options; }

private:
    std::unique_ptr<SqlConnection> m_connection;
    SqlSource::Options m_options;
    QSqlQuery m_answer; ///< ends before the connection does
    QStringList m_columns;
    std::optional<Problem> m_problem;
};
