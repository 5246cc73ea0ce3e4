// SPDX-License-Identifier: BSD-3-Clause
#include "label/adjust/printadjustment.h"

#include "label/wording.h"

using namespace Qt::StringLiterals;

std::optional<double> PrintAdjustment::parseScale(const QString &text, Problem &problem)
{
    const QString trimmed = text.trimmed();
    const bool isPercentage = trimmed.endsWith(u'%');
    bool isNumber = false;
    const double value = trimmed.chopped(isPercentage ? 1 : 0).trimmed().toDouble(&isNumber);
    const double scale = isPercentage ? value / 100.0 : value;
    if (isNumber && scale >= MinScale && scale <= MaxScale)
        return scale;
    problem = { {}, {}, Wording::quoted(text) + u" is no scale"_s,
        u"use a factor from %1 to %2, or a percentage, for example 98%"_s.arg(MinScale).arg(MaxScale) };
    return {};
}

bool PrintAdjustment::movesNothing() const
{
    return rotation == 0 && !mirror && scale == 1.0 && offset.x.value == 0.0 && offset.y.value == 0.0;
}

QSizeF PrintAdjustment::printedSize(QSizeF page) const
{
    return turnsOnSide() ? page.transposed() : page;
}

QTransform PrintAdjustment::transform(QSizeF page, double dpi) const
{
    const QSizeF printed = printedSize(page);
    const QPointF moved = offset.millimetres(dpi);
    return QTransform::fromTranslate(-page.width() / 2.0, -page.height() / 2.0)
        * QTransform::fromScale(mirror ? -scale : scale, scale) * QTransform().rotate(rotation)
        * QTransform::fromTranslate(printed.width() / 2.0 + moved.x(), printed.height() / 2.0 + moved.y());
}
