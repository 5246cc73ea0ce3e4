// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"

#include <QByteArray>
#include <QFile>
#include <QString>

/// A file that gets its name when it is whole. Until then it has a name of its own, which depends on that
/// name alone: what a killed batch has left behind is taken up again when it is resumed, and nothing stays.
///
/// Nothing waits for the disk: after a power failure, the manifest tells which files are not what they were.
class PartFile
{
public:
    explicit PartFile(const QString &path);
    /// Removes a file that was not committed.
    ~PartFile();
    Q_DISABLE_COPY_MOVE(PartFile)

    // All false, with the reason in problem(), on failure
    [[nodiscard]] bool open();
    [[nodiscard]] bool write(const QByteArray &data);
    /// Gives it its name; a file of that name is replaced.
    [[nodiscard]] bool commit();

    [[nodiscard]] const Problem &problem() const { return m_problem; }

private:
    [[nodiscard]] bool fail(const QString &reason);

    QString m_path;
    QFile m_file;
    Problem m_problem;
};
