// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "bench/batchlabel.h"

#include <QPainter>
#include <QPixmap>

#include <zint.h>

#include <memory>

/// The label of a batch in plain calls of Qt and libzint, without items.
class BoundLabel
{
public:
    void paint(QPainter &painter, const BatchLabel::Row &row)
    {
        painter.setPen(QPen(Qt::black, BatchLabel::frameWidth));
        painter.drawRect(BatchLabel::frame);
        painter.drawPixmap(BatchLabel::logoAt, m_logo);
        for (std::size_t i = 0; i < row.texts.size(); ++i)
            drawText(painter, BatchLabel::textPlaces[i], row.texts[i]);
        drawSymbol(painter, BARCODE_QRCODE, row.qr, BatchLabel::qr);
        drawSymbol(painter, BARCODE_CODE128, row.bars, BatchLabel::bars);
    }

private:
    static void drawText(QPainter &painter, const BatchLabel::TextPlace &place, const QString &text)
    {
        QFont font(BatchLabel::fontFamily);
        font.setPixelSize(place.pixels);
        painter.setFont(font);
        painter.drawText(place.topLeft + QPointF(0, place.pixels), text);
    }

    /// All bars in one call: filled one by one they take a quarter longer.
    void drawSymbol(QPainter &painter, int symbology, const QString &text, const QRectF &place)
    {
        const std::unique_ptr<zint_symbol, decltype(&ZBarcode_Delete)> symbol(
            ZBarcode_Create(), &ZBarcode_Delete);
        symbol->symbology = symbology;
        const QByteArray utf8 = text.toUtf8();
        if (ZBarcode_Encode(
                symbol.get(), reinterpret_cast<const unsigned char *>(utf8.constData()), int(utf8.size()))
            >= ZINT_ERROR)
            qFatal("%s", symbol->errtxt);
        const double width = place.width() / symbol->width;
        const double height = place.height() / symbol->rows;
        m_bars.clear();
        for (int y = 0; y < symbol->rows; ++y)
            addRow(symbol->encoded_data[y], symbol->width,
                { place.left(), place.top() + y * height, width, height });
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::black);
        painter.drawRects(m_bars);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(Qt::black);
    }

    /// Adds a rectangle for each run of dark modules.
    void addRow(const unsigned char *modules, int count, const QRectF &first)
    {
        const auto isDark = [modules](int x) { return (modules[x / 8] >> (x % 8) & 1) != 0; };
        for (int x = 0; x < count;) {
            const int from = x++;
            if (!isDark(from))
                continue;
            while (x < count && isDark(x))
                ++x;
            m_bars.append({ first.left() + from * first.width(), first.top(), (x - from) * first.width(),
                first.height() });
        }
    }

    QPixmap m_logo = QPixmap::fromImage(BatchLabel::logo());
    QList<QRectF> m_bars;
};
