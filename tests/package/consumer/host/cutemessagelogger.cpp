// SPDX-License-Identifier: BSD-3-Clause
#include "platform/logging/cutemessagelogger.h"

#include <cstdarg>

HostLog &loggerInstance()
{
    static HostLog log;
    return log;
}

CuteMessageLogger::CuteMessageLogger(int level, const char *file, int line, const char *function)
    : m_place(QString::asprintf("%d %s:%d %s: ", level, file, line, function))
{
}

void CuteMessageLogger::write(const char *format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    loggerInstance().lines.append(m_place + QString::vasprintf(format, arguments));
    va_end(arguments);
}
