// SPDX-License-Identifier: BSD-3-Clause
#include "tests/items/pagevalues.h"

#include <QColor>
#include <QVariantList>

using namespace Qt::StringLiterals;

namespace {

QString textOf(double number)
{
    return QString::number(number, 'g', 15);
}

QString textOf(const QColor &colour)
{
    if (!colour.isValid())
        return u"invalid"_s;
    return colour.alpha() == 0 ? u"transparent"_s : colour.name();
}

QString quoted(const QString &text)
{
    return u'"' + text + u'"';
}

template <typename T> T taken(QDataStream &stream)
{
    T value {};
    stream >> value;
    return value;
}

/// One number, or a word.
QString ofWord(const QString &word)
{
    bool isNumber = false;
    const QString first = QString(word).replace(u'−', u'-').section(u' ', 0, 0);
    const int whole = first.toInt(&isNumber, 0);
    if (isNumber)
        return textOf(whole);
    const double number = first.toDouble(&isNumber);
    return isNumber ? textOf(number) : word;
}

} // namespace

QString PageValues::ofCell(const QString &cell)
{
    if (cell.startsWith(u'`') && cell.endsWith(u'`'))
        return cell.mid(1, cell.size() - 2);
    QStringList words = cell.split(u", "_s);
    for (QString &word : words)
        word = ofWord(word);
    return words.join(u", "_s);
}

QString PageValues::ofProperty(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? u"true"_s : u"false"_s;
    case QMetaType::QString:
        return quoted(value.toString());
    case QMetaType::QColor:
        return textOf(value.value<QColor>());
    case QMetaType::QVariantList: {
        QStringList numbers;
        for (const QVariant &number : value.toList())
            numbers << textOf(number.toDouble());
        return numbers.join(u", "_s);
    }
    default:
        return textOf(value.toDouble());
    }
}

QString PageValues::ofRecord(QDataStream &stream, const QString &type)
{
    if (type == u"bool")
        return textOf(taken<bool>(stream));
    if (type == u"i8")
        return textOf(taken<qint8>(stream));
    if (type == u"i16")
        return textOf(taken<qint16>(stream));
    if (type == u"i32")
        return textOf(taken<qint32>(stream));
    if (type == u"f64")
        return textOf(taken<double>(stream));
    if (type == u"colour")
        return textOf(taken<QColor>(stream));
    if (type == u"string") {
        const auto text = taken<QString>(stream);
        return text.isNull() ? u"null"_s : quoted(text);
    }
    if (type == u"bytes")
        return taken<QByteArray>(stream).isNull() ? u"none"_s : u"some"_s;
    if (type == u"picture")
        return taken<qint32>(stream) == 0 ? u"none"_s : u"some"_s;
    return {};
}
