// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/barcodeencoder.h"

#include "platform/zint/dotplacement.h"
#include "platform/zint/dotrendering.h"
#include "platform/zint/encodedsymbol.h"
#include "platform/zint/geometryof.h"
#include "platform/zint/symbologies.h"
#include "platform/zint/symbolpainter.h"
#include "platform/zint/textline.h"

#include <QPainter>
#include <QRectF>

#include <algorithm>
#include <array>
#include <cmath>

namespace Zint {

namespace {

/// The painter converts coordinates to fixed point; farther from the origin they overflow.
constexpr double MaxCoordinate = 1e7;

bool canBePainted(const QRectF &rect)
{
    const std::array<double, 4> edges { rect.left(), rect.top(), rect.right(), rect.bottom() };
    return !rect.isEmpty()
        && std::ranges::all_of(edges, [](double edge) { return std::abs(edge) <= MaxCoordinate; });
}

Fit fitOf(QZint::AspectRatioMode mode)
{
    switch (mode) {
    case QZint::KeepAspectRatio:
        return Fit::TopLeft;
    case QZint::CenterBarCode:
        return Fit::Centred;
    default:
        return Fit::Stretched;
    }
}

bool hasSquareModules(const EncodedSymbol &symbol)
{
    const Symbology *symbology = symbologyOf(symbol.symbol);
    return symbology && symbology->kind == Symbology::Kind::Matrix;
}

/// Where the line leaves room for the symbol, and its modules have whole dots.
DotPlacement placementOnDots(
    const EncodedSymbol &symbol, const TextLine &line, Fit fit, const QTransform &toDots)
{
    const QRectF place = placeOf(symbol.geometry, line.rest(), fit);
    return placeOnDots(symbol.geometry, hasSquareModules(symbol), place, toDots);
}

bool isOfOneColour(const SymbolGeometry &geometry)
{
    return std::ranges::all_of(geometry.bars,
        [](const SymbolGeometry::Bars &bars) { return bars.colour == SymbolGeometry::Foreground; });
}

void paintLineAndSymbol(QPainter &painter, const EncodedSymbol &symbol, const BarcodeStyle &style,
    const QRectF &rect, Fit fit, Edges edges)
{
    const QColor foreground = style.foreground.isValid() ? style.foreground : QColor(Qt::black);
    TextLine line(symbol, style, rect);
    if (edges == Edges::OnDots)
        line.sharpen();
    painter.setPen(foreground);
    line.paint(painter);
    if (edges == Edges::OnDots && !isOfOneColour(symbol.geometry))
        return;
    const QRectF place = edges == Edges::OnDots
        ? placementOnDots(symbol, line, fit, painter.deviceTransform()).place
        : placeOf(symbol.geometry, line.rest(), fit);
    paintSymbol(painter, symbol.geometry, place, foreground);
}

} // namespace

int QZint::error_int() const
{
    return encoded()->error;
}

QString QZint::errorText() const
{
    return encoded()->message;
}

QString QZint::encodedText() const
{
    return encoded()->text;
}

void QZint::render(QPainter &painter, const QRectF &rect, AspectRatioMode mode) const
{
    paint(painter, rect, mode, Edges::AsPlaced);
}

void QZint::paint(QPainter &painter, const QRectF &rect, AspectRatioMode mode, Edges edges) const
{
    // A painter of a device that could not be made has no engine to ask.
    if (!painter.isActive() || !canBePainted(rect))
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    if (m_style.background.isValid() && m_style.background.alpha() > 0)
        painter.fillRect(rect, m_style.background);
    if (encoded()->isValid())
        paintLineAndSymbol(painter, *encoded(), m_style, rect, fitOf(mode), edges);
    painter.restore();
}

const std::shared_ptr<const EncodedSymbol> &QZint::encoded() const
{
    if (!m_encoded)
        m_encoded = encode(m_settings);
    return m_encoded;
}

void renderOnDots(const QZint &barcode, QPainter &painter, const QRectF &rect, QZint::AspectRatioMode mode)
{
    barcode.paint(painter, rect, mode, Edges::OnDots);
}

ModuleDots moduleDots(
    const QZint &barcode, const QRectF &rect, QZint::AspectRatioMode mode, const QTransform &toDots)
{
    const EncodedSymbol &symbol = *barcode.encoded();
    if (!canBePainted(rect) || !symbol.isValid() || symbol.geometry.isEmpty())
        return {};
    const TextLine line(symbol, barcode.m_style, rect);
    const DotPlacement placement = placementOnDots(symbol, line, fitOf(mode), toDots);
    return { symbol.geometry.size, placement.dots, hasSquareModules(symbol), placement.sharp,
        placement.place };
}

std::shared_ptr<const SymbolGeometry> geometryOf(const QZint &barcode)
{
    const auto &symbol = barcode.encoded();
    return { symbol, &symbol->geometry };
}

} // namespace Zint
