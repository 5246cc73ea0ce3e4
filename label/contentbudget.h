// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/labellimits.h"
#include "label/vxlabelexport.h"

#include <QString>
#include <QtGlobal>

class Item;
class ProblemLog;

/// What the pictures and drawings of one document may take in memory. Files of some kilobytes hold pictures
/// of half a gigabyte, of which each alone is accepted.
class VX_LABEL_EXPORT ContentBudget
{
public:
    explicit ContentBudget(qint64 bytes = LabelLimits::MaxContentBytes)
        : m_most(bytes)
    {
    }

    /// Adds what a loaded item takes. False, with a problem, and nothing added, where the document has no
    /// room for it.
    [[nodiscard]] bool take(const Item &item, const QString &where, ProblemLog &log);

private:
    qint64 m_most;
    qint64 m_taken = 0;
};
