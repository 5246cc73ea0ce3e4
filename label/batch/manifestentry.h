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

    /// Pages of the one file that all labels are in.
    struct Pages
    {
        qint64 first = 0; ///< from 1
        qint64 last = 0;
        friend bool operator==(const Pages &, const Pages &) = default;
    };

    qint64 row = 0;
    QString key; ///< by which people know the row
    QByteArray digest; ///< of the values of the row
    qint64 copies = 1;
    bool isPrinted = false; ///< and otherwise failed
    QList<File> files = {};
    std::optional<Pages> pages = {}; ///< instead of files
    int cell = 0; ///< of the sheet that the first of these pages shows, from 1; 0: the page is the label
    QList<InkUse> inks = {};
    QStringList problems = {}; ///< why it failed

    /// Enters pages that follow those which are entered, or are among them.
    void addPages(qint64 first, qint64 last);

    /// A line of JSON, with its line feed. Equal entries are equal lines.
    [[nodiscard]] QByteArray line() const;
    /// Nothing for a line that is none of these.
    [[nodiscard]] static std::optional<ManifestEntry> fromLine(const QByteArray &line);

    friend bool operator==(const ManifestEntry &, const ManifestEntry &) = default;
};
