// SPDX-License-Identifier: BSD-3-Clause
#include "label/itemvalue.h"

#include "items/core/limits.h"
#include "items/graphics/pictureloader.h"
#include "items/text/htmlguard.h"
#include "label/jsonmembers.h"
#include "label/wording.h"

#include <QDataStream>
#include <QJsonArray>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype transformEntries = 8;
constexpr double shortestLine = 1.0;

ItemValue wrongType(const QJsonValue &json, const QString &needed)
{
    return { {}, u"is %1, not %2"_s.arg(JsonMembers::typeName(json.type()), needed), {} };
}

/// Font sizes are whole pixels; the property map of a stretched label text has -1 for one that it does not
/// tell.
bool isNoFontSize(double number, const QString &key)
{
    return key == "itemFontSize"_L1 && number < 1.0 && number != -1.0;
}

template <typename Integer, typename Range = Integer>
ItemValue whole(const QJsonValue &json, const QString &key)
{
    constexpr double least = std::numeric_limits<Range>::min();
    constexpr double most = std::numeric_limits<Range>::max();
    if (!json.isDouble())
        return wrongType(json, u"a number"_s);
    const double number = json.toDouble();
    if (isNoFontSize(number, key))
        return { {}, Wording::number(number) + u" is no font size"_s, u"use a whole number from 1 on"_s };
    if (number >= least && number <= most && number == std::floor(number))
        return { QVariant::fromValue(static_cast<Integer>(number)), {}, {} };
    return { {}, Wording::number(number) + u" is out of range"_s,
        u"use a whole number from %1 to %2"_s.arg(Wording::number(least), Wording::number(most)) };
}

/// Some records have fewer bytes than the property.
ItemValue wholeInt(const QJsonValue &json, const QString &key)
{
    if (key == "itemSizeLimiting"_L1)
        return whole<int, qint8>(json, key);
    if (key == "lineWidth"_L1 || key == "barcodeWhiteSpace"_L1)
        return whole<int, qint16>(json, key);
    return whole<int>(json, key);
}

ItemValue real(const QJsonValue &json, const QString &key)
{
    if (!json.isDouble())
        return wrongType(json, u"a number"_s);
    const QString problem = ItemValue::numberProblem(json.toDouble(), key);
    return { problem.isEmpty() ? QVariant(json.toDouble()) : QVariant(), problem, {} };
}

ItemValue colorName(const QJsonValue &json)
{
    if (!json.isString())
        return wrongType(json, u"text"_s);
    const QString name = json.toString();
    if (Wording::colorOf(name).isValid())
        return { name, {}, {} };
    return { {}, Wording::quoted(name) + u" is no colour"_s,
        u"write it as \"#rrggbb\", \"#aarrggbb\" or \"transparent\""_s };
}

ItemValue text(const QJsonValue &json, const QString &key)
{
    if (key.endsWith("Color"_L1))
        return colorName(json);
    if (!json.isString())
        return wrongType(json, u"text"_s);
    const QString problem = ItemValue::textProblem(json.toString(), key);
    if (!problem.isEmpty())
        return { {}, problem, u"shorten or simplify it"_s };
    return { json.toString(), {}, {} };
}

ItemValue transform(const QJsonValue &json, const QString &key)
{
    const QJsonArray list = json.toArray();
    const auto isEntry = [&key](const QJsonValue &entry) { return real(entry, key).problem.isEmpty(); };
    if (list.size() == transformEntries && std::ranges::all_of(list, isEntry))
        return { list.toVariantList(), {}, {} };
    return { {}, u"is no list of 8 drawable numbers"_s,
        u"write m11, m12, m13, m21, m22, m23, m31 and m32"_s };
}

/// A drawing: its bytes in Base64.
ItemValue drawing(const QJsonValue &json)
{
    if (!json.isString())
        return wrongType(json, u"text"_s);
    const QByteArray text = json.toString().toLatin1();
    const auto decoded = QByteArray::fromBase64Encoding(text, QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded)
        return { {}, u"is no Base64"_s, u"encode the whole drawing in Base64, without line breaks"_s };
    if (decoded.decoded.size() > Limits::MaxSvgBytes)
        return { {}, u"is a drawing of more than 32 MiB"_s, u"simplify it"_s };
    return { json.toString(), {}, {} };
}

/// A picture as QDataStream writes it, in Base64.
ItemValue picture(const QJsonValue &json)
{
    if (!json.isString())
        return wrongType(json, u"text"_s);
    const auto decoded = QByteArray::fromBase64Encoding(
        json.toString().toUtf8(), QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    QDataStream stream(*decoded);
    static_cast<void>(PictureLoader::readPixmap(stream));
    if (decoded && stream.status() == QDataStream::Ok && stream.atEnd())
        return { json.toString(), {}, {} };
    if (stream.status() == QDataStream::ReadCorruptData)
        return { {}, u"is too large a picture"_s, u"use fewer pixels"_s };
    return { {}, u"is no picture"_s, u"write a picture's marker and its PNG file in Base64"_s };
}

ItemValue anyOther(const QJsonValue &json, QMetaType type)
{
    QVariant value = json.toVariant();
    if (value.convert(type))
        return { value, {}, {} };
    return { {}, u"is %1, which does not fit"_s.arg(JsonMembers::typeName(json.type())), {} };
}

} // namespace

QString ItemValue::numberProblem(double number, const QString &key)
{
    if (!std::isfinite(number))
        return Wording::number(number) + u" is no finite number"_s;
    if (std::abs(number) > Limits::MaxGeometry)
        return u"%1 is beyond the drawable range of ±%2"_s.arg(
            Wording::number(number), Wording::number(Limits::MaxGeometry));
    if (number < 0 && (key == "itemWidth"_L1 || key == "itemHeight"_L1))
        return Wording::number(number) + u" is negative"_s;
    if (number < shortestLine && key == "itemLength"_L1)
        return u"%1 is below %2, the shortest line"_s.arg(
            Wording::number(number), Wording::number(shortestLine));
    return {};
}

QString ItemValue::textProblem(const QString &text, const QString &key)
{
    if (key == "itemText"_L1 && text.size() > Limits::MaxTextLength)
        return u"has %1 characters, of which only %2 would be kept"_s.arg(text.size())
            .arg(Limits::MaxTextLength);
    if (key == "itemHtml"_L1 && !HtmlGuard::accepts(text))
        return u"is too complicated to be laid out"_s;
    return {};
}

ItemValue ItemValue::from(const QJsonValue &json, const QString &key, QMetaType type)
{
    switch (type.id()) {
    case QMetaType::Bool:
        return json.isBool() ? ItemValue { json.toBool(), {}, {} } : wrongType(json, u"true or false"_s);
    case QMetaType::Short:
        return whole<short>(json, key);
    case QMetaType::UShort:
        return whole<ushort>(json, key);
    case QMetaType::Int:
        return wholeInt(json, key);
    case QMetaType::UInt:
        return whole<uint>(json, key);
    case QMetaType::Double:
        return real(json, key);
    case QMetaType::QString:
        return text(json, key);
    case QMetaType::QColor:
        return colorName(json);
    case QMetaType::QVariant:
        return key == "pixmapItemData"_L1 ? picture(json) : drawing(json);
    default:
        return key == "itemTransform"_L1 ? transform(json, key) : anyOther(json, type);
    }
}
