// SPDX-License-Identifier: BSD-3-Clause
#include "tests/items/itempage.h"

#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// The cells of a row that begins and ends with a bar.
QStringList cellsOf(const QString &row)
{
    QStringList cells = row.mid(1, row.size() - 2).split(u'|');
    for (QString &cell : cells)
        cell = cell.trimmed();
    return cells;
}

QStringList captures(const QString &text, const QString &pattern)
{
    QStringList found;
    for (const QRegularExpressionMatch &match : QRegularExpression(pattern).globalMatch(text))
        found << match.captured(1);
    return found;
}

} // namespace

ItemPage::ItemPage(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        m_lines = QString::fromUtf8(file.readAll()).split(u'\n');
}

QString ItemPage::title() const
{
    return m_lines.value(0).mid(2);
}

QList<QStringList> ItemPage::table(const QString &heading) const
{
    const qsizetype start = heading.isEmpty() ? 0 : m_lines.indexOf(u"## "_s + heading);
    if (start < 0)
        return {};
    QList<QStringList> rows;
    for (const QString &line : m_lines.mid(start + 1)) {
        if (line.startsWith(u'#'))
            break;
        if (line.startsWith(u'|'))
            rows << cellsOf(line);
    }
    return rows.mid(2);
}

QStringList ItemPage::links() const
{
    return captures(text(), u"\\]\\(([^)\\s]+)\\)"_s) + captures(text(), u" src=\"([^\"]+)\""_s);
}

QStringList ItemPage::anchors() const
{
    QStringList anchors;
    for (const QString &line : m_lines) {
        static const QRegularExpression mark(u"^#+ "_s);
        if (!mark.match(line).hasMatch())
            continue;
        static const QRegularExpression noLetters(u"[^\\w -]"_s);
        anchors << QString(line).remove(mark).toLower().remove(noLetters).replace(u' ', u'-');
    }
    return anchors;
}
