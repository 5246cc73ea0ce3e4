// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

/// While there are any, SQLite gets no more than a fixed amount of memory beyond what it had before, whatever
/// the values are that a query makes. It has one such limit for the whole process, and keeps to it where a
/// limit of the host is lower. Beyond it, queries fail as if there were no memory left.
class SqliteMemory
{
public:
    SqliteMemory();
    ~SqliteMemory();
    Q_DISABLE_COPY_MOVE(SqliteMemory)
};
