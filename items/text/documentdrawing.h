// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QAbstractTextDocumentLayout>

class QPainter;
class QTextDocument;

/// Drawing documents that are drawn many times without being changed.
namespace DocumentDrawing {

/// Draws what the layout of the document draws; in half of its time when that is a short text without frames,
/// tables, lists, rules and backgrounds of paragraphs. The painter's pen may be another one afterwards.
void draw(QPainter &painter, const QTextDocument &document,
    const QAbstractTextDocumentLayout::PaintContext &context);

} // namespace DocumentDrawing
