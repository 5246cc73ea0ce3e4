// SPDX-License-Identifier: BSD-3-Clause
#include "label/itemmap.h"

#include "items/barcode/barcodeitem.h"
#include "items/containers/groupitem.h"
#include "items/containers/layeritem.h"
#include "items/core/classfactory.h"
#include "items/core/item.h"
#include "items/graphics/pixmapitem.h"
#include "items/graphics/svgitem.h"
#include "items/graphics/symbolitem.h"
#include "items/interfaces/fillcoloritem.h"
#include "items/interfaces/icoloritem.h"
#include "items/interfaces/textcoloritem.h"
#include "items/shapes/lineitem.h"
#include "items/shapes/polygonitem.h"
#include "items/text/simpletextitem.h"
#include "label/documentrules.h"
#include "label/itemrecord.h"
#include "label/itemtree.h"
#include "label/itemvalue.h"
#include "label/jsonmembers.h"
#include "label/jsonpointer.h"
#include "label/labellimits.h"
#include "label/problemlog.h"
#include "label/wording.h"

#include <QGraphicsItem>
#include <QHash>
#include <QJsonArray>
#include <QMap>
#include <QMetaProperty>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Host keys: what a map lacks.
const QString visibleKey = u"visible"_s;
const QString datasourceIdKey = u"datasourceId"_s;
const QString datasourceFieldKey = u"datasourceField"_s;
/// The field's key in the classes that publish their binding themselves.
const QString ownFieldKey = u"itemDatasourceField"_s;
const QString shapeKey = u"itemShape"_s;
const QString widthKey = u"itemWidth"_s;
const QString heightKey = u"itemHeight"_s;
const QString scaleXKey = u"itemScaleX"_s;
const QString scaleYKey = u"itemScaleY"_s;
const QString countKey = u"childrenCount"_s;
// Host keys of a layer, whose map holds nothing of its own.
const QString idKey = u"itemId"_s;
const QString zKey = u"itemZValue"_s;
const QString nameKey = u"name"_s;

constexpr int unbound = -1;

const QMetaObject &classOf(const QObject *object)
{
    return object ? *object->metaObject() : QObject::staticMetaObject;
}

const QMetaObject &classOf(const Item &item)
{
    return classOf(dynamic_cast<const QObject *>(&item));
}

bool publishesBinding(Item &item)
{
    return classOf(item).indexOfProperty(ownFieldKey.toLatin1().constData()) >= 0;
}

/// The keys of an item and the types of their values.
QMap<QString, QMetaType> typesOfKeys(Item &item)
{
    QMap<QString, QMetaType> types { { visibleKey, QMetaType::fromType<bool>() } };
    if (!publishesBinding(item)) {
        types.insert(datasourceIdKey, QMetaType::fromType<int>());
        types.insert(datasourceFieldKey, QMetaType::fromType<QString>());
    }
    const QMetaObject &meta = classOf(item);
    for (int i = 0; i < meta.propertyCount(); ++i) {
        const QString name = QString::fromLatin1(meta.property(i).name());
        if (!Item::ignoredPropertyNames().contains(name))
            types.insert(name, meta.property(i).metaType());
    }
    if (item.getItemShape() == MobraTypes::LayerShape) {
        types.remove(datasourceIdKey);
        types.remove(datasourceFieldKey);
        types.insert(idKey, QMetaType::fromType<short>());
        types.insert(zKey, QMetaType::fromType<double>());
        types.insert(nameKey, QMetaType::fromType<QString>());
    }
    return types;
}

void replaceColor(QJsonObject &json, const QString &key, const QColor &color)
{
    const auto found = json.find(key);
    if (found != json.end())
        *found = Wording::color(color);
}

