// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"

#include <QTest>

#include <memory>

/// Both classes of texts, for what they have in common.
namespace Texts {

/// A label, or a box that is large enough.
[[nodiscard]] inline std::unique_ptr<TextItem> made(bool rich, const QString &text = QStringLiteral("TEXT"))
{
    std::unique_ptr<TextItem> item;
    if (rich) {
        item = std::make_unique<RichTextItem>();
        dynamic_cast<RichTextItem &>(*item).setItemSize(QSizeF(200, 120));
    } else {
        item = std::make_unique<SimpleTextItem>();
    }
    if (item->toPlainText() != text)
        item->setItemText(text);
    return item;
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
