// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/jsonrows.h"

#include "label/data/columnnames.h"
#include "label/data/textlines.h"
#include "label/jsonscan.h"
#include "label/labellimits.h"
#include "label/nearestname.h"
#include "label/problemlog.h"
#include "label/wording.h"

#include <QJsonDocument>

#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;

namespace {

/// What a value is as a text; nothing for a list or an object.
std::optional<QString> textOf(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Null:
    case QJsonValue::Undefined:
        return QString();
    case QJsonValue::Bool:
        return value.toBool() ? u"true"_s : u"false"_s;
    case QJsonValue::String:
        return value.toString();
    case QJsonValue::Double:
        return value.toVariant().typeId() == QMetaType::LongLong ? QString::number(value.toInteger())
                                                                 : Wording::number(value.toDouble());
    case QJsonValue::Array:
    case QJsonValue::Object:
        break;
    }
    return {};
}

/// Those of all objects, in order.
QStringList keysOf(const QJsonArray &list)
{
    std::set<QString> keys;
    for (const QJsonValue value : list) {
        const QStringList own = value.toObject().keys();
        keys.insert(own.begin(), own.end());
    }
    return { keys.begin(), keys.end() };
}

QString adviceOnKey(const QString &key, const QStringList &columns)
{
    const QString meant = nearestName(key, columns);
    return meant.isEmpty() ? u"give the first object every key, with null for an empty value"_s
                           : u"did you mean %1?"_s.arg(Wording::quoted(meant));
}

} // namespace

JsonRows::JsonRows(std::unique_ptr<TextLines> lines)
    : m_lines(std::move(lines))
{
}

JsonRows::~JsonRows() = default;

std::unique_ptr<JsonRows> JsonRows::open(DataInput input, Problems &problems)
{
    std::unique_ptr<TextLines> lines = TextLines::of(std::move(input), {}, problems);
    if (!lines)
        return {};
    std::unique_ptr<JsonRows> rows(new JsonRows(std::move(lines)));
    return rows->begin(problems) ? std::move(rows) : nullptr;
}

bool JsonRows::begin(Problems &problems)
{
    const bool found = readLine();
    m_isList = m_line.trimmed().startsWith('[');
    if (found && !(m_isList ? beginList(problems) : beginLines(problems)))
        return false;
    if (m_lines->problem()) {
        problems.append(*m_lines->problem());
        return false;
    }
    if (!m_columns.isEmpty()) {
        const Problems unusable = ColumnNames::problems(m_columns, m_lines->name());
        problems += unusable;
        return unusable.isEmpty();
    }
    problems.append({ m_lines->name(), {}, u"holds no object to take the columns from"_s,
        u"write a list of objects, or an object on each line"_s });
    return false;
}

bool JsonRows::beginList(Problems &problems)
{
    QByteArray text = m_line;
    while (text.size() <= LabelLimits::MaxFileBytes && m_lines->readLine(m_line))
        text += m_line;
    ProblemLog log(m_lines->name());
    if (text.size() > LabelLimits::MaxFileBytes)
        log.add({}, u"a list of more than %1 bytes"_s.arg(LabelLimits::MaxFileBytes),
            u"write an object on each line, without the list around them"_s);
    else if (const std::optional<QJsonDocument> json = JsonScan::parse(text, log, m_lineNumber))
        m_list = json->array();
    problems += log.problems();
    m_columns = keysOf(m_list);
    return log.count() == 0;
}

bool JsonRows::beginLines(Problems &problems)
{
    ProblemLog log(m_lines->name());
    if (const std::optional<QJsonDocument> json = JsonScan::parse(m_line, log, m_lineNumber))
        m_columns = keysOf({ json->object() });
    problems += log.problems();
    m_lineIsNext = true;
    return log.count() == 0;
}

bool JsonRows::readLine()
{
    while (m_lines->readLine(m_line)) {
        ++m_lineNumber;
        if (!m_line.trimmed().isEmpty())
            return true;
    }
    return false;
}

std::optional<qint64> JsonRows::total() const
{
    return m_isList ? std::optional(m_list.size()) : std::nullopt;
}

std::optional<qint64> JsonRows::estimate() const
{
    return !m_isList && m_rows > 0 ? m_lines->estimate(m_rows) : std::nullopt;
}

RowResult JsonRows::next()
{
    return m_isList ? nextOfList() : nextLine();
}

RowResult JsonRows::nextOfList()
{
    if (m_rows == m_list.size())
        return {};
    const QString pointer = u"/%1"_s.arg(m_rows);
    return rowOf(m_list.at(m_rows++), pointer, m_lines->name() + u':' + pointer);
}

RowResult JsonRows::nextLine()
{
    if (!std::exchange(m_lineIsNext, false) && !readLine())
        return m_lines->problem() ? RowResult { RowResult::Failed, {}, *m_lines->problem() } : RowResult();
    ++m_rows;
    const QString address = u"%1:%2"_s.arg(m_lines->name()).arg(m_lineNumber);
    ProblemLog log(m_lines->name());
    if (const std::optional<QJsonDocument> json = JsonScan::parse(m_line, log, m_lineNumber))
        return rowOf(json->isArray() ? QJsonValue(json->array()) : json->object(),
            u"line %1"_s.arg(m_lineNumber), address);
    const Problem problem = log.problems().constFirst();
    return broken(problem.where, address, problem.what, problem.advice);
}

RowResult JsonRows::rowOf(const QJsonValue &value, const QString &where, const QString &address)
{
    if (!value.isObject())
        return broken(where, address, u"is no object"_s, {});
    const QJsonObject object = value.toObject();
    const QStringList keys = object.keys();
    const auto stranger = std::ranges::find_if(
        keys, [this](const QString &key) { return !std::ranges::binary_search(m_columns, key); });
    if (stranger != keys.end())
        return broken(where, address, u"%1 is no column"_s.arg(Wording::quoted(*stranger)),
            adviceOnKey(*stranger, m_columns));
    Row row { m_rows, {}, address };
    for (const QString &column : m_columns) {
        const std::optional<QString> text = textOf(object.value(column));
        if (!text)
            return broken(where, address, u"%1 is neither a text nor a number"_s.arg(Wording::quoted(column)),
                u"write its members as keys of the row itself"_s);
        row.values.append(*text);
    }
    return { RowResult::Data, std::move(row), {} };
}

RowResult JsonRows::broken(
    const QString &where, const QString &address, const QString &what, const QString &advice) const
{
    return { RowResult::Broken, { m_rows, {}, address }, { m_lines->name(), where, what, advice } };
}
