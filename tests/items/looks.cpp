// SPDX-License-Identifier: BSD-3-Clause
#include "tests/items/looks.h"

#include "items/shapes/lineitem.h"
#include "items/shapes/pieitem.h"
#include "items/shapes/roundedrectangleitem.h"

#include <utility>

namespace {

constexpr int gradientTolerance = 2;

const QColor orange(0xF0, 0x90, 0x20);
const QColor blue(0x20, 0x40, 0xC0);

FillableItem &filled(Item &item)
{
    return dynamic_cast<FillableItem &>(item);
}

void paint(Item &item, int penWidth, int brushStyle, const QColor &fill = orange)
{
    FillableItem &shape = filled(item);
    shape.setItemPenColor(blue);
    shape.setItemPenWidth(static_cast<ushort>(penWidth));
    shape.setItemFillColor(fill);
    shape.setItemBrushStyleInt(brushStyle);
}

/// A look of an item with the given pen and brush, changed further.
std::function<void(Item &)> painted(
    int penWidth, int brushStyle, const std::function<void(Item &)> &change = [](Item &) {})
{
    return [=](Item &item) {
        paint(item, penWidth, brushStyle);
        change(item);
    };
}

void rotate(Item &item)
{
    item.setItemRotation(30.0);
}

void leaveAsMade(Item & /*item*/) { }

Look joined(const QByteArray &name, Qt::PenJoinStyle join)
{
    return { name, painted(12, 1, [join](Item &item) { filled(item).setItemPenJoinStyle(join); }) };
}

QList<Look> joinLooks()
{
    return { joined("join-miter", Qt::MiterJoin), joined("join-bevel", Qt::BevelJoin),
        joined("join-round", Qt::RoundJoin) };
}

QList<Look> gradientLooks()
{
    const QByteArrayList mirrors { "", "-mirrored-horizontally", "-mirrored-vertically", "-mirrored-both" };
    QList<Look> looks;
    int style = MobraTypes::BrushLinearGradient;
    for (const QByteArray &name : { QByteArray("linear"), QByteArray("radial"), QByteArray("conical") }) {
        for (int mirrored = 0; mirrored < mirrors.size(); ++mirrored) {
            const auto mirror = [mirrored](Item &item) {
                item.setItemHorizontalMirror(mirrored & 1);
                item.setItemVerticalMirror(mirrored & 2);
            };
            looks << Look { name + mirrors[mirrored], painted(2, style, mirror), Look::Alone,
                gradientTolerance };
        }
        ++style;
    }
    return looks;
}

/// What every filled shape is drawn in.
QList<Look> shapeLooks()
{
    const QColor translucent(0xF0, 0x90, 0x20, 0x60);
    const QList<Look> plain {
        { "new", leaveAsMade },
        { "solid", painted(3, 1) },
        { "translucent", [=](Item &item) { paint(item, 3, 1, translucent); } },
        { "without-pen", painted(0, 1) },
        { "without-brush", painted(6, 0) },
        { "pen-limited", painted(72, 1) },
        { "rotated", painted(3, 1, rotate) },
        { "selected-new", leaveAsMade, Look::Selected },
        { "selected", painted(3, 1), Look::Selected },
        { "rotated-selected", painted(3, 11, rotate), Look::Selected },
        { "selected-in-group", painted(3, 1), Look::SelectedInGroup },
    };
    return plain + joinLooks() + gradientLooks();
}

QList<Look> dashLooks()
{
    const std::pair<QByteArray, Qt::PenStyle> pens[] = { { "dash", Qt::DashLine }, { "dot", Qt::DotLine },
        { "dash-dot", Qt::DashDotLine }, { "dash-dot-dot", Qt::DashDotDotLine } };
    const std::pair<QByteArray, Qt::PenCapStyle> caps[]
        = { { "flat", Qt::FlatCap }, { "round", Qt::RoundCap } };
    QList<Look> looks;
    for (const auto &[penName, style] : pens) {
        for (const auto &[capName, cap] : caps) {
            const auto dash = [style = style, cap = cap](Item &item) {
                filled(item).setItemPenCapStyle(cap);
                filled(item).setItemPenStyle(style);
            };
            looks << Look { "pen-" + penName + '-' + capName, painted(4, 1, dash) };
        }
    }
    return looks;
}

QList<Look> patternLooks()
{
    const QByteArrayList names { "dense1", "dense2", "dense3", "dense4", "dense5", "dense6", "dense7",
        "horizontal", "vertical", "cross", "backward-diagonal", "forward-diagonal", "diagonal-cross" };
    QList<Look> looks;
    int style = MobraTypes::BrushDense1;
    for (const QByteArray &name : names)
        looks << Look { "brush-" + name, painted(2, style++) };
    return looks;
}

Look rounded(const QByteArray &name, double x, double y)
{
    return { name, painted(3, 1, [x, y](Item &item) {
                auto &rectangle = dynamic_cast<RoundedRectangleItem &>(item);
                rectangle.setRoundingRadiusX(x);
                rectangle.setRoundingRadiusY(y);
            }) };
}

QList<Look> roundedCornerLooks()
{
    return { rounded("square", 0.0, 0.0), rounded("slightly", 6.0, 6.0), rounded("elliptic", 24.0, 8.0),
        rounded("more-than-the-sides", 500.0, 500.0), rounded("negative", -10.0, 10.0) };
}

QList<Look> wedgeLooks()
{
    const auto wedge = [](int start, int span, bool circle, Look::Place place = Look::Alone) {
        const QByteArray name = (circle ? "circle-" : "wedge-") + QByteArray::number(start / 16) + '-'
            + QByteArray::number(span / 16) + (place == Look::Alone ? "" : "-selected");
        const auto change = painted(3, 1, [=](Item &item) {
            auto &pie = dynamic_cast<PieItem &>(item);
            pie.setStartPieAngle(start);
            pie.setSpanPieAngle(span);
            pie.setDrawCircle(circle);
        });
        return Look { name, change, place };
    };
    return { wedge(0, 90 * 16, false), wedge(0, 90 * 16, true), wedge(45 * 16, -120 * 16, true),
        wedge(30 * 16, 360 * 16, false), wedge(0, 0, true), wedge(720 * 16, 45 * 16, false),
        wedge(0, 90 * 16, true, Look::Selected) };
}

LineItem &lineOf(Item &item)
{
    return dynamic_cast<LineItem &>(item);
}

std::function<void(Item &)> drawn(
    int penWidth, int arrows, const std::function<void(LineItem &)> &change = [](LineItem &) {})
{
    return [=](Item &item) {
        LineItem &line = lineOf(item);
        line.setItemPenColor(blue);
        line.setItemPenWidth(static_cast<ushort>(penWidth));
        line.setItemArrows(static_cast<ushort>(arrows));
        change(line);
    };
}

QList<Look> arrowLooks()
{
    QList<Look> looks;
    for (const int left : { 0x00, 0x10, 0x30, 0x50, 0x80 }) {
        for (const int right : { 0x00, 0x01, 0x03, 0x05, 0x08 }) {
            const int arrows = left | right;
            looks << Look { "arrows-" + QByteArray::number(arrows, 16).rightJustified(2, '0'),
                drawn(3, arrows) };
        }
    }
    return looks;
}

QList<Look> lineLooks()
{
    constexpr int heads = 0x31;
    const auto joined = [](Qt::PenJoinStyle join) {
        return drawn(5, 0x13, [join](LineItem &line) { line.setItemPenJoinStyle(join); });
    };
    const auto dashed = [](Qt::PenStyle style, Qt::PenCapStyle cap) {
        return drawn(3, 0x58, [=](LineItem &line) {
            line.setItemPenCapStyle(cap);
            line.setItemPenStyle(style);
        });
    };
    const auto mirrored = [](LineItem &line) { line.setItemHorizontalMirror(true); };
    const auto flipped = [](LineItem &line) { line.setItemVerticalMirror(true); };
    const auto shortened = [](LineItem &line) { line.setItemLength(8.0); };
    const QList<Look> special {
        { "new", leaveAsMade },
        { "selected-new", leaveAsMade, Look::Selected },
        { "selected", drawn(3, heads), Look::Selected },
        { "selected-in-group", drawn(3, heads), Look::SelectedInGroup },
        { "rotated", drawn(3, heads, rotate) },
        { "rotated-selected", drawn(3, heads, rotate), Look::Selected },
        { "mirrored-horizontally", drawn(3, heads, mirrored) },
        { "mirrored-vertically", drawn(3, heads, flipped) },
        { "short", drawn(2, 0x55, shortened) },
        { "short-selected", drawn(2, 0x55, shortened), Look::Selected },
        { "join-miter", joined(Qt::MiterJoin) },
        { "join-bevel", joined(Qt::BevelJoin) },
        { "join-round", joined(Qt::RoundJoin) },
        { "dash-flat", dashed(Qt::DashLine, Qt::FlatCap) },
        { "dot-round", dashed(Qt::DotLine, Qt::RoundCap) },
    };
    return special + arrowLooks();
}

} // namespace

