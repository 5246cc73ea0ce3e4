// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/documentdrawing.h"

#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>

namespace {

/// Glyphs take up many times the memory of their characters, and Qt lays out texts of more than 1,000 step by
/// step, as they come into view.
constexpr int mostCharacters = 500;

/// Whether a format makes the layout draw more than lines of text.
bool isDecoration(const QTextFormat &format)
{
    switch (format.type()) {
    case QTextFormat::CharFormat:
        return format.objectIndex() != -1; // where a frame or the cell of a table begins or ends
    case QTextFormat::BlockFormat:
        return format.hasProperty(QTextFormat::BackgroundBrush)
            || format.hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth);
    case QTextFormat::FrameFormat:
        return format.hasProperty(QTextFormat::BackgroundBrush)
            || format.hasProperty(QTextFormat::FrameBorder);
    default:
        return true; // a list
    }
}

} // namespace

void DocumentDrawing::draw(QPainter &painter, const QTextDocument &document,
    const QAbstractTextDocumentLayout::PaintContext &context)
{
    const bool isShort = document.characterCount() <= mostCharacters;
    for (QTextBlock block = document.begin(); isShort && block.isValid(); block = block.next())
        block.layout()->setCacheEnabled(true); // otherwise Qt forms the glyphs anew each time
    const bool linesOnly = isShort && context.selections.isEmpty() && context.cursorPosition == -1
        && std::ranges::none_of(document.allFormats(), isDecoration);
    if (!linesOnly) {
        document.documentLayout()->draw(&painter, context);
        return;
    }
    painter.setPen(context.palette.color(QPalette::Text));
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.isVisible())
            block.layout()->draw(&painter, QPointF(), {}, context.clip);
    }
}
