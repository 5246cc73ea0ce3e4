// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// The enumerations that every item shares. They are unscoped with a fixed type, because they back integer
/// properties, stream values and bit masks.
namespace MobraTypes {

/// The type code of an item class: Qt's user item type plus a small number, so that it also fits
/// QGraphicsItem::type(). Codes between the listed ones have no class.
enum ShapeType : unsigned int {
    GroupShape = 0x10001,
    LayerShape = 0x10002,
    SvgShape = 0x1000B,
    PixmapShape = 0x1000C,
    SymbolShape = 0x1000D,
    LabelTextShape = 0x10015,
    RichTextShape = 0x10016,
    BarcodeShape = 0x1001D,
    LineShape = 0x1001F,
    RectangleShape = 0x1002A,
    RoundedRectangleShape = 0x1002B,
    EllipseShape = 0x1002C,
    PieShape = 0x1002E,
    RightTriangleShape = 0x10033,
    EquilateralTriangleShape = 0x10034,
    DiamondShape = 0x10035,
    PentagonShape = 0x10036,
    HexagonShape = 0x10037,
    OctagonShape = 0x10038,
    PolygonShape = 0x10065 ///< what type() of the six polygons answers; no class of its own
};

/// Bits of an item's own flag word (Item::itemFlags()), unrelated to QGraphicsItem's flags.
enum Flags : unsigned int {
    FlagVisibleInPrint = 0x01, ///< something of the item prints in the ink it was reduced to
    FlagImagePrint = 0x02, ///< the item prints through its prepared image
    FlagUserTemplate = 0x08,
    FlagSupplyTemplate = 0x10,
    FlagReadOnly = 0x20,
    FlagMultiLock = 0x40,
    FlagGradient = 0x80, ///< the fill brush is a gradient

    MaskNonModifiable = FlagUserTemplate | FlagSupplyTemplate | FlagReadOnly
};

/// The fill style: 0 to 14 are the numbers of Qt::BrushStyle, 15 to 17 the gradients that items build
/// themselves.
enum BrushStyle : int {
    BrushNoChange = -1, ///< a setter that receives it does nothing
    BrushNone = 0,
    BrushSolid = 1,
    BrushDense1 = 2,
    BrushDense2 = 3,
    BrushDense3 = 4,
    BrushDense4 = 5,
    BrushDense5 = 6,
    BrushDense6 = 7,
    BrushDense7 = 8,
    BrushHorizontal = 9,
    BrushVertical = 10,
    BrushCross = 11,
    BrushBackwardDiagonal = 12,
    BrushForwardDiagonal = 13,
    BrushDiagonalCross = 14,
    BrushLinearGradient = 15,
    BrushRadialGradient = 16,
    BrushConicalGradient = 17
};

/// The style of both line ends: the left end in bits 4 to 7, the right end in bits 0 to 3.
enum ArrowStyle : unsigned short {
    ArrowNone = 0x00,
    RightArrowOpen = 0x01,
    RightArrowFilled = 0x03,
    RightArrowChevron = 0x05,
    RightArrowBar = 0x08,
    LeftArrowOpen = 0x10,
    LeftArrowFilled = 0x30,
    LeftArrowChevron = 0x50,
    LeftArrowBar = 0x80
};

} // namespace MobraTypes
