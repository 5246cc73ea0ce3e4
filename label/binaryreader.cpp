// SPDX-License-Identifier: BSD-3-Clause
#include "label/binaryreader.h"

#include "items/core/classfactory.h"
#include "items/core/item.h"
#include "items/core/record.h"
#include "label/data/datasourcemap.h"
#include "label/documentrules.h"
#include "label/itemmap.h"
#include "label/itemrecord.h"
#include "label/itemtree.h"
#include "label/jsonpointer.h"
#include "label/jsonscan.h"
#include "label/labellimits.h"
#include "label/problemlog.h"
#include "label/recordvalues.h"
#include "label/wording.h"

#include <QIODevice>

using namespace Qt::StringLiterals;

namespace {

QString byteAt(qint64 offset)
{
    return u"byte %1"_s.arg(offset);
}

/// The problems of an item with its own keys as words, for the place is a byte.
void addItemProblems(const Problems &problems, const QString &where, ProblemLog &log)
{
    for (const Problem &problem : problems)
        log.add(where, problem.where.sliced(1) + u' ' + problem.what, problem.advice);
}

} // namespace

BinaryReader::BinaryReader(const QByteArray &data, BrokenItems broken, ProblemLog &log)
    : m_stream(data)
    , m_size(data.size())
    , m_broken(broken)
    , m_log(log)
{
    m_stream.setVersion(ItemRecord::StreamVersion);
    m_stream.skipRawData(int(magic.size()));
}

std::optional<LabelDocument> BinaryReader::read()
{
    if (!readHead())
        return {};
    checkHead();
    const bool refused = m_log.count() > 0;
    // Behind a frame that is not whole, nothing has a place.
    if (!readItems() || !readSources() || refused || (m_broken == BrokenItems::Refuse && m_log.count() > 0))
        return {};
    return std::move(m_document);
}

bool BinaryReader::isWhole(qint64 start)
{
    if (m_stream.status() == QDataStream::Ok)
        return true;
    m_log.add(byteAt(start), u"the file ends too early or is damaged"_s, u"use another copy of it"_s);
    return false;
}

template <typename T> bool BinaryReader::readValue(T &value, const QString &pointer)
{
    const qint64 start = m_stream.device()->pos();
    m_offsets.insert(pointer, start);
    Record::readField(m_stream, value);
    return isWhole(start);
}

bool BinaryReader::readHead()
{
    QColor paper;
    if (!readVersion() || !readPage() || !readInks() || !readValue(paper, u"/paper"_s))
        return false;
    m_document.setPaper(paper);
    return true;
}

bool BinaryReader::readVersion()
{
    const qint64 start = m_stream.device()->pos();
    return readValue(m_version, u"/version"_s)
        && DocumentRules::acceptsVersion(m_version, byteAt(start), m_log);
}

bool BinaryReader::readPage()
{
    double width;
    double height;
    double dpi;
    if (!readValue(width, u"/page/width"_s) || !readValue(height, u"/page/height"_s)
        || !readValue(dpi, u"/page/dpi"_s))
        return false;
    m_document.setPageSize({ width, height });
    m_document.setDesignDpi(dpi);
    return true;
}

bool BinaryReader::readInks()
{
    quint32 count;
    if (!readValue(count, u"/inks"_s))
        return false;
    takeDither(count);
    if (count > LabelLimits::MaxInks) {
        m_log.add(byteAt(m_offsets[u"/inks"_s]), u"%1 inks"_s.arg(count),
            u"a label has at most %1"_s.arg(LabelLimits::MaxInks));
        return false;
    }
    QList<Ink> inks(count);
    for (quint32 i = 0; i < count; ++i) {
        const QString pointer = JsonPointer::element(u"/inks"_s, i);
        if (!readValue(inks[i].name, pointer + u"/name"_s)
            || !readValue(inks[i].color, pointer + u"/color"_s))
            return false;
    }
    m_document.setInks(inks);
    return true;
}

void BinaryReader::takeDither(quint32 &inks)
{
    const quint32 number = inks >> ditherShift;
    if (number >= quint32(DitherNames::all().size()))
        return;
    m_document.setDither(static_cast<Dither>(number));
    inks &= (1U << ditherShift) - 1;
}

