// SPDX-License-Identifier: BSD-3-Clause
// Property maps: one byte chooses the class, the others are the map as a JSON object.
#include "fuzz/fuzzsupport.h"

#include <QDataStream>
#include <QIODevice>
#include <QJsonDocument>
#include <QJsonObject>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size < 1)
        return -1;
    Fuzz::start();
    const auto text = QByteArray::fromRawData(reinterpret_cast<const char *>(data) + 1, qsizetype(size - 1));
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (!document.isObject())
        return -1;

    const std::unique_ptr<Item> item = Fuzz::itemOf(data[0]);
    item->loadItemFromJSON(document.object().toVariantMap(), LabelDocument::CurrentVersion);
    Fuzz::paint(*item);
    const std::unique_ptr<Item> copy(item->createItemCopy());
    Fuzz::paint(*copy);
    Fuzz::require(copy->saveItemToJSON().keys() == item->saveItemToJSON().keys());

    QByteArray record;
    QDataStream stream(&record, QIODevice::WriteOnly);
    item->saveItemToData(stream);
    Fuzz::require(stream.status() == QDataStream::Ok);
    Fuzz::require(record.isEmpty() == Fuzz::isLayer(*item));
    return 0;
}
