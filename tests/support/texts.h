// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"

#include <QTest>

#include <memory>

/// Both classes of texts, for what they have in common.
namespace Texts {

/// A label, or a box that is large enough, with the text that a new label has.
[[nodiscard]] inline std::unique_ptr<TextItem> made(bool rich)
{
    if (!rich)
        return std::make_unique<SimpleTextItem>();
    auto box = std::make_unique<RichTextItem>();
    box->setItemSize(QSizeF(200, 120));
    box->setItemText(QStringLiteral("TEXT"));
    return box;
}

[[nodiscard]] inline const char *nameOf(bool rich)
{
    return rich ? "box" : "label";
}

/// Adds a row for each class.
inline void addRows()
{
    QTest::addColumn<bool>("rich");
    for (const bool rich : { false, true })
        QTest::newRow(nameOf(rich)) << rich;
}

} // namespace Texts
