// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/columnnames.h"

#include "label/labellimits.h"
#include "label/nearestname.h"
#include "label/wording.h"

#include <QHash>

using namespace Qt::StringLiterals;

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
    const QString meant = nearestName(name, names);
    return { {}, {}, u"there is no column "_s + Wording::quoted(name),
        meant.isEmpty() ? u"there are %1"_s.arg(names.join(u", "_s))
                        : u"did you mean %1?"_s.arg(Wording::quoted(meant)) };
}
