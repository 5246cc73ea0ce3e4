// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/record.h"
#include "items/graphics/symbolitem.h"

#include <QDataStream>
#include <QScopedValueRollback>

namespace {

/// The version since which a record holds the original drawing and the fill.
constexpr unsigned int originalSinceVersion = 4;

} // namespace

void SymbolItem::saveItemToData(QDataStream &stream)
{
    Record::write(stream, m_singleColor, m_fillBoundingRectangle);
    stream << (m_original.isEmpty() ? QByteArray() : m_original); // none, rather than an empty one
    Record::write(stream, getOldTransformCoefficientM31(), getOldTransformCoefficientM32());
    ColoredItem::saveItemToData(stream);
    Record::write(stream, m_fillColor);
    // Readers expect one colour less than there is, so a symbol of two colours has its fill twice.
    if (!m_singleColor)
        Record::write(stream, m_fillColor);
}

void SymbolItem::loadItemFromData(QDataStream &stream, unsigned int version)
{
    const bool hasOriginal = version >= originalSinceVersion;
    if (hasOriginal)
        Record::read(stream, std::tie(m_singleColor, m_fillBoundingRectangle));
    QByteArray drawing;
    stream >> drawing;
    double m31;
    double m32;
    Record::read(stream, std::tie(m31, m32));
    setOldTransformCoefficientM31(m31);
    setOldTransformCoefficientM32(m32);
    ColoredItem::loadItemFromData(stream, version);
    if (hasOriginal && !m_singleColor)
        Record::read(stream, std::tie(m_fillColor));

    if (hasOriginal) {
        m_original = drawing;
        m_contents = m_original;
        replacePenFillColors(m_contents, getItemPenColor(), m_fillColor);
    } else {
        m_contents = drawing;
        restorePenFillColorsAndOpaque(getItemPenColor(), m_fillColor, isFilled());
        replacePenFillColors(getItemPenColor(), m_fillColor, true);
    }
    showLoaded();
}

void SymbolItem::loadItemFromJSON(const QVariantMap &map, unsigned int version)
{
    {
        const QScopedValueRollback<bool> loading(m_loadingMap, true);
        Item::loadItemFromJSON(map, version);
    }
    m_contents = m_original;
    replacePenFillColors(m_contents, getItemPenColor(), m_fillColor);
    showLoaded();
}

void SymbolItem::showLoaded()
{
    m_shownWithFill = isFilled();
    const QSizeF size = getItemSize();
    if (!m_drawing.replace(m_contents) && !m_contents.isEmpty()) {
        showEmpty();
        storeItemSize(size);
    }
    update();
}
