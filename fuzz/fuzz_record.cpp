// SPDX-License-Identifier: BSD-3-Clause
// Records of items: four bytes choose the class, the document's version, the byte order and the precision of
// the stream; the others are the record.
#include "fuzz/fuzzsupport.h"

#include <QDataStream>
#include <QIODevice>

namespace {

struct Form
{
    QDataStream::ByteOrder order;
    QDataStream::FloatingPointPrecision precision;
};

constexpr unsigned int currentVersion = LabelDocument::CurrentVersion;

void setForm(QDataStream &stream, const Form &form)
{
    stream.setByteOrder(form.order);
    stream.setFloatingPointPrecision(form.precision);
}

void load(Item &item, const QByteArray &record, unsigned int version, const Form &form)
{
    QDataStream stream(record);
    setForm(stream, form);
    item.loadItemFromData(stream, version);
}

QByteArray saved(Item &item, const Form &form)
{
    QByteArray record;
    QDataStream stream(&record, QIODevice::WriteOnly);
    setForm(stream, form);
    item.saveItemToData(stream);
    return record;
}

QByteArray savedAgain(std::uint8_t choice, const QByteArray &record, const Form &form)
{
    const std::unique_ptr<Item> item = Fuzz::itemOf(choice);
    load(*item, record, currentVersion, form);
    return saved(*item, form);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr std::size_t choices = 4;
    if (size < choices)
        return -1;
    Fuzz::start();
    const Form form { data[2] % 2 ? QDataStream::LittleEndian : QDataStream::BigEndian,
        data[3] % 2 ? QDataStream::SinglePrecision : QDataStream::DoublePrecision };
    const auto record
        = QByteArray::fromRawData(reinterpret_cast<const char *>(data) + choices, qsizetype(size - choices));

    const std::unique_ptr<Item> item = Fuzz::itemOf(data[0]);
    load(*item, record, data[1] % 9, form);
    Fuzz::paint(*item);
    const QByteArray first = saved(*item, form);

    const std::unique_ptr<Item> copy(item->createItemCopy());
    Fuzz::paint(*copy);
    Fuzz::require(saved(*copy, form).isEmpty() == first.isEmpty());
    Fuzz::require(first.isEmpty() == Fuzz::isLayer(*item));

    // A text keeps the weight of an older record only until that is saved in today's scale and read again.
    const QByteArray second = savedAgain(data[0], first, form);
    Fuzz::require(savedAgain(data[0], second, form) == second);
    return 0;
}
