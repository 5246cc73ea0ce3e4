// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

/// What became of one row.
struct VX_LABEL_EXPORT ManifestEntry
{
    struct File
    {
        QString name; ///< from the folder of the manifest on
        QByteArray sha256; ///< in hexadecimal digits
        friend bool operator==(const File &, const File &) = default;
    };
    struct InkUse
    {
        QString name;
        qint64 dots = 0; ///< of a label
        double coverage = 0.0; ///< percent of the page
        friend bool operator==(const InkUse &, const InkUse &) = default;
    };

    qint64 row = 0;
    QString key; ///< by which people know the row
    QByteArray digest; ///< of the values of the row
    qint64 copies = 1;
    bool isPrinted = false; ///< and otherwise failed
    QList<File> files = {};
    QList<InkUse> inks = {};
    QStringList problems = {}; ///< why it failed

    /// A line of JSON, with its line feed. Equal entries are equal lines.
    [[nodiscard]] QByteArray line() const;
    /// Nothing for a line that is none of these.
    [[nodiscard]] static std::optional<ManifestEntry> fromLine(const QByteArray &line);

    friend bool operator==(const ManifestEntry &, const ManifestEntry &) = default;
};
