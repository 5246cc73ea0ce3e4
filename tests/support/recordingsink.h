// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "platform/logging/logsink.h"

#include <QList>

/// Keeps the messages that it is given.
class RecordingSink : public LogSink
{
public:
    void write(const LogRecord &record) override { records.append(record); }

    QList<LogRecord> records;
};
