// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/contentbudget.h"
#include "label/documentfile.h"

#include <QBuffer>
#include <QByteArray>
#include <QDataStream>
#include <QHash>

#include <memory>
#include <string_view>

class ProblemLog;

/// Makes a document of the bytes of a binary one. It knows where every value lies, so that each problem names
/// its byte.
class BinaryReader
{
public:
    /// What every binary document begins with.
    static constexpr std::string_view magic { "VXLABEL\0", 8 };

    /// The dithering lies in the highest byte of the number of inks, which only needs the lowest: readers
    /// that do not know it find too many inks, and those of older documents find a zero.
    static constexpr unsigned int ditherShift = 24;

    BinaryReader(const QByteArray &data, BrokenItems broken, ProblemLog &log);

    [[nodiscard]] std::optional<LabelDocument> read();

private:
    [[nodiscard]] bool readHead();
    [[nodiscard]] bool readVersion();
    [[nodiscard]] bool readPage();
    [[nodiscard]] bool readInks();
    /// Takes the dithering off the number of inks, if it is one.
    void takeDither(quint32 &inks);
    [[nodiscard]] bool readItems();
    [[nodiscard]] std::optional<std::vector<std::unique_ptr<Item>>> readFrames(quint32 count, int level);
    /// Leaves the item null where it is broken. False where what follows has no place.
    [[nodiscard]] bool readFrame(std::unique_ptr<Item> &item, int level);
    [[nodiscard]] std::optional<std::vector<std::unique_ptr<Item>>> readMembers(quint32 shape, int level);
    [[nodiscard]] std::unique_ptr<Item> itemOf(quint32 shape, const QByteArray &record, const QString &where,
        std::vector<std::unique_ptr<Item>> members);
    /// Reads a value and notes where it began under its JSON pointer. False, with a problem, where the data
    /// ends early.
    template <typename T> [[nodiscard]] bool readValue(T &value, const QString &pointer);
    [[nodiscard]] bool isWhole(qint64 start);
    void checkHead();
    /// What may follow the items.
    [[nodiscard]] bool readSources();

    QDataStream m_stream;
    qint64 m_size;
    BrokenItems m_broken;
    ProblemLog &m_log;
    LabelDocument m_document;
    ContentBudget m_budget;
    quint32 m_version = 0;
    qint64 m_count = 0; ///< of all items, those that are still to be read included
    QHash<QString, qint64> m_offsets;
};
