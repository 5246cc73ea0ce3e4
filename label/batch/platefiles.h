// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/batchoptions.h"
#include "label/batch/manifestentry.h"
#include "label/problem.h"
#include "label/separation.h"

#include <QSet>
#include <QStringList>

#include <functional>
#include <optional>

/// The plates of a batch as files, which the manifest names from its own folder on.
class PlateFiles
{
public:
    PlateFiles(const QString &manifest, BatchOptions::Format format, bool overwrite, qint64 mostBytes = 0);

    /// Writes a file for each plate, and enters it. What keeps them from being written, if anything does.
    [[nodiscard]] Problems write(
        const Separation &separation, const QStringList &names, ManifestEntry &entry);
    /// Whether nothing could be written, the next label included: the disk is full, or the folder not ours.
    [[nodiscard]] bool isBlocked() const { return m_isBlocked; }
    /// Removes the files of an entry. A row that failed has none: nobody is to print what is not on record.
    void takeBack(const ManifestEntry &entry) const;
    /// The same for files that an earlier run has written, but for those whose paths are given to labels
    /// again.
    void takeBack(const ManifestEntry &entry, const std::function<bool(const QString &)> &isGiven) const;
    /// Whether the files of an entry are there, and what they were.
    [[nodiscard]] bool areIntact(const ManifestEntry &entry) const;

private:
    [[nodiscard]] std::optional<Problem> writeFile(const QString &name, const QByteArray &data);
    [[nodiscard]] QString pathOf(const ManifestEntry::File &file) const;

    QString m_folder; ///< of the manifest, absolute
    BatchOptions::Format m_format;
    bool m_overwrite;
    qint64 m_mostBytes; ///< of a file; 0 for any
    bool m_isBlocked = false;
    QSet<QString> m_folders; ///< that exist
};