void addColors(Item &item, QJsonObject &json)
{
    if (const auto *colored = dynamic_cast<IColorItem *>(&item))
        replaceColor(json, u"itemPenColor"_s, colored->getItemPenColor());
    if (const auto *filled = dynamic_cast<FillColorItem *>(&item))
        replaceColor(json, u"itemFillColor"_s, filled->getItemFillColor());
    if (const auto *text = dynamic_cast<TextColorItem *>(&item))
        replaceColor(json, u"itemTextColor"_s, text->getItemTextColor());
}

/// An empty field gets no key: it would come back as a text, and the record tells that from no field.
void addBinding(Item &item, QJsonObject &json)
{
    if (json.value(ownFieldKey).toString().isEmpty())
        json.remove(ownFieldKey);
    if (publishesBinding(item))
        return;
    if (item.getDatasourceId() != unbound)
        json.insert(datasourceIdKey, item.getDatasourceId());
    if (!item.getDatasourceField().isEmpty())
        json.insert(datasourceFieldKey, item.getDatasourceField());
}

/// A stretched label text tells no font size, though it has one that no other key gives exactly.
void addFontSize(Item &item, QJsonObject &json)
{
    if (const auto *text = dynamic_cast<SimpleTextItem *>(&item))
        json.insert(u"itemFontSize"_s, text->getItemPositiveFontSize());
}

void addLayer(Item &item, QJsonObject &json)
{
    const auto *layer = dynamic_cast<LayerItem *>(&item);
    if (!layer)
        return;
    json.insert(idKey, layer->itemId());
    json.insert(zKey, layer->getItemZValue());
    if (!layer->objectName().isEmpty())
        json.insert(nameKey, layer->objectName());
}

void addMembers(Item &item, QJsonObject &json)
{
    if (!ItemTree::isContainer(item))
        return;
    QJsonArray children;
    for (Item *member : ItemTree::membersOf(item))
        children.append(ItemMap::toJson(*member));
    json.insert(countKey, children.size());
    json.insert(ItemMap::childrenKey, children);
}

/// What no form of a document holds of a layer.
void checkLayer(LayerItem &layer, const QString &pointer, Problems &problems)
{
    const QString name = layer.objectName();
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    if (name.size() > LabelLimits::MaxLayerNameLength || std::ranges::any_of(name, isControl))
        problems.append({ {}, JsonPointer::member(pointer, nameKey),
            u"%1 is no name of a layer"_s.arg(Wording::quoted(name)),
            u"use at most %1 characters, without control characters"_s.arg(
                LabelLimits::MaxLayerNameLength) });
    const QString problem = ItemValue::numberProblem(layer.getItemZValue(), zKey);
    if (!problem.isEmpty())
        problems.append({ {}, JsonPointer::member(pointer, zKey), problem, {} });
    const bool isInPlace = layer.pos().isNull() && layer.transform().isIdentity() && layer.rotation() == 0.0
        && layer.scale() == 1.0 && layer.transformations().isEmpty();
    if (!isInPlace)
        problems.append({ {}, pointer, u"%1 does not lie where its parent does"_s.arg(Wording::item(layer)),
            u"move the items in it instead"_s });
}

std::unique_ptr<Item> createItem(const QJsonObject &object, const QString &pointer, ProblemLog &log)
{
    const QString where = JsonPointer::member(pointer, shapeKey);
    const QJsonValue json = object.value(shapeKey);
    if (json.isUndefined()) {
        log.add(where, u"is missing"_s, u"add the number of the item's type"_s);
        return {};
    }
    const ItemValue shape = ItemValue::from(json, shapeKey, QMetaType::fromType<uint>());
    if (!shape.problem.isEmpty()) {
        log.add(where, shape.problem, shape.advice);
        return {};
    }
    const auto type = static_cast<MobraTypes::ShapeType>(shape.value.toUInt());
    std::unique_ptr<Item> item(ClassFactory().create(type));
    if (!item)
        log.add(where, u"%1 is no known type of item"_s.arg(type));
    return item;
}

