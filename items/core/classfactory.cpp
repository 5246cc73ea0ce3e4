// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/classfactory.h"

#include "items/barcode/barcodeitem.h"
#include "items/containers/groupitem.h"
#include "items/containers/layeritem.h"
#include "items/graphics/pixmapitem.h"
#include "items/graphics/svgitem.h"
#include "items/graphics/symbolitem.h"
#include "items/shapes/diamonditem.h"
#include "items/shapes/ellipseitem.h"
#include "items/shapes/equilateraltriangleitem.h"
#include "items/shapes/hexagonitem.h"
#include "items/shapes/lineitem.h"
#include "items/shapes/octagonitem.h"
#include "items/shapes/pentagonitem.h"
#include "items/shapes/pieitem.h"
#include "items/shapes/rectangleitem.h"
#include "items/shapes/righttriangleitem.h"
#include "items/shapes/roundedrectangleitem.h"
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"

namespace {

struct Registration
{
    MobraTypes::ShapeType type;
    Item *(*creator)();
};

template <typename T> Item *make()
{
    return new T;
}

constexpr Registration registrations[] = {
    { MobraTypes::LineShape, &make<LineItem> },
    { MobraTypes::RectangleShape, &make<RectangleItem> },
    { MobraTypes::RoundedRectangleShape, &make<RoundedRectangleItem> },
    { MobraTypes::EllipseShape, &make<EllipseItem> },
    { MobraTypes::PieShape, &make<PieItem> },
    { MobraTypes::RightTriangleShape, &make<RightTriangleItem> },
    { MobraTypes::EquilateralTriangleShape, &make<EquilateralTriangleItem> },
    { MobraTypes::DiamondShape, &make<DiamondItem> },
    { MobraTypes::PentagonShape, &make<PentagonItem> },
    { MobraTypes::HexagonShape, &make<HexagonItem> },
    { MobraTypes::OctagonShape, &make<OctagonItem> },
    { MobraTypes::LabelTextShape, &make<SimpleTextItem> },
    { MobraTypes::RichTextShape, &make<RichTextItem> },
    { MobraTypes::SvgShape, &make<SvgItem> },
    { MobraTypes::PixmapShape, &make<PixMapItem> },
    { MobraTypes::SymbolShape, &make<SymbolItem> },
    { MobraTypes::BarcodeShape, &make<BarcodeItem> },
    { MobraTypes::GroupShape, &make<GroupItem> },
    { MobraTypes::LayerShape, &make<LayerItem> },
};

} // namespace

ClassFactory::ClassFactory()
{
    registerShapes();
}

void ClassFactory::registerShapes()
{
    for (const auto &[type, creator] : registrations)
        m_creators.insert(qint32(type), creator);
}

Item *ClassFactory::create(MobraTypes::ShapeType type) const
{
    const Creator creator = m_creators.value(qint32(type), nullptr);
    return creator ? creator() : nullptr;
}
