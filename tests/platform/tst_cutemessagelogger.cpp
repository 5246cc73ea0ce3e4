// SPDX-License-Identifier: BSD-3-Clause
#include "platform/logging/cutemessagelogger.h"
#include "tests/support/recordingsink.h"

#include <QList>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

struct Message
{
    QtMsgType type;
    QByteArray category;
    QString text;
};

QList<Message> messages;

void keepMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    messages.append({ type, context.category, text });
}

} // namespace

class tst_CuteMessageLogger : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void recordsNameTheirLevelAndPlace();
    void textFollowsThePrintfRules();
    void oneLoggerWritesManyRecords();
    void lastInstalledSinkGetsTheRecords();
    void loggerInstanceIsTheInstalledSink();
    void defaultSinkPrintsOneLine();
};

void tst_CuteMessageLogger::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    messages.clear();
}

void tst_CuteMessageLogger::cleanup()
{
    installLogSink(nullptr);
}

void tst_CuteMessageLogger::recordsNameTheirLevelAndPlace()
{
    RecordingSink sink;
    installLogSink(&sink);
    CuteMessageLogger(QtWarningMsg, "svgitem", 417, "bool SvgItem::load()").write("links are refused");
    QCOMPARE(sink.records.size(), 1);
    const LogRecord &record = sink.records.first();
    QCOMPARE(record.level, int(QtWarningMsg));
    QCOMPARE(record.file, "svgitem");
    QCOMPARE(record.line, 417);
    QCOMPARE(record.function, "bool SvgItem::load()");
    QCOMPARE(record.text, u"links are refused"_s);
}

void tst_CuteMessageLogger::textFollowsThePrintfRules()
{
    RecordingSink sink;
    installLogSink(&sink);
    CuteMessageLogger(QtInfoMsg, "a", 1, "f").write("%s: %d of %03d, %.2f, 100 %%", "Größe", -5, 42, 2.5);
    QCOMPARE(sink.records.size(), 1);
    QCOMPARE(sink.records.first().text, u"Größe: -5 of 042, 2.50, 100 %"_s);
}

void tst_CuteMessageLogger::oneLoggerWritesManyRecords()
{
    RecordingSink sink;
    installLogSink(&sink);
    const CuteMessageLogger logger(QtCriticalMsg, "symbolitem", 8, "f");
    logger.write("first");
    logger.write("%s", "second");
    logger.write("%s", "");
    QCOMPARE(sink.records.size(), 3);
    QCOMPARE(sink.records.at(0).text, u"first"_s);
    QCOMPARE(sink.records.at(1).text, u"second"_s);
    QVERIFY(sink.records.at(2).text.isEmpty());
}

void tst_CuteMessageLogger::lastInstalledSinkGetsTheRecords()
{
    RecordingSink first;
    RecordingSink second;
    QCOMPARE(installLogSink(&first), nullptr);
    const CuteMessageLogger logger(QtWarningMsg, "a", 1, "f");
    logger.write("one");
    QCOMPARE(installLogSink(&second), &first);
    logger.write("two");
    QCOMPARE(installLogSink(nullptr), &second);
    QCOMPARE(first.records.size(), 1);
    QCOMPARE(first.records.first().text, u"one"_s);
    QCOMPARE(second.records.size(), 1);
    QCOMPARE(second.records.first().text, u"two"_s);
}

void tst_CuteMessageLogger::loggerInstanceIsTheInstalledSink()
{
    RecordingSink sink;
    LogSink &before = loggerInstance();
    installLogSink(&sink);
    QCOMPARE(&loggerInstance(), &sink);
    installLogSink(nullptr);
    QCOMPARE(&loggerInstance(), &before);
}

void tst_CuteMessageLogger::defaultSinkPrintsOneLine()
{
    const QtMessageHandler before = qInstallMessageHandler(keepMessage);
    CuteMessageLogger(QtWarningMsg, "svgitem", 417, "bool SvgItem::load()").write("%d links", 3);
    qInstallMessageHandler(before);
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.first().type, QtWarningMsg);
    QCOMPARE(messages.first().category, "vxcanvasitem"_ba);
    QCOMPARE(messages.first().text, u"1 svgitem:417 bool SvgItem::load(): 3 links"_s);
}

QTEST_MAIN(tst_CuteMessageLogger)
#include "tst_cutemessagelogger.moc"
