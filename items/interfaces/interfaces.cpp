// SPDX-License-Identifier: BSD-3-Clause
#include "items/interfaces/fillcoloritem.h"
#include "items/interfaces/ibarcodeitem.h"
#include "items/interfaces/ibasicitem.h"
#include "items/interfaces/ibrushitem.h"
#include "items/interfaces/icoloritem.h"
#include "items/interfaces/idatasourceitem.h"
#include "items/interfaces/ifontitem.h"
#include "items/interfaces/igraphicitem.h"
#include "items/interfaces/ilineitem.h"
#include "items/interfaces/ipieitem.h"
#include "items/interfaces/irichtextitem.h"
#include "items/interfaces/iroundrectitem.h"
#include "items/interfaces/itemplatelockitem.h"
#include "items/interfaces/itextalignitem.h"
#include "items/interfaces/itextgenericitem.h"
#include "items/interfaces/itextlabelitem.h"
#include "items/interfaces/penitem.h"
#include "items/interfaces/textcoloritem.h"

// The destructors are the key functions of the interfaces: defined here, in the library, each interface has
// one type information object, without which a host's dynamic_cast to it fails.
FillColorItem::~FillColorItem() = default;
IBarcodeItem::~IBarcodeItem() = default;
IBasicItem::~IBasicItem() = default;
IBrushItem::~IBrushItem() = default;
IColorItem::~IColorItem() = default;
IDatasourceItem::~IDatasourceItem() = default;
IFontItem::~IFontItem() = default;
IGraphicItem::~IGraphicItem() = default;
ILineItem::~ILineItem() = default;
IPieItem::~IPieItem() = default;
IRichTextItem::~IRichTextItem() = default;
IRoundRectItem::~IRoundRectItem() = default;
ITemplateLockItem::~ITemplateLockItem() = default;
ITextAlignItem::~ITextAlignItem() = default;
ITextGenericItem::~ITextGenericItem() = default;
ITextLabelItem::~ITextLabelItem() = default;
PenItem::~PenItem() = default;
TextColorItem::~TextColorItem() = default;

namespace {

/// Whether an enumeration whose largest enumerator is mask can hold the value.
bool canHold(int mask, int value)
{
    return value >= 0 && value <= mask;
}

} // namespace

void PenItem::applyPenStyle(int style)
{
    if (canHold(Qt::MPenStyle, style))
        setItemPenStyle(static_cast<Qt::PenStyle>(style));
    else if (m_penStyle != Qt::CustomDashLine)
        m_penStyle = style;
}

void PenItem::applyPenCapStyle(int style)
{
    // What is neither flat nor round is flat anyway.
    setItemPenCapStyle(canHold(Qt::MPenCapStyle, style) ? static_cast<Qt::PenCapStyle>(style) : Qt::FlatCap);
}

void PenItem::applyPenJoinStyle(int style)
{
    if (canHold(Qt::MPenJoinStyle, style))
        setItemPenJoinStyle(static_cast<Qt::PenJoinStyle>(style));
    else if (m_penJoinStyle != Qt::MPenJoinStyle)
        m_penJoinStyle = style;
}

QString FillColorItem::getItemFillColorString() const
{
    return m_fillColor.name();
}

void FillColorItem::setItemFillColorString(const QString &color)
{
    setItemFillColor(QColor::fromString(color));
}

void TextColorItem::setItemTextColor(const QColor &color)
{
    m_textColor = color;
}

uint ITextAlignItem::getItemAlignmentInt() const
{
    return static_cast<uint>(getItemAlignment().toInt());
}
