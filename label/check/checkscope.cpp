// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/checkscope.h"

#include "items/core/item.h"
#include "label/jsonpointer.h"
#include "label/wording.h"

using namespace Qt::StringLiterals;

Finding CheckScope::finding(Finding::Severity severity, const char *rule, std::size_t item,
    const QString &what, const QString &advice) const
{
    return { severity, QLatin1String(rule),
        { {}, JsonPointer::element(u"/items"_s, qsizetype(item)),
            Wording::item(itemAt(item)) + u": "_s + what, advice } };
}
