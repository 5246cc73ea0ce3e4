// SPDX-License-Identifier: BSD-3-Clause
#include "label/jsonreader.h"

#include "items/core/item.h"
#include "label/data/datasourcemap.h"
#include "label/documentrules.h"
#include "label/itemmap.h"
#include "label/jsonpointer.h"
#include "label/labellimits.h"
#include "label/problemlog.h"
#include "label/wording.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The items of an array and those within them.
qint64 countOf(const QJsonArray &items)
{
    qint64 count = items.size();
    for (const QJsonValue item : items) {
        if (ItemMap::isContainer(item.toObject()))
            count += countOf(item.toObject().value(ItemMap::childrenKey).toArray());
    }
    return count;
}

} // namespace

JsonReader::JsonReader(const QJsonObject &root, BrokenItems broken, ProblemLog &log)
    : m_root(root, {}, log)
    , m_broken(broken)
    , m_log(log)
{
}

std::optional<LabelDocument> JsonReader::read()
{
    // Without format and version, nothing else means what it seems to.
    if (!readFormat() || !readVersion())
        return {};
    readHead();
    const std::optional<QJsonArray> items = m_root.array(u"items"_s);
    m_root.refuseOthers();
    const bool countIsFine = DocumentRules::acceptsItemCount(items ? countOf(*items) : 0, u"/items"_s, m_log);
    const bool refused = m_log.count() > 0;
    if (items && countIsFine)
        readItems(*items);
    if (refused || (m_broken == BrokenItems::Refuse && m_log.count() > 0))
        return {};
    return std::move(m_document);
}

bool JsonReader::readFormat()
{
    const std::optional<QString> format = m_root.text(u"format"_s);
    if (format && *format != formatName)
        m_log.add(u"/format"_s, Wording::quoted(*format) + u" is no format of a label"_s,
            u"a label has the format %1"_s.arg(Wording::quoted(formatName)));
    return format == formatName;
}

bool JsonReader::readVersion()
{
    const std::optional<double> version = m_root.number(u"version"_s);
    if (!version || !DocumentRules::acceptsVersion(*version, u"/version"_s, m_log))
        return false;
    m_version = static_cast<unsigned int>(*version);
    return true;
}

void JsonReader::readHead()
{
    readPage();
    readInks();
    // A colour that no ink has, should the paper be unreadable.
    m_document.setPaper(m_root.color(u"paper"_s).value_or(QColor()));
    readDither();
    if (const std::optional<QJsonArray> sources = m_root.optionalArray(u"sources"_s))
        m_document.setSources(DataSourceMap::fromJson(*sources, u"/sources"_s, m_log));

    // What could not be read has been reported, and has no value to be judged.
    const Problems reported = m_log.problems();
    for (const Problem &problem : m_document.problems()) {
        const bool known = std::ranges::any_of(reported,
            [&](const Problem &other) { return (problem.where + u'/').startsWith(other.where + u'/'); });
        if (!known)
            m_log.add({ problem });
    }
}

void JsonReader::readPage()
{
    const std::optional<QJsonObject> page = m_root.object(u"page"_s);
    if (!page)
        return;
    JsonMembers members(*page, u"/page"_s, m_log);
    const QSizeF size = m_document.pageSize();
    const double width = members.number(u"width"_s).value_or(size.width());
    const double height = members.number(u"height"_s).value_or(size.height());
    m_document.setPageSize({ width, height });
    m_document.setDesignDpi(members.number(u"dpi"_s).value_or(m_document.designDpi()));
    members.refuseOthers();
}

void JsonReader::readInks()
{
    const std::optional<QJsonArray> list = m_root.array(u"inks"_s);
    if (!list)
        return;
    QList<Ink> inks;
    // One more than there may be, to be told that there are too many.
    const qsizetype count = std::min<qsizetype>(list->size(), LabelLimits::MaxInks + 1);
    for (qsizetype i = 0; i < count; ++i)
        inks.append(readInk(list->at(i), JsonPointer::element(u"/inks"_s, i)));
    m_document.setInks(inks);
}

Ink JsonReader::readInk(const QJsonValue &json, const QString &pointer)
{
    if (!json.isObject()) {
        m_log.add(pointer, u"unknown ink, %1 instead of an object"_s.arg(JsonMembers::typeName(json.type())),
            u"write it as {\"name\": \"black\", \"color\": \"#000000\"}"_s);
        return {};
    }
    JsonMembers members(json.toObject(), pointer, m_log);
    const Ink ink { members.text(u"name"_s).value_or(QString()),
        members.color(u"color"_s).value_or(QColor()) };
    members.refuseOthers();
    return ink;
}

void JsonReader::readDither()
{
    const QString key = u"dither"_s;
    const std::optional<QString> name = m_root.optionalText(key);
    if (!name)
        return;
    if (const std::optional<Dither> dither = DitherNames::find(*name))
        m_document.setDither(*dither);
    else
        m_log.add(JsonPointer::member({}, key), Wording::quoted(*name) + u" is no kind of dithering"_s,
            u"use one of "_s + DitherNames::all().join(u", "_s));
}

void JsonReader::readItems(const QJsonArray &items)
{
    for (std::unique_ptr<Item> &item : itemsOf(items, u"/items"_s, 1))
        m_document.addItem(std::move(item));
}

std::vector<std::unique_ptr<Item>> JsonReader::itemsOf(
    const QJsonArray &array, const QString &pointer, int level)
{
    std::vector<std::unique_ptr<Item>> items;
    for (qsizetype i = 0; i < array.size(); ++i) {
        if (auto item = itemOf(array.at(i), JsonPointer::element(pointer, i), level))
            items.push_back(std::move(item));
    }
    return items;
}

std::unique_ptr<Item> JsonReader::itemOf(const QJsonValue &json, const QString &pointer, int level)
{
    if (!json.isObject()) {
        m_log.add(pointer, u"is %1, not an object"_s.arg(JsonMembers::typeName(json.type())));
        return {};
    }
    const QJsonObject object = json.toObject();
    std::optional<std::vector<std::unique_ptr<Item>>> members = membersOf(object, pointer, level);
    if (!members)
        return {};
    auto item = ItemMap::fromJson(object, m_version, pointer, m_log, std::move(*members));
    return item && m_budget.take(*item, pointer, m_log) ? std::move(item) : nullptr;
}

/// Nothing, with a problem, if the children are no list or lie too deep.
std::optional<std::vector<std::unique_ptr<Item>>> JsonReader::membersOf(
    const QJsonObject &object, const QString &pointer, int level)
{
    std::vector<std::unique_ptr<Item>> members;
    const QJsonValue children = object.value(ItemMap::childrenKey);
    if (!ItemMap::isContainer(object) || children.isUndefined())
        return members;
    const QString where = JsonPointer::member(pointer, ItemMap::childrenKey);
    if (!children.isArray()) {
        m_log.add(where, u"is %1, not a list"_s.arg(JsonMembers::typeName(children.type())));
        return {};
    }
    const QJsonArray array = children.toArray();
    if (!array.isEmpty() && !DocumentRules::acceptsLevel(level + 1, where, m_log))
        return {};
    return itemsOf(array, where, level + 1);
}
