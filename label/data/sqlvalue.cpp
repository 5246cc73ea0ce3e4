// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/sqlvalue.h"

#include <QDateTime>
#include <QLocale>
#include <QStringDecoder>
#include <QVariant>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

QString numberText(double value)
{
    const double size = std::abs(value);
    const bool isPlain = size == 0 || (size >= 1e-6 && size < 1e15);
    // No minus in front of zero.
    return QString::number(value + 0.0, isPlain ? 'f' : 'g', QLocale::FloatingPointShortest);
}

Qt::DateFormat formatOf(QTime time)
{
    return time.msec() == 0 ? Qt::ISODate : Qt::ISODateWithMs;
}

std::optional<QString> decoded(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(bytes);
    return utf8.hasError() ? std::nullopt : std::optional(text);
}

} // namespace

std::optional<QString> SqlValue::text(const QVariant &value)
{
    if (value.isNull())
        return QString();
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
        return numberText(value.toDouble());
    case QMetaType::QByteArray:
        return decoded(value.toByteArray());
    case QMetaType::QDate:
        return value.toDate().toString(Qt::ISODate);
    case QMetaType::QTime:
        return value.toTime().toString(formatOf(value.toTime()));
    case QMetaType::QDateTime:
        return value.toDateTime().toLocalTime().toString(formatOf(value.toDateTime().time()));
    default:
        return value.toString();
    }
}
