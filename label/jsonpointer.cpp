// SPDX-License-Identifier: BSD-3-Clause
#include "label/jsonpointer.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestKey = 60;

} // namespace

QString JsonPointer::member(const QString &object, const QString &key)
{
    QString name = key.size() <= longestKey ? key : key.first(longestKey - 1) + u'…';
    name.replace(u'~', u"~0"_s).replace(u'/', u"~1"_s);
    return object + u'/' + name;
}

QString JsonPointer::element(const QString &array, qsizetype index)
{
    return array + u'/' + QString::number(index);
}
