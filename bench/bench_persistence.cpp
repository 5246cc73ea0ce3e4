// SPDX-License-Identifier: BSD-3-Clause
#include "bench/pair.h"
#include "bench/records.h"
#include "bench/support.h"
#include "items/shapes/rectangleitem.h"

#include <QBuffer>
#include <QDataStream>
#include <QMetaProperty>

#include <benchmark/benchmark.h>

#include <array>

// Records and property maps beside the obvious code: Qt's stream operators field by field, and a walk over
// the meta-object.

namespace {

constexpr int count = 10'000;

void decorate(RectangleItem &item)
{
    item.setItemId(7);
    item.setItemSize(QSizeF(123.5, 45.25));
    item.setItemRotation(30);
    item.setPos(11, 22);
    item.setItemPenColor(Qt::red);
    item.setItemFillColor(Qt::yellow);
    item.setDatasourceId(3);
    item.setDatasourceField(QStringLiteral("Name"));
}

void loadByOperators(QDataStream &stream, RectangleItem &item)
{
    qint16 id, penWidth, brushStyle;
    qint32 flags, graphicsFlags, datasourceId, penStyle, cap, join;
    bool horizontal, vertical, overprint, visible;
    double z, rotation, width, height, scaleX, scaleY, x, y;
    std::array<double, 9> m;
    QString field;
    QColor pen, fill;
    stream >> id >> flags >> horizontal >> vertical >> overprint >> z >> graphicsFlags >> visible >> rotation
        >> width >> height >> scaleX >> scaleY;
    for (double &value : m)
        stream >> value;
    stream >> x >> y >> datasourceId >> field >> pen >> penWidth >> penStyle >> cap >> join >> brushStyle
        >> fill;
    item.setItemId(id);
    item.setItemFlags(unsigned(flags));
    item.setItemHorizontalMirror(horizontal);
    item.setItemVerticalMirror(vertical);
    item.setAllowOverprint(overprint);
    item.setZValue(z);
    item.setFlags(QGraphicsItem::GraphicsItemFlags::fromInt(graphicsFlags));
    item.setVisible(visible);
    item.copyPrivatePropeties(rotation, QSizeF(width, height), scaleX, scaleY, true, datasourceId, field);
    item.setTransform(QTransform(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8]));
    item.setPos(x, y);
    item.setItemPenColor(pen);
    item.setItemPenWidth(ushort(penWidth));
    item.setItemPenStyle(Qt::PenStyle(penStyle));
    item.setItemPenCapStyle(Qt::PenCapStyle(cap));
    item.setItemPenJoinStyle(Qt::PenJoinStyle(join));
    item.updateItemPen();
    item.setItemBrushStyle(MobraTypes::BrushStyle(brushStyle));
    item.setItemFillColor(fill);
}

template <typename Save> QByteArray recordsOf(RectangleItem &item, Save &&save)
{
    QByteArray bytes;
    bytes.reserve(count * 256);
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    for (int i = 0; i < count; ++i)
        save(stream, item);
    return bytes;
}

const auto saveOthers
    = [](QDataStream &stream, const RectangleItem &item) { Records::saveByOperators(stream, item); };
const auto saveOurs = [](QDataStream &stream, RectangleItem &item) { item.saveItemToData(stream); };

void saveRecords(benchmark::State &state)
{
    RectangleItem item;
    decorate(item);
    if (recordsOf(item, saveOurs) != recordsOf(item, saveOthers)) {
        state.SkipWithError("the records differ");
        return;
    }
    Pair::compare(
        state, 0.35, count, [&] { recordsOf(item, saveOurs); }, [&] { recordsOf(item, saveOthers); });
}

template <typename Load> void loadAll(const QByteArray &bytes, RectangleItem &item, Load &&load)
{
    QDataStream stream(bytes);
    while (!stream.atEnd())
        load(stream, item);
}

void loadRecords(benchmark::State &state)
{
    RectangleItem item;
    decorate(item);
    const QByteArray bytes = recordsOf(item, saveOurs);
    RectangleItem ours;
    RectangleItem other;
    const auto loadOurs = [](QDataStream &stream, RectangleItem &to) { to.loadItemFromData(stream, 6); };
    loadAll(bytes, ours, loadOurs);
    loadAll(bytes, other, loadByOperators);
    if (recordsOf(ours, saveOurs) != bytes || recordsOf(other, saveOurs) != bytes) {
        state.SkipWithError("the loaded items differ");
        return;
    }
    Pair::compare(
        state, 0.45, count, [&] { loadAll(bytes, ours, loadOurs); },
        [&] { loadAll(bytes, other, loadByOperators); });
}

/// The property map by a walk over the meta-object.
QVariantMap mapByWalk(const QObject &object, const QStringList &ignored)
{
    QVariantMap map;
    const QMetaObject *type = object.metaObject();
    for (int i = 0; i < type->propertyCount(); ++i) {
        const QMetaProperty property = type->property(i);
        const QString name = QString::fromLatin1(property.name());
        if (!ignored.contains(name) && property.isReadable())
            map.insert(name, property.read(&object));
    }
    return map;
}

void applyBySetProperty(const QVariantMap &map, QObject &object)
{
    for (auto it = map.cbegin(); it != map.cend(); ++it)
        object.setProperty(it.key().toLatin1(), it.value());
}

template <typename Work> void repeat(Work &&work)
{
    for (int i = 0; i < count; ++i)
        work();
}

void saveMaps(benchmark::State &state)
{
    RectangleItem item;
    decorate(item);
    if (item.saveItemToJSON() != mapByWalk(item, Item::ignoredPropertyNames())) {
        state.SkipWithError("the maps differ");
        return;
    }
    Pair::compare(
        state, 0.65, count, [&] { repeat([&] { benchmark::DoNotOptimize(item.saveItemToJSON()); }); },
        [&] { repeat([&] { benchmark::DoNotOptimize(mapByWalk(item, Item::ignoredPropertyNames())); }); });
}

void loadMaps(benchmark::State &state)
{
    RectangleItem item;
    decorate(item);
    const QVariantMap map = item.saveItemToJSON();
    RectangleItem ours;
    RectangleItem other;
    const auto loadOurs = [&] { ours.loadItemFromJSON(map, 6); };
    const auto loadOther = [&] {
        applyBySetProperty(map, other);
        other.updateItemPositionAfterLoading();
        other.updateItemSize(other.getItemSize());
    };
    loadOurs();
    loadOther();
    if (ours.saveItemToJSON() != map || other.saveItemToJSON() != map) {
        state.SkipWithError("the loaded items differ");
        return;
    }
    Pair::compare(
        state, 0.60, count, [&] { repeat(loadOurs); }, [&] { repeat(loadOther); });
}

BENCHMARK(saveRecords)->Iterations(31);
BENCHMARK(loadRecords)->Iterations(31);
BENCHMARK(saveMaps)->Iterations(15);
BENCHMARK(loadMaps)->Iterations(15);

} // namespace

VX_BENCHMARK_MAIN
