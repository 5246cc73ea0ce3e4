// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/manifestentry.h"
#include "label/problem.h"

#include <QFile>
#include <QHash>
#include <QJsonObject>

#include <memory>

/// The record of a batch on disk (JSON Lines): how it was made, and then what became of each row. It is
/// written row by row, so that a batch that was killed can be resumed; at its end there is one line for each
/// row, in their order, and one that tells how many rows there are.
class VX_LABEL_EXPORT Manifest
{
public:
    /// That nothing is missing.
    struct End
    {
        qint64 rows = 0; ///< of the data that were read
        QByteArray digest; ///< of all their values
        bool isWhole = true; ///< the data have no others; false behind the last of chosen rows

        friend bool operator==(const End &, const End &) = default;
    };

    /// Begins a new one. Null, with the reason in problems, if there is one and overwrite is not set, another
    /// process writes it, it cannot be written, or there is a file that is no manifest. head tells what the
    /// files depend on beyond the rows.
    [[nodiscard]] static std::unique_ptr<Manifest> create(
        const QString &path, const QJsonObject &head, bool overwrite, Problems &problems);
    /// Goes on with one. Null, with the reason in problems, if it is no manifest, another process
    /// writes it, or it was made with another head.
    [[nodiscard]] static std::unique_ptr<Manifest> resume(
        const QString &path, const QJsonObject &head, Problems &problems);

    /// Whether a file may be replaced by a manifest: it is one, was to be one, or is not there. Otherwise the
    /// reason is in problems.
    [[nodiscard]] static bool mayReplace(const QString &path, Problems &problems);
    /// That one is in the way of a batch that was to be new. canGoOn tells whether --resume is advised.
    [[nodiscard]] static Problem inTheWay(const QString &path, bool canGoOn);
    /// The head of a manifest; nothing, with the reason in problems, for a file that is none.
    [[nodiscard]] static std::optional<QJsonObject> headOf(const QString &path, Problems &problems);

    /// What is on record of a row; nothing if it was not reached.
    [[nodiscard]] std::optional<ManifestEntry> find(qint64 row);
    /// Puts what became of a row on record, instead of what was there before. False, with the reason in
    /// problems, if it cannot be written.
    [[nodiscard]] bool append(const ManifestEntry &entry, Problems &problems);
    /// Takes the entries of rows behind this one off the record: the data have no such rows any more.
    [[nodiscard]] QList<ManifestEntry> takeBehind(qint64 row);
    /// Puts the rows into their order, and ends the record if the data were read as far as was asked for:
    /// nothing of that is missing then. What was known of more rows stays, unless one of them has changed.
    /// False, with the reason in problems, if it cannot be written.
    [[nodiscard]] bool finish(const std::optional<End> &end, Problems &problems);

    /// Removes the file. The last call.
    void remove();

    // Its lines
    [[nodiscard]] static QByteArray headLine(const QJsonObject &head);
    [[nodiscard]] static QByteArray endLine(const End &end);
    /// The head of such a line; nothing for any other.
    [[nodiscard]] static std::optional<QJsonObject> headOfLine(const QByteArray &line);
    /// What a line tells that ends a record.
    [[nodiscard]] static std::optional<End> endOfLine(const QByteArray &line);

private:
    explicit Manifest(const QString &path);

    /// Opens the file, which is nobody else's from then on.
    [[nodiscard]] bool open(Problems &problems);
    [[nodiscard]] bool putInOrder(Problems &problems);
    [[nodiscard]] bool writeLine(const QByteArray &line, Problems &problems);
    void readRows();
    /// Forgets what was known of all rows if one of them is other than on record.
    void compare(const ManifestEntry &entry);
    [[nodiscard]] QByteArray lineAt(qint64 offset);

    QFile m_file;
    bool m_isResumed = false; ///< rows may come in any order then
    QHash<qint64, qint64> m_offsets; ///< of the lines of all rows of a resumed one
    std::optional<End> m_end; ///< of a resumed one, while it is true
    qint64 m_headSize = 0;
    qint64 m_lastRow = 0;
    bool m_isInOrder = true;
};
