// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/checkrule.h"

#include <QSet>
#include <QString>

/// "substituted-font": a text is written in a font that this system has not, and shown in another one, of
/// other widths.
class FontRule : public CheckRule
{
public:
    FontRule();

    void check(const CheckScope &scope, Findings &findings) override;

private:
    void checkFamily(
        const CheckScope &scope, std::size_t item, const QStringList &families, Findings &findings);
    [[nodiscard]] bool isKnown(const QString &family) const;

    QSet<QString> m_families; ///< of this system, in small letters
};
