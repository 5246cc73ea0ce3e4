// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/columnnames.h"

#include "label/labellimits.h"
#include "label/nearestname.h"
#include "label/wording.h"

#include <QHash>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/// A mark that separates values in other files; null if there is none.
QChar delimiterIn(const QString &name)
{
    constexpr std::array<char16_t, 4> delimiters { u',', u';', u'\t', u'|' };
    const auto found
        = std::ranges::find_if(delimiters, [&](char16_t mark) { return name.contains(QChar(mark)); });
    return found == delimiters.end() ? QChar() : QChar(*found);
}

} // namespace

Problems ColumnNames::problems(const QStringList &names, const QString &file)
{
    if (names.size() > LabelLimits::MaxColumns)
        return { { file, {}, u"more than %1 columns"_s.arg(LabelLimits::MaxColumns), {} } };
    Problems problems;
    QHash<QString, qsizetype> places;
    for (qsizetype i = 0; i < names.size(); ++i) {
        const QString where = u"column %1"_s.arg(i + 1);
        if (names[i].isEmpty())
            problems.append({ file, where, u"has no name"_s, u"write one into the first row"_s });
        else if (const auto first = places.constFind(names[i]); first != places.cend())
            problems.append({ file, where,
                u"has the name of column %1, %2"_s.arg(*first + 1).arg(Wording::quoted(names[i])),
                u"rename one of them"_s });
        else
            places.insert(names[i], i);
    }
    return problems;
}

Problem ColumnNames::unknown(const QString &name, const QStringList &names)
{
    if (const QChar delimiter = names.size() == 1 ? delimiterIn(names[0]) : QChar(); !delimiter.isNull())
        return { {}, {}, u"there is no column "_s + Wording::quoted(name),
            u"all names of columns are in one, %1: give --delimiter %2"_s.arg(
                Wording::quoted(names[0]), delimiter == u'\t' ? u"tab"_s : u"'%1'"_s.arg(delimiter)) };
    const QString meant = nearestName(name, names);
    return { {}, {}, u"there is no column "_s + Wording::quoted(name),
        meant.isEmpty() ? u"there are %1"_s.arg(names.join(u", "_s))
                        : u"did you mean %1?"_s.arg(Wording::quoted(meant)) };
}
