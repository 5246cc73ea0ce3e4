// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QString>

/// One message for the log, with the place that it comes from.
struct LogRecord
{
    int level; ///< a QtMsgType
    const char *file; ///< the source file without folder and ending, for example "svgitem"
    int line;
    const char *function;
    QString text;
};

/// Where log messages end. A host derives its own and installs it.
class VX_EXPORT LogSink
{
public:
    virtual ~LogSink();
    virtual void write(const LogRecord &record) = 0;
};

/// The sink of the process: the installed one, or the default, which writes to the logging category
/// "vxcanvasitem".
[[nodiscard]] VX_EXPORT LogSink &loggerInstance();
/// Installs a sink and returns the one before, null for the default. Null installs the default. The caller
/// keeps both.
VX_EXPORT LogSink *installLogSink(LogSink *sink);
