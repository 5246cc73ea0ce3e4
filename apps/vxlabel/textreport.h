// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "apps/vxlabel/checkreport.h"

#include <QHash>
#include <QList>

/// A line for each thing that is wrong, for people: what many rows have in common is told once, with the
/// number of rows and the first of them.
class TextReport : public CheckReport
{
public:
    using CheckReport::CheckReport;

protected:
    void tellLabel(const Findings &findings) override;
    void tellRow(const CheckedRow &row) override;
    void tellRest() override;

private:
    /// What several rows have in common.
    struct Kind
    {
        Finding first;
        QList<qint64> rows; ///< the first of them; none of a finding at the label
        qint64 count = 0; ///< of all rows
        qint64 lastRow = 0;
        bool isMixed = false; ///< of other things as well
    };

    void add(const Finding &finding, std::optional<qint64> row);
    /// The kind that the finding is of, which may be a new one; -1 if there are too many.
    [[nodiscard]] qsizetype placeOf(const Finding &finding, bool isOfRow);
    [[nodiscard]] static QString lineOf(const Kind &kind);

    QList<Kind> m_kinds;
    QHash<QString, qsizetype> m_places; ///< of kinds, by what makes them one
    QHash<QString, QList<qsizetype>> m_variants; ///< of kinds, by the rule and the item
    qint64 m_untold = 0; ///< findings of more kinds than are told
};
