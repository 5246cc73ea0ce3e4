// SPDX-License-Identifier: BSD-3-Clause
#include "label/binaryformat.h"

#include "items/core/item.h"
#include "label/binaryreader.h"
#include "label/data/datasourcemap.h"
#include "label/itemrecord.h"
#include "label/itemtree.h"
#include "label/problemlog.h"

#include <QDataStream>
#include <QIODevice>
#include <QJsonDocument>

namespace {

void writeHead(QDataStream &stream, const LabelDocument &document)
{
    stream.writeRawData(BinaryReader::magic.data(), int(BinaryReader::magic.size()));
    stream << quint32(document.CurrentVersion);
    stream << document.pageSize().width() << document.pageSize().height() << document.designDpi();
    stream << (quint32(document.inks().size()) | quint32(document.dither()) << BinaryReader::ditherShift);
    for (const Ink &ink : document.inks())
        stream << ink.name << ink.color;
    stream << document.paper();
}

void writeFrame(QDataStream &stream, Item &item)
{
    stream << quint32(item.getItemShapeInt()) << ItemRecord::of(item);
    if (!ItemTree::isContainer(item))
        return;
    const QList<Item *> members = ItemTree::membersOf(item);
    stream << quint32(members.size());
    for (Item *member : members)
        writeFrame(stream, *member);
}

} // namespace

bool BinaryFormat::hasMagic(const QByteArray &data)
{
    return data.startsWith(BinaryReader::magic);
}

QByteArray BinaryFormat::write(const LabelDocument &document)
{
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream.setVersion(ItemRecord::StreamVersion);
    writeHead(stream, document);
    stream << quint32(document.items().size());
    for (const auto &item : document.items())
        writeFrame(stream, *item);
    if (!document.sources().isEmpty())
        stream << QJsonDocument(DataSourceMap::toJson(document.sources())).toJson(QJsonDocument::Compact);
    return data;
}

LoadResult BinaryFormat::read(const QByteArray &data, const QString &fileName, BrokenItems broken)
{
    ProblemLog log(fileName);
    LoadResult result;
    result.document = BinaryReader(data, broken, log).read();
    result.problems = log.problems();
    return result;
}
