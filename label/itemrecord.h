// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

class Item;

/// The binary record of one item, in the stream form of all documents: big-endian, double precision, with
/// Qt's types as in its version 6.0.
namespace ItemRecord {

/// QDataStream::Qt_6_0, by number: what documents hold does not follow the Qt that writes them.
inline constexpr int StreamVersion = 20;

[[nodiscard]] QByteArray of(Item &item);

/// Loads a record of a document of the given version. Whether the item took all of it and needed no more.
[[nodiscard]] bool load(Item &item, const QByteArray &record, unsigned int version);

/// The record as far as a property map can tell records apart: without the sign of zeros, the components of
/// colours that nobody sees, and the difference between an empty and a missing datasource field.
[[nodiscard]] QByteArray comparable(Item &item);

} // namespace ItemRecord
