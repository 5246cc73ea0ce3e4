// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QFont>
#include <QList>
#include <QString>

class Item;

/// The letters of an item, by the fonts that they are written in.
namespace TextRuns {

struct Run
{
    QFont font;
    QString text;
};

/// Of a text, or of the line beside a barcode, as it is shown; none of other items.
[[nodiscard]] QList<Run> of(const Item &item);

} // namespace TextRuns
