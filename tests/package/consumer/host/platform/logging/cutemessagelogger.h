// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QStringList>

/// A host's own log: it keeps what it is told.
struct HostLog
{
    QStringList lines;
};

HostLog &loggerInstance();

/// What the library writes its messages through.
class CuteMessageLogger
{
public:
    CuteMessageLogger(int level, const char *file, int line, const char *function);

    /// printf rules.
    void write(const char *format, ...);

private:
    QString m_place;
};
