// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/numberform.h"

#include <QRegularExpression>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

QRegularExpressionMatch partsOf(const QString &form)
{
    static const QRegularExpression conversion(
        u"\\A%([-+ 0#]*)([0-9]{0,2})(?:\\.(20|1?[0-9]))?([diuxXofegs])\\z"_s);
    return conversion.match(form);
}

/// Characters are counted, where printf() counts bytes.
QString textIn(const QRegularExpressionMatch &form, const QString &value)
{
    const QString text = form.hasCaptured(3) ? value.left(form.captured(3).toInt()) : value;
    const int width = form.captured(2).toInt();
    return form.captured(1).contains(u'-') ? text.leftJustified(width) : text.rightJustified(width);
}

template <typename Number> QString printed(const QString &form, const char *length, Number number)
{
    const QByteArray text = form.chopped(1).toLatin1() + length + char(form.back().toLatin1());
    return QString::asprintf(text.constData(), number);
}

} // namespace

bool NumberForm::isValid(const QString &form)
{
    return partsOf(form).hasMatch();
}

QString NumberForm::adviceFor(const QString &form, const QString &value)
{
    if (apply(form, QString(value).replace(u',', u'.')))
        return u"write a decimal point, as in 12.5"_s;
    bool isNumber = false;
    (void)value.toDouble(&isNumber);
    return isNumber && u"di"_s.contains(form.back()) ? u"whole numbers are needed; %.2f takes others"_s
                                                     : QString();
}

std::optional<QString> NumberForm::apply(const QString &form, const QString &value)
{
    const QRegularExpressionMatch parts = partsOf(form);
    const QChar conversion = form.back();
    if (conversion == u's')
        return textIn(parts, value);
    bool isNumber = false;
    if (u"feg"_s.contains(conversion)) {
        const double number = value.toDouble(&isNumber);
        return isNumber && std::isfinite(number) ? std::optional(printed(form, "", number)) : std::nullopt;
    }
    const qlonglong number = value.toLongLong(&isNumber);
    const bool takesSign = u"di"_s.contains(conversion);
    return isNumber && (takesSign || number >= 0) ? std::optional(printed(form, "ll", number)) : std::nullopt;
}