const QList<Subject> &subjectsWithLooks()
{
    static const QList<Subject> subjects {
        { "rectangle", MobraTypes::RectangleShape, shapeLooks() + dashLooks() + patternLooks() },
        { "rounded-rectangle", MobraTypes::RoundedRectangleShape, shapeLooks() + roundedCornerLooks() },
        { "ellipse", MobraTypes::EllipseShape, shapeLooks() },
        { "pie", MobraTypes::PieShape, shapeLooks() + wedgeLooks() },
        { "right-triangle", MobraTypes::RightTriangleShape, shapeLooks() },
        { "equilateral-triangle", MobraTypes::EquilateralTriangleShape, shapeLooks() },
        { "diamond", MobraTypes::DiamondShape, shapeLooks() },
        { "pentagon", MobraTypes::PentagonShape, shapeLooks() },
        { "hexagon", MobraTypes::HexagonShape, shapeLooks() },
        { "octagon", MobraTypes::OctagonShape, shapeLooks() },
        { "line", MobraTypes::LineShape, lineLooks() },
        { "label-text", MobraTypes::LabelTextShape, labelTextLooks() },
        { "rich-text", MobraTypes::RichTextShape, richTextLooks() },
        { "barcode", MobraTypes::BarcodeShape, barcodeLooks() },
        { "svg", MobraTypes::SvgShape, svgLooks() },
        { "pixmap", MobraTypes::PixmapShape, pictureLooks() },
        { "symbol", MobraTypes::SymbolShape, symbolLooks() },
    };
    return subjects;
}
