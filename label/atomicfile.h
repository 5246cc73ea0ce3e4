// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QByteArray>
#include <QString>

#include <memory>

class QIODevice;
class QSaveFile;

/// A file that is written piece by piece into a temporary beside it, which takes the file's name when
/// everything is on disk: the name never holds half a file. Without commit() nothing is left behind; nor is
/// by a process that is killed, where the file system has files without names.
class VX_LABEL_EXPORT AtomicFile
{
public:
    explicit AtomicFile(const QString &path);
    ~AtomicFile();
    Q_DISABLE_COPY_MOVE(AtomicFile)

    /// Creates the temporary. Refuses an existing file unless overwrite is set, and a name that is no
    /// ordinary file in any case: false, with the reason in problems.
    [[nodiscard]] bool open(bool overwrite, Problems &problems);
    /// Appends data. False, with the reason in problems, if they could not all be written.
    [[nodiscard]] bool write(const QByteArray &data, Problems &problems);
    /// The same for those who write to devices; it is unbuffered, and lives as long as this object.
    [[nodiscard]] QIODevice &device();
    /// The last call. False, with the reason in problems and nothing left behind, if anything could not be
    /// written.
    [[nodiscard]] bool commit(Problems &problems);

private:
    [[nodiscard]] bool refuse(const QString &reason, Problems &problems) const;

    std::unique_ptr<QSaveFile> m_file;
};
