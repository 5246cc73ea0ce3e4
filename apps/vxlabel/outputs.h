// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// The files of one run. They are written together once all contents are known: when one of them exists and
/// must stay, none is written, and when one cannot be written, those that are new go again.
class Outputs
{
public:
    explicit Outputs(bool overwrite)
        : m_overwrite(overwrite)
    {
    }

    /// Is created if missing, just before the files are written.
    void setFolder(const QString &path) { m_folder = path; }
    void add(const QString &path, const QByteArray &content) { m_files.push_back({ path, content }); }

    /// False, with complaints, when the files are not written.
    [[nodiscard]] bool write() const;

private:
    struct File
    {
        QString path;
        QByteArray content;
    };

    [[nodiscard]] Problems conflicts() const;
    [[nodiscard]] bool createFolder() const;
    [[nodiscard]] bool writeAll() const;

    bool m_overwrite;
    QString m_folder;
    std::vector<File> m_files;
};
