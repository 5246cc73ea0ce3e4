// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "bench/batchlabel.h"

#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPixmap>

#include <zint.h>

#include <memory>

/// The bound of what a PDF of labels can cost with Qt and libzint: their plain calls, without items.
class BoundPdf
{
public:
    explicit BoundPdf(const QString &path)
        : m_writer(path)
        , m_logo(QPixmap::fromImage(BatchLabel::logo()))
    {
        m_writer.setResolution(int(BatchLabel::dpi));
        m_writer.setPageLayout(
            { QPageSize(BatchLabel::millimetres, QPageSize::Millimeter, {}, QPageSize::ExactMatch),
                QPageLayout::Portrait, QMarginsF() });
        m_painter.begin(&m_writer);
        m_painter.setRenderHint(QPainter::LosslessImageRendering);
    }

    void addPage(const BatchLabel::Row &row)
    {
        if (m_pages++ > 0)
            m_writer.newPage();
        m_painter.setPen(QPen(Qt::black, BatchLabel::frameWidth));
        m_painter.drawRect(BatchLabel::frame);
        m_painter.drawPixmap(BatchLabel::logoAt, m_logo);
        for (std::size_t i = 0; i < row.texts.size(); ++i)
            drawText(BatchLabel::textPlaces[i], row.texts[i]);
        drawSymbol(BARCODE_QRCODE, row.qr, BatchLabel::qr);
        drawSymbol(BARCODE_CODE128, row.bars, BatchLabel::bars);
    }

    void finish() { m_painter.end(); }

private:
    void drawText(const BatchLabel::TextPlace &place, const QString &text)
    {
        QFont font(BatchLabel::fontFamily);
        font.setPixelSize(place.pixels);
        m_painter.setFont(font);
        m_painter.drawText(place.topLeft + QPointF(0, place.pixels), text);
    }

    /// All bars in one call: filled one by one they take a quarter longer.
    void drawSymbol(int symbology, const QString &text, const QRectF &place)
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
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(Qt::black);
        m_painter.drawRects(m_bars);
        m_painter.setBrush(Qt::NoBrush);
        m_painter.setPen(Qt::black);
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

    QPdfWriter m_writer;
    QPixmap m_logo;
    QList<QRectF> m_bars;
    QPainter m_painter;
    int m_pages = 0;
};