void refuseKey(
    const QString &key, const QMap<QString, QMetaType> &types, const QString &pointer, ProblemLog &log)
{
    if (key == ItemMap::childrenKey)
        log.add(
            JsonPointer::member(pointer, key), u"this item holds no others"_s, u"move them to \"items\""_s);
    else
        JsonMembers::refuse(key, log.isFull() ? QStringList() : types.keys(), pointer, log);
}

/// The object as a property map, with every value checked.
QVariantMap checkedMap(Item &item, const QJsonObject &object, const QString &pointer, ProblemLog &log)
{
    QVariantMap map;
    const QMap<QString, QMetaType> types = typesOfKeys(item);
    for (auto member = object.constBegin(); member != object.constEnd(); ++member) {
        const QString key = member.key();
        if (key == ItemMap::childrenKey && ItemTree::isContainer(item))
            continue;
        const QMetaType type = types.value(key);
        if (!type.isValid()) {
            refuseKey(key, types, pointer, log);
            continue;
        }
        const ItemValue checked = ItemValue::from(member.value(), key, type);
        if (!checked.problem.isEmpty())
            log.add(JsonPointer::member(pointer, key), checked.problem, checked.advice);
        else
            map.insert(key, checked.value);
    }
    return map;
}

/// A polygon's outline has the size that its scales give: a size without them, as people write it, has to
/// give the scales.
void completeScales(const Item &fresh, QVariantMap &map)
{
    const auto complete = [&map](const QString &side, const QString &scale, double freshSide) {
        if (map.contains(side) && !map.contains(scale))
            map.insert(scale, map.value(side).toDouble() / freshSide);
    };
    if (!dynamic_cast<const PolygonItem *>(&fresh))
        return;
    complete(widthKey, scaleXKey, fresh.getItemWidth());
    complete(heightKey, scaleYKey, fresh.getItemHeight());
}

/// The size of an item as people write it: by its sides or by its scales.
QSizeF typedSize(const QVariantMap &map, const QSizeF &natural)
{
    const auto side = [&map](const QString &key, const QString &scale, double naturalSide) {
        return map.value(key, naturalSide * map.value(scale, 1.0).toDouble()).toDouble();
    };
    return QSizeF(side(widthKey, scaleXKey, natural.width()), side(heightKey, scaleYKey, natural.height()));
}

/// Stretches a picture or drawing to its typed size and turns it about its centre.
template <typename T> void placeContent(T &content, const QVariantMap &map)
{
    const QRectF natural = content.boundingRect();
    const QSizeF size = typedSize(map, natural.isEmpty() ? content.getItemSize() : natural.size());
    content.setItemSizeOnUpdate(size);
    content.updateItemPositionAfterLoading();
    const QPointF half(size.width() / 2.0, size.height() / 2.0);
    // Without a content, the one that it will have begins where the item's origin is.
    const QPointF centre = natural.isEmpty()
        ? content.mapToParent(QPointF()) + QTransform().rotate(content.getItemRotation()).map(half)
        : content.mapToParent(natural.center());
    content.setPos(content.pos() + content.pos() + half - centre);
}

/// Stretches a label text to its typed size and turns it about its centre.
void placeLabelText(SimpleTextItem &text, const QVariantMap &map)
{
    const double rotation = text.getItemRotation();
    const bool pinned = text.getItemPinToCenter();
    const signed char limiting = text.getItemSizeLimiting();
    text.setItemPinToCenter(false);
    text.resetTransform();
    text.setItemSize(typedSize(map, text.getItemSize()));
    text.setItemSizeLimiting(limiting);
    text.updateItemPen(); // the frame lies around the text in its new scales
    text.updateItemPositionAfterLoading();
    text.setItemRotation(rotation);
    text.setItemPinToCenter(pinned);
}

