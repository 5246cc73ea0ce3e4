// SPDX-License-Identifier: BSD-3-Clause
#include "platform/logging/logsink.h"

#include <QLoggingCategory>
#include <QMessageLogger>

#include <utility>

namespace {

Q_LOGGING_CATEGORY(category, "vxcanvasitem")

/// Every level but debug and info is a warning to Qt: its fatal level would end the process.
class CategorySink final : public LogSink
{
public:
    void write(const LogRecord &record) override
    {
        const QMessageLogger logger(record.file, record.line, record.function, category().categoryName());
        const QString text = QStringLiteral("%1 %2:%3 %4: %5")
                                 .arg(record.level)
                                 .arg(QString::fromUtf8(record.file))
                                 .arg(record.line)
                                 .arg(QString::fromUtf8(record.function), record.text);
        if (record.level == QtDebugMsg && category().isDebugEnabled())
            logger.debug().noquote() << text;
        else if (record.level == QtInfoMsg && category().isInfoEnabled())
            logger.info().noquote() << text;
        else if (record.level != QtDebugMsg && record.level != QtInfoMsg && category().isWarningEnabled())
            logger.warning().noquote() << text;
    }
};

LogSink *installedSink = nullptr;

} // namespace

LogSink::~LogSink() = default;

LogSink &loggerInstance()
{
    static CategorySink defaultSink;
    return installedSink ? *installedSink : defaultSink;
}

LogSink *installLogSink(LogSink *sink)
{
    return std::exchange(installedSink, sink);
}
