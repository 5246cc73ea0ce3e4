// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/sqliteguard.h"

#include "label/labellimits.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>

namespace {

/// A record holds several values, and is itself limited by the length of one.
constexpr int mostBytes = 2 * LabelLimits::MaxValueBytes;
/// Of a query without loops, which cannot be stopped: each may take as long as making the longest value does.
constexpr int mostInstructions = 25'000;
/// Longer ones take forever on long texts, in one step of the query.
constexpr int longestPattern = 200;
/// Instructions between two looks at the clock.
constexpr int instructionsBetween = 100;

/// Whether a function of SQL reaches beyond the database, as far as SQLite or extensions to it have them.
bool isHarmless(const char *function)
{
    constexpr std::array<const char *, 5> harmful { "load_extension", "readfile", "writefile", "edit",
        "fts3_tokenizer" };
    return std::ranges::none_of(
        harmful, [function](const char *name) { return sqlite3_stricmp(function, name) == 0; });
}

/// Whether a pragma only tells something that tables for full-text search need to know.
bool isQuestion(const char *pragma, const char *value)
{
    return !value && (qstrcmp(pragma, "data_version") == 0 || qstrcmp(pragma, "page_size") == 0);
}

bool isReading(int action, const char *first, const char *second)
{
    switch (action) {
    case SQLITE_SELECT:
    case SQLITE_READ:
    case SQLITE_RECURSIVE:
        return true;
    case SQLITE_FUNCTION:
        return isHarmless(second);
    case SQLITE_PRAGMA:
        return isQuestion(first, second);
    case SQLITE_UPDATE:
        // What declaring a virtual table looks like, json_each for example. Changing the schema is refused
        // elsewhere.
        return qstrcmp(first, "sqlite_master") == 0;
    default:
        return false;
    }
}

} // namespace

SqliteGuard::SqliteGuard(sqlite3 *database, const SqlSource::Options &options)
    : m_database(database)
    , m_patience(options.patience)
    , m_deadline(options.patience)
{
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(m_database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_limit(m_database, SQLITE_LIMIT_LENGTH, mostBytes);
    sqlite3_limit(m_database, SQLITE_LIMIT_COLUMN, LabelLimits::MaxColumns);
    sqlite3_limit(m_database, SQLITE_LIMIT_LIKE_PATTERN_LENGTH, longestPattern);
    sqlite3_limit(m_database, SQLITE_LIMIT_VDBE_OP, mostInstructions);
    sqlite3_limit(m_database, SQLITE_LIMIT_ATTACHED, 0);
    sqlite3_set_authorizer(m_database, authorize, this);
    sqlite3_progress_handler(m_database, instructionsBetween, continues, this);
}

SqliteGuard::~SqliteGuard()
{
    sqlite3_set_authorizer(m_database, nullptr, nullptr);
    sqlite3_progress_handler(m_database, 0, nullptr, nullptr);
}

void SqliteGuard::startTime()
{
    m_deadline.setRemainingTime(m_patience);
}

int SqliteGuard::authorize(void *guard, int action, const char *first, const char *second,
    const char * /*database*/, const char * /*cause*/)
{
    auto *self = static_cast<SqliteGuard *>(guard);
    if (!isReading(action, first, second)) {
        self->m_verdict = Forbidden;
        return SQLITE_DENY;
    }
    // Views of views can take forever to be read before a query does its first step.
    return self->isLate() ? SQLITE_DENY : SQLITE_OK;
}

int SqliteGuard::continues(void *guard)
{
    return static_cast<SqliteGuard *>(guard)->isLate() ? 1 : 0;
}

bool SqliteGuard::isLate()
{
    const bool isLate = m_deadline.hasExpired();
    if (isLate)
        m_verdict = TooSlow;
    return isLate;
}

SqliteGuard::Verdict SqliteGuard::verdict() const
{
    return (sqlite3_errcode(m_database) & 0xff) == SQLITE_NOMEM ? TooLarge : m_verdict;
}