/// The setters of a barcode leave out the option of most symbols and a part of some texts, which a record
/// holds.
void restoreBarcode(Item &item, const QVariantMap &map)
{
    auto *barcode = dynamic_cast<BarcodeItem *>(&item);
    if (!barcode)
        return;
    barcode->importBarcodeProperties(barcode->getBarcodeSymbol(),
        map.value(u"barcodeText"_s, barcode->getBarcodeText()).toString(), barcode->getBarcodeTextAbove(),
        static_cast<int>(barcode->getItemAlignmentInt()), barcode->getItemFontSize(),
        barcode->getBarcodeHideText(), barcode->getItemBold(),
        map.value(u"lineWidth"_s, barcode->getBarcodeOption2()).toInt(), barcode->getBarcodeWhiteSpace(),
        barcode->getBarcodeSecurityLevel());
}

/// Keys are applied in alphabetical order: an item without a transform was turned about the centre of the
/// size that it had before its width was known.
void placeWithoutTransform(Item &item, const QVariantMap &map)
{
    if (map.contains(u"itemTransform"_s))
        return;
    if (auto *text = dynamic_cast<SimpleTextItem *>(&item)) {
        placeLabelText(*text, map);
    } else if (auto *picture = dynamic_cast<PixMapItem *>(&item)) {
        placeContent(*picture, map);
    } else if (auto *drawing = dynamic_cast<SvgItem *>(&item)) {
        placeContent(*drawing, map);
    } else if (auto *symbol = dynamic_cast<SymbolItem *>(&item)) {
        placeContent(*symbol, map);
    } else if (auto *group = dynamic_cast<GroupItem *>(&item)) {
        group->Item::updateItemSize(group->childrenBoundingRect().size()); // stores it only
        group->setItemRotation(group->getItemRotation());
    } else if (item.getItemRotation() != 0.0 || item.getItemHorizontalMirror()) {
        item.setItemRotation(item.getItemRotation());
        item.updateItemPositionAfterLoading();
    }
}

/// A line's size is its length and nothing: any other in its map has been lost.
void checkLineSize(const Item &item, const QVariantMap &map, const QString &pointer, ProblemLog &log)
{
    const auto *line = dynamic_cast<const LineItem *>(&item);
    if (!line)
        return;
    const auto isLost = [&map](const QString &key, double kept) {
        return map.contains(key) && map.value(key).toDouble() != kept;
    };
    const double length = line->getItemLength();
    if (isLost(heightKey, 0.0))
        log.add(JsonPointer::member(pointer, heightKey), u"a line has no height"_s,
            u"remove it; the thickness of a line is its \"itemPenWidth\""_s);
    if (isLost(widthKey, length))
        log.add(JsonPointer::member(pointer, widthKey),
            u"is not the length of the line, which is %1"_s.arg(Wording::number(length)),
            u"leave it out and write \"itemLength\""_s);
}

/// Parks the binding as well, as loading a record does: a locked item has it back when it is unlocked.
void parkBinding(Item &item)
{
    const unsigned int flags = item.itemFlags();
    item.setItemAsReadOnly(true);
    item.setItemAsReadOnly(false);
    item.setItemFlags(flags);
}

void applyLayer(Item &item, const QVariantMap &map)
{
    auto *layer = dynamic_cast<LayerItem *>(&item);
    if (!layer)
        return;
    layer->setItemId(map.value(idKey, layer->itemId()).value<short>());
    layer->setItemZValue(map.value(zKey, layer->getItemZValue()).toDouble());
    layer->setObjectName(map.value(nameKey).toString());
}

void applyHostKeys(Item &item, const QVariantMap &map)
{
    if (map.contains(visibleKey))
        item.setItemIsVisible(map.value(visibleKey).toBool());
    if (map.contains(datasourceIdKey))
        item.setDatasourceId(map.value(datasourceIdKey).toInt());
    if (map.contains(datasourceFieldKey))
        item.setDatasourceField(map.value(datasourceFieldKey).toString());
    applyLayer(item, map);
    parkBinding(item);
}

