// SPDX-License-Identifier: BSD-3-Clause
#include "label/jsonmembers.h"

#include "label/jsonpointer.h"
#include "label/nearestname.h"
#include "label/problemlog.h"
#include "label/wording.h"

#include <cmath>

using namespace Qt::StringLiterals;

QString JsonMembers::typeName(QJsonValue::Type type)
{
    switch (type) {
    case QJsonValue::Bool:
        return u"true or false"_s;
    case QJsonValue::Double:
        return u"a number"_s;
    case QJsonValue::String:
        return u"text"_s;
    case QJsonValue::Array:
        return u"a list"_s;
    case QJsonValue::Object:
        return u"an object"_s;
    default:
        return u"nothing"_s;
    }
}

bool JsonMembers::has(const QString &key, QJsonValue::Type type)
{
    m_known.append(key);
    const QJsonValue value = m_object.value(key);
    if (value.type() == type)
        return true;
    const QString where = JsonPointer::member(m_pointer, key);
    if (value.isUndefined())
        m_log.add(where, u"is missing"_s, u"add %1"_s.arg(typeName(type)));
    else
        m_log.add(where, u"is %1, not %2"_s.arg(typeName(value.type()), typeName(type)));
    return false;
}

std::optional<double> JsonMembers::number(const QString &key)
{
    return has(key, QJsonValue::Double) ? std::optional(m_object.value(key).toDouble()) : std::nullopt;
}

std::optional<QString> JsonMembers::text(const QString &key)
{
    return has(key, QJsonValue::String) ? std::optional(m_object.value(key).toString()) : std::nullopt;
}

std::optional<qint64> JsonMembers::integer(const QString &key, qint64 most)
{
    const std::optional<double> value = number(key);
    if (!value)
        return {};
    if (*value == std::floor(*value) && std::abs(*value) <= double(most))
        return qint64(*value);
    m_log.add(JsonPointer::member(m_pointer, key), Wording::number(*value) + u" is out of range"_s,
        u"use a whole number from -%1 to %1"_s.arg(most));
    return {};
}

bool JsonMembers::mayHave(const QString &key)
{
    m_known.append(key);
    return m_object.contains(key);
}

std::optional<QString> JsonMembers::optionalText(const QString &key)
{
    return mayHave(key) ? text(key) : std::nullopt;
}

std::optional<qint64> JsonMembers::optionalInteger(const QString &key, qint64 most)
{
    return mayHave(key) ? integer(key, most) : std::nullopt;
}

std::optional<QJsonArray> JsonMembers::optionalArray(const QString &key)
{
    return mayHave(key) ? array(key) : std::nullopt;
}

std::optional<QColor> JsonMembers::color(const QString &key)
{
    const std::optional<QString> name = text(key);
    if (!name)
        return {};
    const QColor color = Wording::colorOf(*name);
    if (color.isValid())
        return color;
    m_log.add(JsonPointer::member(m_pointer, key), Wording::quoted(*name) + u" is no colour"_s,
        u"write it as \"#rrggbb\""_s);
    return {};
}

std::optional<QJsonArray> JsonMembers::array(const QString &key)
{
    return has(key, QJsonValue::Array) ? std::optional(m_object.value(key).toArray()) : std::nullopt;
}

std::optional<QJsonObject> JsonMembers::object(const QString &key)
{
    return has(key, QJsonValue::Object) ? std::optional(m_object.value(key).toObject()) : std::nullopt;
}

void JsonMembers::refuseOthers()
{
    for (auto member = m_object.constBegin(); member != m_object.constEnd(); ++member) {
        const QString key = member.key();
        if (!m_known.contains(key))
            refuse(key, m_known, m_pointer, m_log);
    }
}

void JsonMembers::refuse(
    const QString &key, const QStringList &known, const QString &pointer, ProblemLog &log)
{
    if (log.isFull()) {
        log.addUntold();
        return;
    }
    const QString nearest = nearestName(key, known);
    log.add(JsonPointer::member(pointer, key), u"is unknown"_s,
        nearest.isEmpty() ? u"remove it"_s : u"did you mean %1?"_s.arg(Wording::quoted(nearest)));
}
