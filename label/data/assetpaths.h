// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QString>
#include <QStringList>

#include <optional>

/// Where the files that data name may lie: in some folders and those below them, wherever links lead.
class VX_LABEL_EXPORT AssetPaths
{
public:
    /// Relative paths are looked for in the folders, in their order. With allowAnyPath, others are taken as
    /// well, and relative ones that lead out of the folders.
    explicit AssetPaths(const QStringList &folders, bool allowAnyPath = false);

    /// The file that a value names, without links. Nothing, with the reason in problem, if it does not exist,
    /// is no ordinary file, or lies elsewhere.
    [[nodiscard]] std::optional<QString> find(const QString &value, Problem &problem) const;

private:
    [[nodiscard]] bool isWithin(const QString &file) const;

    QStringList m_folders; ///< without links
    bool m_allowAnyPath;
};
