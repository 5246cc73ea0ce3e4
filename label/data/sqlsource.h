// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/rowsource.h"
#include "label/data/sqllocation.h"
#include "label/labellimits.h"

#include <chrono>
#include <memory>

class SqlSession;

/// Rows from an SQL database: the answer to one query, in the order of the database, of which no more than a
/// few hundred rows are in memory at a time. NULL is an empty text; numbers, dates and times are as people
/// write them. A row is broken if it has bytes that are no UTF-8 text, or too long a value.
///
/// The database is only read. For SQLite and PostgreSQL that is enforced, whatever the query is; ODBC drivers
/// are asked for it, and what they change nevertheless is taken back where the database has transactions. An
/// account that may only read is the best protection of a server.
///
/// A source is used by the thread that opened it. While there is one on SQLite, the memory that SQLite takes
/// in this process is limited; of a database in WAL mode, SQLite leaves the two files that this takes beside
/// it.
class VX_LABEL_EXPORT SqlSource final : public RowSource
{
public:
    struct Options
    {
        QString passwordFile = {}; ///< whose first line is the password; empty: what the environment says
        std::chrono::milliseconds patience { 10'000 }; ///< for a row; not kept by ODBC drivers
        qint64 maxRows = LabelLimits::MaxRows;
        qint64 maxValueBytes = LabelLimits::MaxValueBytes; ///< of one value, in UTF-8
    };

    /// Opens a database and asks it. Null, with the reasons in problems, if it cannot be reached, the query
    /// is none or is to change something, or the columns of the answer have no usable names.
    [[nodiscard]] static std::unique_ptr<SqlSource> open(
        const SqlLocation &location, const QString &query, const Options &options, Problems &problems);
    ~SqlSource() override;

    [[nodiscard]] const QStringList &columns() const override { return m_columns; }
    [[nodiscard]] RowResult next() override;

private:
    SqlSource(const QString &name, const Options &options, std::unique_ptr<SqlSession> session);

    QString m_name; ///< of the database, for people
    Options m_options;
    std::unique_ptr<SqlSession> m_session;
    QStringList m_columns;
    qint64 m_rows = 0;
    std::optional<RowResult> m_last; ///< once it has failed or ended
};
