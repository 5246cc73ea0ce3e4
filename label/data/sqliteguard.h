// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/sqlitememory.h"
#include "label/data/sqlsource.h"

#include <QDeadlineTimer>

struct sqlite3;

/// Keeps the queries to an SQLite database from anything but reading it, and from taking too much time or
/// memory for a row. Queries and databases may come from strangers.
class SqliteGuard
{
public:
    enum Verdict {
        Innocent,
        Forbidden, ///< the query was to do more than read
        TooSlow,
        TooLarge ///< in memory
    };

    /// Guards an open database, which outlives it.
    SqliteGuard(sqlite3 *database, const SqlSource::Options &options);
    ~SqliteGuard();
    Q_DISABLE_COPY_MOVE(SqliteGuard)

    /// From now on there is the time for one row.
    void startTime();
    /// What the query was stopped for. For one that ran out of memory, it must be asked at once.
    [[nodiscard]] Verdict verdict() const;

private:
    static int authorize(void *guard, int action, const char *first, const char *second, const char *database,
        const char *cause);
    static int continues(void *guard);

    bool isLate();

    SqliteMemory m_memory;
    sqlite3 *m_database;
    std::chrono::milliseconds m_patience;
    QDeadlineTimer m_deadline;
    Verdict m_verdict = Innocent;
};
