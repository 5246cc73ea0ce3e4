// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/textreport.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostKinds = 1000;
constexpr qsizetype mostRows = 5;

/// So many different things of one rule at one item are told; the last one stands for all others.
constexpr qsizetype mostVariants = 6;

/// What the problems of several rows have in common: the words between values and numbers.
QString withoutValues(QString what)
{
    static const QRegularExpression values(u"\"[^\"]*\"|[0-9]+"_s);
    return what.remove(values);
}

/// "3 errors"
QString counted(qint64 count, const QString &what)
{
    return count == 1 ? u"1 "_s + what : u"%1 %2s"_s.arg(count).arg(what);
}

QString summaryOf(const CheckReport::Count &count, bool hasRows)
{
    const bool isOfRows = count.rows > 0 || (hasRows && count.errors == 0);
    const QString checked = isOfRows ? counted(count.rows, u"row"_s) : u"label"_s;
    const QString found = count.errors + count.warnings == 0
        ? u"nothing found"_s
        : counted(count.errors, u"error"_s) + u", "_s + counted(count.warnings, u"warning"_s);
    return checked + u" checked: "_s + found + u'\n';
}

} // namespace

void TextReport::tellLabel(const Findings &findings)
{
    for (const Finding &finding : findings)
        add(finding, {});
}

void TextReport::tellRow(const CheckedRow &row)
{
    for (const Finding &finding : located(row))
        add(finding, row.row.number);
}

void TextReport::add(const Finding &finding, std::optional<qint64> row)
{
    const qsizetype place = placeOf(finding, row.has_value());
    if (place < 0) {
        ++m_untold;
        return;
    }
    Kind &kind = m_kinds[place];
    // An item may have two of a kind.
    if (!row || kind.lastRow == *row)
        return;
    kind.lastRow = *row;
    ++kind.count;
    if (kind.rows.size() < mostRows)
        kind.rows.append(*row);
}

qsizetype TextReport::placeOf(const Finding &finding, bool isOfRow)
{
    // The lines of a file that are broken differ from row to row.
    const QString where = finding.problem.where.startsWith(u'/') ? finding.problem.where : QString();
    const QString rule = u"%1 %2 %3"_s.arg(QString::number(int(finding.severity)), finding.rule, where);
    const QString what = isOfRow ? withoutValues(finding.problem.what) : finding.problem.text();
    const QString key = rule + u' ' + what;
    if (const auto found = m_places.constFind(key); found != m_places.constEnd())
        return *found;
    QList<qsizetype> &variants = m_variants[rule];
    if (isOfRow && variants.size() >= mostVariants) {
        m_kinds[variants.constLast()].isMixed = true;
        return variants.constLast();
    }
    if (m_kinds.size() >= mostKinds)
        return -1;
    variants.append(m_kinds.size());
    m_places.insert(key, m_kinds.size());
    m_kinds.append({ .first = finding, .rows = {} });
    return m_kinds.size() - 1;
}

QString TextReport::lineOf(const Kind &kind)
{
    const Problem &problem = kind.first.problem;
    const QString severity = nameOf(kind.first.severity) + u" ["_s + kind.first.rule + u']';
    const QString what = problem.where.isEmpty() ? problem.what : problem.where + u": "_s + problem.what;
    QString line = Problem { problem.file, severity, what, problem.advice }.text();
    if (kind.count > 1 || kind.isMixed) {
        QStringList rows;
        for (const qint64 row : kind.rows)
            rows.append(QString::number(row));
        if (kind.count > kind.rows.size())
            rows.append(u"…"_s);
        const QString why = kind.isMixed ? u" for this and other reasons"_s : QString();
        line += u" (%1%2: %3)"_s.arg(counted(kind.count, u"row"_s), why, rows.join(u", "_s));
    }
    return line + u'\n';
}

void TextReport::tellRest()
{
    for (const Kind &kind : std::as_const(m_kinds))
        print(lineOf(kind).toUtf8());
    if (m_untold > 0)
        print(u"and %1 more\n"_s.arg(m_untold).toUtf8());
    print(summaryOf(count(), hasRows()).toUtf8());
}
