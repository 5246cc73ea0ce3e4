// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/manifest.h"
#include "label/batch/shard.h"
#include "label/problem.h"

#include <QByteArray>
#include <QFile>
#include <QJsonObject>

#include <memory>
#include <optional>
#include <vector>

/// A manifest as it lies on disk, line by line, without a copy in memory.
class ManifestLines
{
public:
    struct Line
    {
        qint64 row;
        QByteArrayView text; ///< with its line feed
    };

    /// Null, with the reason in problems, for a file that cannot be read or is no manifest. What follows the
    /// last whole line is left out.
    [[nodiscard]] static std::unique_ptr<ManifestLines> open(const QString &path, Problems &problems);

    [[nodiscard]] QString path() const { return m_file.fileName(); }
    /// Without what tells the share.
    [[nodiscard]] const QJsonObject &head() const { return m_head; }
    [[nodiscard]] Shard shard() const { return m_shard; }
    /// In the order of the file.
    [[nodiscard]] const std::vector<Line> &lines() const { return m_lines; }
    /// Nothing for a batch that has not come to the end of its data.
    [[nodiscard]] const std::optional<Manifest::End> &end() const { return m_end; }

private:
    explicit ManifestLines(const QString &path);

    [[nodiscard]] bool read();

    QFile m_file;
    QJsonObject m_head;
    Shard m_shard;
    std::vector<Line> m_lines;
    std::optional<Manifest::End> m_end;
};
