// SPDX-License-Identifier: BSD-3-Clause
#include "label/wording.h"

#include "items/core/item.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestQuote = 40;
/// Longer than every colour's name.
constexpr qsizetype longestColor = 32;

} // namespace

QString Wording::quoted(const QString &text)
{
    const bool fits = text.size() <= longestQuote;
    return u'"' + (fits ? text : text.first(longestQuote - 1) + u'…') + u'"';
}

QString Wording::number(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

QString Wording::color(const QColor &color)
{
    if (!color.isValid() || color.alpha() == 0)
        return u"transparent"_s;
    return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
}

QColor Wording::colorOf(const QString &text)
{
    const QColor color = text.size() <= longestColor ? QColor::fromString(text) : QColor();
    return color == QColor::fromRgba(color.rgba()) ? color : QColor();
}

QString Wording::item(const Item &item)
{
    return item.toDescriptionString().trimmed();
}
