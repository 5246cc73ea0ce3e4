// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/fontrule.h"

#include "items/core/item.h"
#include "label/check/textruns.h"
#include "label/wording.h"

#include <QFontDatabase>
#include <QFontInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

FontRule::FontRule()
{
    for (const QString &family : QFontDatabase::families())
        m_families.insert(family.toCaseFolded());
}

/// Hosts give some families others to be shown in, which is no accident.
bool FontRule::isKnown(const QString &family) const
{
    const auto isThere = [this](const QString &name) { return m_families.contains(name.toCaseFolded()); };
    return isThere(family) || std::ranges::any_of(QFont::substitutes(family), isThere);
}

void FontRule::check(const CheckScope &scope, Findings &findings)
{
    for (const std::size_t item : scope.items) {
        QList<QStringList> asked;
        for (const TextRuns::Run &run : TextRuns::of(scope.itemAt(item))) {
            if (!asked.contains(run.font.families()))
                asked.append(run.font.families());
        }
        for (const QStringList &families : asked)
            checkFamily(scope, item, families, findings);
    }
}

void FontRule::checkFamily(
    const CheckScope &scope, std::size_t item, const QStringList &families, Findings &findings)
{
    if (families.isEmpty()
        || std::ranges::any_of(families, [this](const QString &name) { return isKnown(name); }))
        return;
    QFont font;
    font.setFamilies(families);
    findings.append(scope.finding(Finding::Warning, "substituted-font", item,
        u"the font %1 is not there, and %2 takes its place"_s.arg(
            Wording::quoted(families.constFirst()), Wording::quoted(QFontInfo(font).family())),
        u"install it, or choose a font that is there"_s));
}
