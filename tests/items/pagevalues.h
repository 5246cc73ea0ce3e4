// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDataStream>
#include <QString>
#include <QVariant>

/// Values as the pages of the items show them, in one form for each value, so that two can be compared.
namespace PageValues {

/// What a cell shows, without the word that tells what a number stands for.
[[nodiscard]] QString ofCell(const QString &cell);
/// The value of a property.
[[nodiscard]] QString ofProperty(const QVariant &value);
/// The next value of a record, by the name of its type; empty for a type without values.
[[nodiscard]] QString ofRecord(QDataStream &stream, const QString &type);

} // namespace PageValues
