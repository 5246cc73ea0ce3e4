// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/terminal.h"

#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace {

constexpr auto red = "\x1b[1;31m";
constexpr auto yellow = "\x1b[1;33m";
constexpr auto plain = "\x1b[0m";
const QByteArray name = "vxlabel:";
const QByteArray warning = " warning:"; ///< behind the name

bool takesColors()
{
    return Terminal::canRewriteLines() && qEnvironmentVariableIsEmpty("NO_COLOR");
}

/// The name of the program, in front of each line.
QByteArray mark(const char *color)
{
    return takesColors() ? color + name + plain : name;
}

void write(const QByteArray &text)
{
    std::fwrite(text.constData(), 1, size_t(text.size()), stderr);
}

/// The line of a problem, without the name of the program.
QByteArray lineOf(Problem problem, const QString &file)
{
    if (problem.file.isEmpty())
        problem.file = file;
    return ' ' + problem.text().toUtf8() + '\n';
}

/// A text whose lines cannot steer a terminal, whatever data they hold.
QByteArray visible(const QByteArray &text)
{
    QStringList lines = QString::fromUtf8(text).split(u'\n');
    for (QString &line : lines)
        line = Problem::visible(line);
    return lines.join(u'\n').toUtf8();
}

} // namespace

namespace Terminal {

void complain(const Problem &problem)
{
    write(mark(red) + lineOf(problem, {}));
}

void complain(const Problems &problems, const QString &file)
{
    for (const Problem &problem : problems)
        write(mark(red) + lineOf(problem, file));
}

void warn(const Problems &problems, const QString &file)
{
    for (const Problem &problem : problems)
        write(mark(yellow) + warning + lineOf(problem, file));
}

void passOn(const QByteArray &complaint)
{
    const char *color = complaint.startsWith(name + warning) ? yellow : red;
    write((complaint.startsWith(name) ? mark(color) + complaint.mid(name.size()) : complaint) + '\n');
}

bool canRewriteLines()
{
    const QByteArray kind = qgetenv("TERM");
    return isatty(STDERR_FILENO) && !kind.isEmpty() && kind != "dumb";
}

bool print(const QByteArray &output)
{
    const QByteArray text = isatty(STDOUT_FILENO) ? visible(output) : output;
    const size_t size = size_t(text.size());
    if (std::fwrite(text.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return true;
    complain({ QStringLiteral("standard output"), {}, qt_error_string(errno), {} });
    return false;
}

} // namespace Terminal