void BinaryReader::checkHead()
{
    for (const Problem &problem : m_document.problems())
        m_log.add(byteAt(m_offsets.value(problem.where)), problem.what, problem.advice);
}

bool BinaryReader::readItems()
{
    quint32 count;
    const qint64 start = m_stream.device()->pos();
    if (!readValue(count, u"/items"_s) || !DocumentRules::acceptsItemCount(count, byteAt(start), m_log))
        return false;
    m_count = count;
    std::optional<std::vector<std::unique_ptr<Item>>> items = readFrames(count, 1);
    if (!items)
        return false;
    for (std::unique_ptr<Item> &item : *items)
        m_document.addItem(std::move(item));
    return true;
}

bool BinaryReader::readSources()
{
    const qint64 start = m_stream.device()->pos();
    if (start == m_size)
        return true;
    QByteArray json;
    m_stream >> json;
    const qint64 end = m_stream.device()->pos();
    ProblemLog log({});
    if (m_stream.status() != QDataStream::Ok || end != m_size) {
        m_log.add(byteAt(start), u"%1 bytes follow the last item"_s.arg(m_size - start),
            u"use another copy of the file"_s);
        return false;
    }
    if (const std::optional<QJsonDocument> sources = JsonScan::parse(json, log))
        m_document.setSources(DataSourceMap::fromJson(sources->array(), u"/sources"_s, log));
    log.add(DataSources::problems(m_document.sources()));
    for (const Problem &problem : log.problems())
        m_log.add(byteAt(start), (problem.where + u' ' + problem.what).trimmed(), problem.advice);
    return log.count() == 0;
}

std::optional<std::vector<std::unique_ptr<Item>>> BinaryReader::readFrames(quint32 count, int level)
{
    std::vector<std::unique_ptr<Item>> items;
    for (quint32 i = 0; i < count; ++i) {
        std::unique_ptr<Item> item;
        if (!readFrame(item, level))
            return {};
        if (item)
            items.push_back(std::move(item));
    }
    return items;
}

bool BinaryReader::readFrame(std::unique_ptr<Item> &item, int level)
{
    const qint64 start = m_stream.device()->pos();
    quint32 shape;
    QByteArray record;
    m_stream >> shape >> record;
    if (!isWhole(start))
        return false;
    std::optional<std::vector<std::unique_ptr<Item>>> members = readMembers(shape, level);
    if (!members)
        return false;
    item = itemOf(shape, record, byteAt(start), std::move(*members));
    if (item && !m_budget.take(*item, byteAt(start), m_log))
        item.reset();
    return true;
}

/// Nothing, with a problem, if what follows has no place.
std::optional<std::vector<std::unique_ptr<Item>>> BinaryReader::readMembers(quint32 shape, int level)
{
    if (!ItemTree::isContainer(shape))
        return std::vector<std::unique_ptr<Item>>();
    const qint64 start = m_stream.device()->pos();
    quint32 count;
    m_stream >> count;
    if (!isWhole(start))
        return {};
    m_count += count;
    if (!DocumentRules::acceptsItemCount(m_count, byteAt(start), m_log))
        return {};
    if (count > 0 && !DocumentRules::acceptsLevel(level + 1, byteAt(start), m_log))
        return {};
    return readFrames(count, level + 1);
}

std::unique_ptr<Item> BinaryReader::itemOf(
    quint32 shape, const QByteArray &record, const QString &where, std::vector<std::unique_ptr<Item>> members)
{
    std::unique_ptr<Item> item(ClassFactory().create(static_cast<MobraTypes::ShapeType>(shape)));
    if (!item) {
        m_log.add(where, u"%1 is no known type of item"_s.arg(shape));
        return {};
    }
    // A group is read when it has its members: they join where it begins.
    ItemTree::join(*item, std::move(members));
    if (!ItemRecord::load(*item, record, m_version)) {
        m_log.add(where, u"the record of this %1 is not whole"_s.arg(Wording::item(*item)));
        return {};
    }
    Problems problems = RecordValues::problems(item->getItemShape(), record, m_version);
    if (problems.isEmpty())
        problems = ItemMap::geometryProblems(*item, {});
    addItemProblems(problems, where, m_log);
    return problems.isEmpty() ? std::move(item) : nullptr;
}
