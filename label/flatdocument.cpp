// SPDX-License-Identifier: BSD-3-Clause
#include "label/flatdocument.h"

#include "items/containers/layeritem.h"
#include "label/itemmap.h"
#include "label/itemtree.h"
#include "label/jsonpointer.h"
#include "label/nearestname.h"
#include "label/wording.h"

#include <QGraphicsItem>
#include <QTransform>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString itemsPointer = u"/items"_s;

/// A copy of a member that lies on the page where the member lies within its containers.
std::unique_ptr<Item> copyOnPage(Item &item)
{
    std::unique_ptr<Item> copy(item.createItemCopy());
    const QGraphicsItem &member = ItemTree::graphicsOf(item);
    if (!member.parentItem())
        return copy;
    const QTransform place = member.sceneTransform();
    QGraphicsItem &graphics = ItemTree::graphicsOf(*copy);
    graphics.setTransform(place * QTransform::fromTranslate(-place.dx(), -place.dy()));
    graphics.setPos(place.dx(), place.dy());
    return copy;
}

/// By its name, or by its number, which a new layer does not have.
bool isCalled(const LayerItem &layer, const QString &name)
{
    const bool hasNumber = layer.itemId() >= 0;
    return !name.isEmpty()
        && (layer.objectName() == name || (hasNumber && QString::number(layer.itemId()) == name));
}

QString nameOf(const LayerItem &layer)
{
    return layer.objectName().isEmpty() ? QString::number(layer.itemId()) : layer.objectName();
}

} // namespace

FlatDocument::FlatDocument(const LabelDocument &original, const QStringList &layers)
    : m_original(original)
{
    for (std::size_t i = 0; i < original.items().size(); ++i)
        m_roots.emplace_back(original.items()[i].get(), JsonPointer::element(itemsPointer, qsizetype(i)));
    if (!layers.isEmpty())
        chooseLayers(layers);
    const auto isContainer = [](const auto &root) { return ItemTree::isContainer(*root.first); };
    if (!layers.isEmpty() || std::ranges::any_of(m_roots, isContainer))
        flatten();
}

FlatDocument::~FlatDocument() = default;

void FlatDocument::chooseLayers(const QStringList &layers)
{
    QStringList names;
    QStringList missing = layers;
    const auto isLeftOut = [&](const std::pair<Item *, QString> &root) {
        const auto *layer = dynamic_cast<const LayerItem *>(root.first);
        if (!layer)
            return true;
        names.append(nameOf(*layer));
        missing.removeIf([&](const QString &name) { return isCalled(*layer, name); });
        return std::ranges::none_of(layers, [&](const QString &name) { return isCalled(*layer, name); });
    };
    std::erase_if(m_roots, isLeftOut);
    for (const auto &[layer, pointer] : m_roots) {
        if (!ItemTree::isShown(*layer))
            m_warnings.append(
                { {}, pointer, u"%1 is hidden: nothing of it is printed"_s.arg(Wording::item(*layer)), {} });
    }
    missing.removeDuplicates();
    for (const QString &name : std::as_const(missing)) {
        const QString meant = nearestName(name, names);
        m_problems.append({ {}, itemsPointer, u"there is no layer "_s + Wording::quoted(name),
            meant.isEmpty() ? QString() : u"did you mean %1?"_s.arg(Wording::quoted(meant)) });
    }
}

void FlatDocument::flatten()
{
    m_flat.emplace(m_original.withoutItems());
    std::ranges::stable_sort(m_roots, {}, [](const auto &root) { return root.first->getItemZValue(); });
    for (const auto &[item, pointer] : m_roots)
        add(*item, pointer);
}

void FlatDocument::add(Item &item, const QString &pointer)
{
    if (!ItemTree::isContainer(item)) {
        std::unique_ptr<Item> copy = copyOnPage(item);
        copy->setItemZValue(0.0); // they are in order
        // Each container may be scaled within its range, and the item beyond.
        m_problems += ItemMap::geometryProblems(*copy, pointer);
        m_flat->addItem(std::move(copy));
        m_pointers.append(pointer);
        return;
    }
    const QString children = JsonPointer::member(pointer, ItemMap::childrenKey);
    const QList<Item *> members = ItemTree::membersOf(item);
    for (qsizetype i = 0; i < members.size(); ++i)
        add(*members[i], JsonPointer::element(children, i));
}

QString FlatDocument::pointerOf(std::size_t item) const
{
    return m_flat ? m_pointers.value(qsizetype(item)) : JsonPointer::element(itemsPointer, qsizetype(item));
}

void FlatDocument::locate(Problems &problems) const
{
    if (!m_flat)
        return;
    for (Problem &problem : problems) {
        const QStringList parts = problem.where.split(u'/');
        if (parts.size() < 3 || parts[1] != "items"_L1)
            continue;
        const QString found = JsonPointer::element(itemsPointer, parts[2].toInt());
        problem.where = pointerOf(parts[2].toUInt()) + problem.where.sliced(found.size());
    }
}