/// The properties of a class that are numbers and written, with their names. They are looked for once: a
/// batch of labels is checked label by label.
const QList<std::pair<QMetaProperty, QString>> &numbersOf(const QMetaObject &type)
{
    static thread_local QHash<const QMetaObject *, QList<std::pair<QMetaProperty, QString>>> known;
    const auto found = known.constFind(&type);
    if (found != known.cend())
        return *found;
    QList<std::pair<QMetaProperty, QString>> numbers;
    for (int i = 0; i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        const QString name = QString::fromLatin1(property.name());
        if (property.typeId() == QMetaType::Double && !Item::ignoredPropertyNames().contains(name))
            numbers.emplace_back(property, name);
    }
    return *known.insert(&type, numbers);
}

} // namespace

QJsonObject ItemMap::toJson(Item &item)
{
    const std::unique_ptr<Item> copy = ItemRecord::plainCopy(item);
    Item &plain = copy ? *copy : item;
    QJsonObject json = QJsonObject::fromVariantMap(plain.saveItemToJSON());
    addColors(plain, json);
    addBinding(plain, json);
    addFontSize(plain, json);
    addLayer(plain, json);
    addMembers(item, json);
    if (!plain.getItemIsVisible())
        json.insert(visibleKey, false);
    return json;
}

bool ItemMap::isContainer(const QJsonObject &object)
{
    return ItemTree::isContainer(static_cast<unsigned int>(object.value(shapeKey).toInt()));
}

std::unique_ptr<Item> ItemMap::fromJson(const QJsonObject &object, unsigned int version,
    const QString &pointer, ProblemLog &log, std::vector<std::unique_ptr<Item>> members)
{
    const qsizetype before = log.count();
    std::unique_ptr<Item> item = createItem(object, pointer, log);
    if (!item)
        return {};
    QVariantMap map = checkedMap(*item, object, pointer, log);
    if (log.count() > before)
        return {};
    completeScales(*item, map);
    // A group is read when it has its members: they join where it begins.
    ItemTree::join(*item, std::move(members));
    item->loadItemFromJSON(map, version);
    restoreBarcode(*item, map);
    placeWithoutTransform(*item, map);
    applyHostKeys(*item, map);
    checkLineSize(*item, map, pointer, log);
    log.add(geometryProblems(*item, pointer));
    return log.count() > before ? nullptr : std::move(item);
}

Problems ItemMap::geometryProblems(Item &item, const QString &pointer)
{
    Problems problems;
    const auto check = [&](double number, const QString &key) {
        const QString problem = ItemValue::numberProblem(number, key);
        if (!problem.isEmpty())
            problems.append({ {}, JsonPointer::member(pointer, key), problem, {} });
    };
    if (item.getItemShape() == MobraTypes::LayerShape)
        checkLayer(dynamic_cast<LayerItem &>(item), pointer, problems);
    const QObject *object = dynamic_cast<QObject *>(&item);
    for (const auto &[property, name] : numbersOf(classOf(object))) {
        const double number = property.read(object).toDouble();
        // A group whose sides are -1 is written with those of its members.
        const bool isOfNewGroup = item.getItemShape() == MobraTypes::GroupShape
            && (name == widthKey || name == heightKey) && number == -1.0;
        if (!isOfNewGroup)
            check(number, name);
    }
    for (const QVariant &entry : item.getItemTransform())
        check(entry.toDouble(), u"itemTransform"_s);
    check(ItemTree::graphicsOf(item).transform().m33(), u"itemTransform"_s);
    return problems;
}

void ItemMap::checkTree(Item &item, const QString &pointer, int level, ProblemLog &log)
{
    log.add(geometryProblems(item, pointer));
    const QList<Item *> members = ItemTree::membersOf(item);
    const QString children = JsonPointer::member(pointer, childrenKey);
    if (members.size() < ItemTree::graphicsOf(item).childItems().size())
        log.add(children, u"%1 holds something that is no item of a document"_s.arg(Wording::item(item)),
            u"take it out"_s);
    if (members.isEmpty() || !DocumentRules::acceptsLevel(level + 1, children, log))
        return;
    for (qsizetype i = 0; i < members.size(); ++i)
        checkTree(*members[i], JsonPointer::element(children, i), level + 1, log);
}
