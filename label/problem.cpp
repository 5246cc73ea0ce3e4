// SPDX-License-Identifier: BSD-3-Clause
#include "label/problem.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

/// Whether a character could hide text, reorder it or steer a terminal.
bool isUnsafe(QChar c)
{
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

QString escaped(QChar c)
{
    const uint code = c.unicode();
    constexpr QChar zero = u'0';
    return code <= 0xFF ? u"\\x%1"_s.arg(code, 2, 16, zero) : u"\\u%1"_s.arg(code, 4, 16, zero);
}

} // namespace

QString Problem::text() const
{
    QStringList parts { file, where, what };
    parts.removeAll(QString());
    QString line = parts.join(u": "_s);
    if (!advice.isEmpty())
        line += (line.isEmpty() ? QString() : u"; "_s) + advice;
    return visible(line);
}

QString Problem::visible(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text)
        isUnsafe(c) ? result += escaped(c) : result += c;
    return result;
}
