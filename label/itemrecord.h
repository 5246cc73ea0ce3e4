// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

#include <memory>

class Item;

/// The binary record of one item, in the stream form of all documents: big-endian, double precision, with
/// Qt's types as in its version 6.0.
namespace ItemRecord {

/// QDataStream::Qt_6_0, by number: what documents hold does not follow the Qt that writes them.
inline constexpr int StreamVersion = 20;

/// Without the members of a container. The visibility is the item's own, whatever it lies in. A layer has no
/// record but this: its id, z value, visibility and name.
[[nodiscard]] QByteArray of(Item &item);

/// Loads a record of a document of the given version. Whether the item took all of it and needed no more.
[[nodiscard]] bool load(Item &item, const QByteArray &record, unsigned int version);

/// A new item of the same record, as far as JSON can hold it: colours that nobody sees are Qt::transparent,
/// and an empty datasource field is a missing one. What an item derives from these agrees with them. Null if
/// the item's type has no class or its record cannot be read again.
[[nodiscard]] std::unique_ptr<Item> plainCopy(Item &item);

/// The record of the plain copy, without the sign of zeros.
[[nodiscard]] QByteArray comparable(Item &item);

} // namespace ItemRecord
