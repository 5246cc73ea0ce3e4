// SPDX-License-Identifier: BSD-3-Clause
#include "platform/logging/cutemessagelogger.h"

#include <cstdarg>

CuteMessageLogger::CuteMessageLogger(int level, const char *file, int line, const char *function)
    : m_level(level)
    , m_file(file)
    , m_line(line)
    , m_function(function)
{
}

void CuteMessageLogger::write(const char *format, ...) const
{
    va_list arguments;
    va_start(arguments, format);
    const QString text = QString::vasprintf(format, arguments);
    va_end(arguments);
    loggerInstance().write({ m_level, m_file, m_line, m_function, text });
}
