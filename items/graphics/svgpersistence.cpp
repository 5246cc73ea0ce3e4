// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/record.h"
#include "items/graphics/svgitem.h"

Item *SvgItem::createItemCopy()
{
    auto copy = copyAs<SvgItem>();
    copy->takeState(m_contents, getOldTransformCoefficientM31(), getOldTransformCoefficientM32(),
        getFirstResizeAfterAddedToGroup(), getImageIsInvalid(), getImageHasTransparency());
    if (!m_drawing.holds(m_contents))
        copy->showLoaded();
    else if (!m_contents.isEmpty())
        copy->m_drawing.loadWhenSeen(m_contents, boundingRect());
    return copy.release();
}

void SvgItem::copyPrivatePropeties(
    const QByteArray &contents, double m31, double m32, bool firstResize, bool invalid, bool transparency)
{
    takeState(contents, m31, m32, firstResize, invalid, transparency);
    showLoaded();
}

void SvgItem::takeState(
    const QByteArray &contents, double m31, double m32, bool firstResize, bool invalid, bool transparency)
{
    m_contents = contents;
    setOldTransformCoefficientM31(m31);
    setOldTransformCoefficientM32(m32);
    setFirstResizeAfterAddedToGroup(firstResize);
    setImageIsInvalid(invalid);
    setImageHasTransparency(transparency);
}

/// Shows contents that were accepted once, in the geometry that the item has; without contents, nothing. What
/// is refused now stays in the contents, invalid, so that nothing is lost.
void SvgItem::showLoaded()
{
    if (!m_drawing.load(m_contents) && !m_contents.isEmpty()) {
        setImageIsInvalid(true);
        setImageHasTransparency(true);
    }
}

void SvgItem::saveItemToData(QDataStream &stream)
{
    Record::write(stream, getOldTransformCoefficientM31(), getOldTransformCoefficientM32());
    stream << (m_contents.isEmpty() ? QByteArray() : m_contents); // one form for no drawing
    Record::write(stream, getImageIsInvalid(), getImageHasTransparency());
    Item::saveItemToData(stream);
}

void SvgItem::loadItemFromData(QDataStream &stream, unsigned int version)
{
    double m31;
    double m32;
    Record::read(stream, std::tie(m31, m32));
    QByteArray contents;
    stream >> contents;
    bool invalid;
    bool transparency;
    Record::read(stream, std::tie(invalid, transparency));
    copyPrivatePropeties(contents, m31, m32, getFirstResizeAfterAddedToGroup(), invalid, transparency);
    Item::loadItemFromData(stream, version);
    prepareGeometryChange();
}

void SvgItem::loadItemFromJSON(const QVariantMap &map, unsigned int version)
{
    Item::loadItemFromJSON(map, version);
    showLoaded();
    prepareGeometryChange();
}
