// SPDX-License-Identifier: BSD-3-Clause
#include "label/documentrules.h"

#include "label/labeldocument.h"
#include "label/labellimits.h"
#include "label/problemlog.h"
#include "label/wording.h"

#include <cmath>

using namespace Qt::StringLiterals;

bool DocumentRules::acceptsVersion(double version, const QString &where, ProblemLog &log)
{
    const bool whole = version == std::floor(version);
    if (whole && version >= 1 && version <= LabelDocument::CurrentVersion)
        return true;
    if (version > LabelDocument::CurrentVersion)
        log.add(where,
            u"version %1 was made by a newer version of the program"_s.arg(Wording::number(version)),
            u"this one reads versions 1 to %1"_s.arg(LabelDocument::CurrentVersion));
    else
        log.add(where, u"%1 is no version of the format"_s.arg(Wording::number(version)),
            u"use %1"_s.arg(LabelDocument::CurrentVersion));
    return false;
}

bool DocumentRules::acceptsItemCount(qint64 count, const QString &where, ProblemLog &log)
{
    if (count <= LabelLimits::MaxItems)
        return true;
    log.add(where, u"%1 items"_s.arg(count), u"a label holds at most %1"_s.arg(LabelLimits::MaxItems));
    return false;
}

bool DocumentRules::acceptsLevel(int level, const QString &where, ProblemLog &log)
{
    if (level <= LabelLimits::MaxNesting)
        return true;
    log.add(where, u"items within items, more than %1 levels deep"_s.arg(LabelLimits::MaxNesting),
        u"take some groups apart"_s);
    return false;
}
