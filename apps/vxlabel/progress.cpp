// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/progress.h"

#include "apps/vxlabel/terminal.h"
#include "apps/vxlabel/worker.h"

#include <QJsonDocument>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 millisecondsBetween = 500;

/// "1:02:03" or "2:03"
QString duration(qint64 seconds)
{
    const qint64 hours = seconds / 3600;
    const QString minutes = QString::number(seconds / 60 % 60);
    const QString rest = QString::number(seconds % 60).rightJustified(2, u'0');
    return hours > 0 ? u"%1:%2:%3"_s.arg(hours).arg(minutes.rightJustified(2, u'0'), rest)
                     : minutes + u':' + rest;
}

void writeText(const QByteArray &text)
{
    std::fwrite(text.constData(), 1, size_t(text.size()), stderr);
}

} // namespace

Progress::Form Progress::usualForm()
{
    return Terminal::canRewriteLines() ? Form::Line : Form::None;
}

CLI::Option *Progress::addOption(
    CLI::App &command, const std::string &what, std::optional<Progress::Form> &form)
{
    return command
        .add_option_function<std::string>(
            "--progress",
            [&form](const std::string &text) {
                form = text == "json" ? Form::Json : text == "line" ? Form::Line : Form::None;
            },
            "How far " + what + " is, on standard error: line (if that is a terminal), json or none")
        ->type_name("FORM")
        ->check(CLI::IsMember({ "line", "json", "none" }));
}

Progress::Progress(Form form)
    : m_form(form)
    , m_sinceBegin(Worker::batchClock())
{
    m_sinceShown.start();
}

void Progress::write(const QJsonObject &object)
{
    writeText(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
}

bool Progress::isDue() const
{
    return m_form != Form::None && m_sinceShown.elapsed() >= millisecondsBetween;
}

void Progress::show(const State &state)
{
    m_sinceShown.restart();
    clearLine();
    m_form == Form::Json ? write(json(state)) : writeText(line(state));
    m_lineIsShown = m_form == Form::Line;
}

void Progress::finish(const State &state)
{
    if (m_form == Form::None)
        return;
    State last = state;
    last.about.reset(); // nothing more is to come
    show(last);
    if (m_lineIsShown)
        writeText("\n");
    m_lineIsShown = false;
}

void Progress::clearLine()
{
    if (m_lineIsShown)
        writeText("\r\x1b[K");
    m_lineIsShown = false;
}

/// Rows in a second.
double Progress::rateOf(const State &state) const
{
    return double(state.worked) * 1000.0 / double(std::max<qint64>(m_sinceBegin.elapsed(), 1));
}

QByteArray Progress::line(const State &state) const
{
    const double rate = rateOf(state);
    const std::optional<qint64> rows = state.total ? state.total : state.about;
    const QString words = state.total ? u" of %1"_s : u" of about %1"_s;
    QString text
        = u"%1%2 rows, %3/s"_s.arg(state.done).arg(rows ? words.arg(*rows) : QString()).arg(rate, 0, 'f', 1);
    if (!state.faults.isEmpty())
        text += u", "_s + state.faults;
    if (rows && rate > 0.0)
        text += u", %1 left"_s.arg(duration(qint64(double(std::max<qint64>(*rows - state.done, 0)) / rate)));
    return text.toUtf8();
}

QJsonObject Progress::json(const State &state) const
{
    QJsonObject object = state.counts;
    object.insert(u"rowsPerSecond"_s, rateOf(state));
    object.insert(u"seconds"_s, double(m_sinceBegin.elapsed()) / 1000.0);
    if (state.total)
        object.insert(u"total"_s, *state.total);
    else if (state.about)
        object.insert(u"about"_s, *state.about);
    return object;
}
