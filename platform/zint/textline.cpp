// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/textline.h"

#include "platform/zint/barcodestyle.h"
#include "platform/zint/encodedsymbol.h"

#include <QFontMetricsF>
#include <QPainter>

#include <zint.h>

#include <algorithm>
#include <cmath>

namespace Zint {

namespace {

/// The text as it is shown. The asterisks of Code 39 are no part of what it holds; the letters at the ends of
/// Codabar are, since there are several.
QString shownText(const EncodedSymbol &symbol, const BarcodeStyle &style)
{
    if (style.hideText)
        return {};
    const bool hasAsterisks = (symbol.symbol == BARCODE_CODE39 || symbol.symbol == BARCODE_HIBC_39)
        && symbol.text.size() >= 2 && symbol.text.startsWith(u'*') && symbol.text.endsWith(u'*');
    return hasAsterisks && !style.showStartStop ? symbol.text.sliced(1, symbol.text.size() - 2) : symbol.text;
}

/// The size in units, not points: the line is to look alike on all devices.
int pixelSize(int fontSize)
{
    return int(std::lround(std::clamp(double(fontSize) * 4.0 / 3.0, 0.0, double(TextLine::MaxPixelSize))));
}

QFont fontOf(const BarcodeStyle &style, int pixels)
{
    QFont font(style.fontFamily);
    font.setPixelSize(pixels);
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setUnderline(style.underline);
    font.setHintingPreference(QFont::PreferNoHinting); // it makes widths depend on the device
    return font;
}

double leftEnd(const QRectF &rect, double width, int align)
{
    if ((align & Qt::AlignHCenter) != 0)
        return rect.left() + (rect.width() - width) / 2.0;
    return (align & Qt::AlignRight) != 0 ? rect.right() - width : rect.left();
}

} // namespace

TextLine::TextLine(const EncodedSymbol &symbol, const BarcodeStyle &style, const QRectF &rect)
    : m_rest(rect)
{
    const QString text = shownText(symbol, style);
    const int pixels = pixelSize(style.fontSize);
    if (text.isEmpty() || pixels < 1)
        return;
    m_font = fontOf(style, pixels);
    const QFontMetricsF asked(m_font);
    if (asked.height() >= rect.height())
        return;
    const double width = asked.horizontalAdvance(text);
    if (width > rect.width()) // cut off, it would be misread
        m_font.setPixelSize(std::max(1, int(pixels * rect.width() / width)));
    const QFontMetricsF metrics(m_font);

    m_text = text;
    m_baseline.setX(leftEnd(rect, metrics.horizontalAdvance(text), style.textAlign));
    if (style.textAbove) {
        m_baseline.setY(rect.top() + metrics.ascent());
        m_rest.setTop(rect.top() + metrics.height());
    } else {
        m_baseline.setY(rect.bottom() - metrics.descent());
        m_rest.setBottom(rect.bottom() - metrics.height());
    }
}

void TextLine::paint(QPainter &painter) const
{
    if (isEmpty())
        return;
    painter.setFont(m_font);
    painter.drawText(m_baseline, m_text);
}

} // namespace Zint
