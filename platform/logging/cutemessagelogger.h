// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"
#include "platform/logging/logsink.h"

/// Writes messages of one level from one place to loggerInstance().
class VX_EXPORT CuteMessageLogger
{
public:
    CuteMessageLogger(int level, const char *file, int line, const char *function);

    /// printf rules.
    void write(const char *format, ...) const Q_ATTRIBUTE_FORMAT_PRINTF(2, 3);

private:
    int m_level;
    const char *m_file;
    int m_line;
    const char *m_function;
};
