// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/batchoptions.h"
#include "label/batch/rowoutput.h"

#include <QByteArray>
#include <QList>
#include <QSet>

#include <optional>

/// Labels as files of their own, which the manifest names from its own folder on.
class RowFiles : public RowOutput
{
public:
    [[nodiscard]] bool isOneFile() const final { return false; }
    [[nodiscard]] bool open(Problems &) final { return true; }
    [[nodiscard]] Problems write(const RowLabel &label, const QStringList &names, ManifestEntry &entry) final;
    [[nodiscard]] bool isBlocked() const final { return m_isBlocked; }
    [[nodiscard]] bool finish(bool, Problems &) final { return true; }
    void takeBack(const ManifestEntry &entry) final;
    void takeBackEarlier(
        const ManifestEntry &entry, const std::function<bool(const QString &)> &isGiven) final;
    [[nodiscard]] bool areIntact(const ManifestEntry &entry) const final;

protected:
    explicit RowFiles(const BatchOptions &options);

    /// What the files of a label hold, in the order of their names. Nothing, with the reasons in problems,
    /// for a label that cannot be written.
    [[nodiscard]] virtual QList<QByteArray> contentsOf(const RowLabel &label, Problems &problems) const = 0;

private:
    [[nodiscard]] std::optional<Problem> writeFile(const QString &name, const QByteArray &data);
    [[nodiscard]] QString pathOf(const ManifestEntry::File &file) const;

    QString m_folder; ///< of the manifest, absolute
    bool m_overwrite;
    qint64 m_mostBytes; ///< of a file; 0 for any
    QSet<QString> m_inputs; ///< that are not to be overwritten, without links
    bool m_isBlocked = false;
    QSet<QString> m_folders; ///< that exist
};
