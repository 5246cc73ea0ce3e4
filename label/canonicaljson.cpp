// SPDX-License-Identifier: BSD-3-Clause
#include "label/canonicaljson.h"

#include <QJsonDocument>

#include <algorithm>

namespace {

/// Halves the indent of every line. A line break inside a text is escaped, so every line begins with its
/// indent.
QByteArray withHalfIndent(const QByteArray &text)
{
    QByteArray result;
    result.reserve(text.size());
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype next = text.indexOf('\n', start) + 1;
        const auto *first = text.constData() + start;
        const auto indent
            = std::find_if(first, text.constData() + next, [](char c) { return c != ' '; }) - first;
        result.append(first + indent / 2, next - start - indent / 2);
        start = next;
    }
    return result;
}

} // namespace

QByteArray CanonicalJson::write(const QJsonObject &object)
{
    return withHalfIndent(QJsonDocument(object).toJson());
}
