// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/sqlitememory.h"

#include "label/labellimits.h"

#include <sqlite3.h>

#include <mutex>

namespace {

/// Each value is there as UTF-8 and UTF-16, and twice while it is made.
constexpr sqlite3_int64 mostMemory = 10 * LabelLimits::MaxValueBytes;

std::mutex mutex;
int count = 0;
sqlite3_int64 limitBefore = 0;

} // namespace

SqliteMemory::SqliteMemory()
{
    const std::lock_guard lock(mutex);
    if (count++ > 0)
        return;
    const sqlite3_int64 limit = sqlite3_memory_used() + mostMemory;
    limitBefore = sqlite3_hard_heap_limit64(-1);
    if (limitBefore == 0 || limitBefore > limit)
        sqlite3_hard_heap_limit64(limit);
}

SqliteMemory::~SqliteMemory()
{
    const std::lock_guard lock(mutex);
    if (--count == 0)
        sqlite3_hard_heap_limit64(limitBefore);
}
