// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>

#include <memory>

/// Records in the default form of a stream: big-endian, double precision.
namespace ItemRecords {

/// A document version in which every value of the record is read.
inline constexpr unsigned int currentVersion = 6;

inline QByteArray saved(Item &item)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    item.saveItemToData(stream);
    return bytes;
}

/// Loads the record into the item and returns how the stream ended.
inline QDataStream::Status load(Item &item, const QByteArray &bytes, unsigned int version = currentVersion)
{
    QDataStream stream(bytes);
    item.loadItemFromData(stream, version);
    return stream.status();
}

/// Loading takes the weight of an empty rich text for one of an older scale: a bold one gets normal once.
inline std::unique_ptr<Item> settled(std::unique_ptr<Item> item)
{
    if (item->getItemShape() == MobraTypes::RichTextShape)
        load(*item, saved(*item));
    return item;
}

} // namespace ItemRecords
