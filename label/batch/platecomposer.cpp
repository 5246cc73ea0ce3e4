// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/platecomposer.h"

#include "items/core/item.h"
#include "items/core/itemcolors.h"
#include "items/graphics/imageableitem.h"
#include "label/itemtree.h"
#include "label/labellimits.h"
#include "label/plates.h"

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QPainter>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

/// So many more documents than were composed may fail to be before no other is tried.
constexpr qint64 mostFailures = 8;

bool isPicture(const Item &item)
{
    return dynamic_cast<const ImageableItem *>(&item) != nullptr;
}

} // namespace

PlateComposer::PlateComposer(
    const LabelDocument &document, std::vector<std::size_t> changing, const SeparationOptions &options)
    : m_document(document)
    , m_changing(std::move(changing))
    , m_options(options)
    , m_scenes(document, options)
    , m_reports(document, m_changing, options.dpi)
{
}

PlateComposer::~PlateComposer() = default;

std::optional<Separation> PlateComposer::check(Problems &problems)
{
    if (const Problems found = m_reports.problems(); !found.isEmpty()) {
        problems += found;
        return {};
    }
    Separation separation { {}, m_document.paper(), {}, {} };
    m_reports.tell(separation);
    return separation;
}

std::optional<Separation> PlateComposer::separate(Problems &problems)
{
    std::optional<Separation> separation = check(problems);
    if (!separation)
        return {};
    if (!m_isPrepared)
        prepare();
    if (!m_isComposing || m_others > m_composed + mostFailures)
        return ::separate(m_document, m_options, problems);
    if (!compose(separation->plates)) {
        ++m_others;
        return ::separate(m_document, m_options, problems);
    }
    ++m_composed;
    return separation;
}

void PlateComposer::prepare()
{
    m_isPrepared = true;
    m_isComposing = canCompose() && prepareFixed();
    if (m_isComposing)
        prepareTaken();
}

bool PlateComposer::canCompose() const
{
    const QSize dots = m_scenes.dots();
    const auto isPlain = [this](std::size_t item) { return !isPicture(*m_document.items()[item]); };
    return qint64(dots.width()) * dots.height() <= LabelLimits::BandPixels
        && std::ranges::all_of(m_changing, isPlain);
}

bool PlateComposer::prepareFixed()
{
    LabelDocument fixed = m_document.withoutItems();
    for (std::size_t i = 0; i < m_document.items().size(); ++i) {
        if (!m_reports.isChanging(i))
            fixed.addItem(std::unique_ptr<Item>(m_document.items()[i]->createItemCopy()));
    }
    m_canvas = std::make_unique<DotCanvas>(m_scenes.dots());
    return m_canvas->isValid() && Plates::make(fixed, m_options, m_fixed).isEmpty();
}

void PlateComposer::prepareTaken()
{
    m_taken = QImage(m_scenes.dots(), QImage::Format_Mono);
    m_taken.setColorTable({ ItemColors::whiteRgb, ItemColors::blackRgb });
    m_taken.fill(0);
    std::vector<std::size_t> plain;
    for (const std::size_t item : fixedAboveChanging()) {
        const Item &fixed = *m_document.items()[item];
        if (!isPicture(fixed))
            plain.push_back(item);
        else if (fixed.getItemIsVisible())
            takeRoomOf(fixed);
    }
    for (qsizetype ink = 0; ink < m_document.inks().size(); ++ink) {
        paintInk(plain, ink);
        m_canvas->moveCoverTo(m_taken);
    }
}

std::vector<std::size_t> PlateComposer::fixedAboveChanging() const
{
    std::vector<std::size_t> order(m_document.items().size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(
        order, {}, [this](std::size_t item) { return m_document.items()[item]->getItemZValue(); });
    const auto isOfThese = [this](std::size_t item) { return m_reports.isChanging(item); };
    std::vector<std::size_t> above(std::ranges::find_if(order, isOfThese), order.end());
    std::erase_if(above, isOfThese);
    return above;
}

/// All of a picture's room is taken: its dots depend on what shines through it anywhere.
void PlateComposer::takeRoomOf(const Item &picture)
{
    const double dot = 1.0 / m_scenes.scaling();
    const QRectF room = ItemTree::graphicsOf(picture).sceneBoundingRect().adjusted(-dot, -dot, dot, dot);
    m_rooms.push_back(room);
    QPainter painter(&m_taken);
    painter.fillRect(QTransform::fromScale(m_scenes.scaling(), m_scenes.scaling()).mapRect(room), Qt::black);
}

/// Also of what prints nothing, as paper almost white does, a picture can show something.
bool PlateComposer::liesUnderPicture(std::size_t item) const
{
    const Item &shown = *m_document.items()[item];
    const QRectF bounds = ItemTree::graphicsOf(shown).sceneBoundingRect();
    return shown.getItemIsVisible()
        && std::ranges::any_of(m_rooms, [&bounds](const QRectF &room) { return room.intersects(bounds); });
}

/// Adds each item to a scene, and paints that. False if one cannot be added.
template <typename Add> bool PlateComposer::paint(const std::vector<std::size_t> &items, Add add)
{
    QGraphicsScene scene(QRectF(QPointF(), m_document.pageSizeInUnits()));
    scene.setItemIndexMethod(QGraphicsScene::NoIndex);
    for (const std::size_t item : items) {
        if (!add(scene, *m_document.items()[item]))
            return false;
    }
    m_canvas->paint(scene, m_scenes.scaling());
    return true;
}

void PlateComposer::paintInk(const std::vector<std::size_t> &items, qsizetype ink)
{
    (void)paint(items, [&](QGraphicsScene &scene, Item &item) {
        m_scenes.add(scene, item, ink);
        return true;
    });
}

bool PlateComposer::compose(std::vector<Plate> &plates)
{
    if (std::ranges::any_of(m_changing, [this](std::size_t item) { return liesUnderPicture(item); }))
        return false;
    plates = m_fixed;
    if (!putChangingOn(plates))
        return false;
    Plates::finish(plates, m_options);
    return true;
}

/// All inks at once where that can be.
bool PlateComposer::putChangingOn(std::vector<Plate> &plates)
{
    if (paint(m_changing,
            [this](QGraphicsScene &scene, Item &item) { return m_scenes.addNumbered(scene, item); }))
        return m_canvas->moveNumbersTo(plates, m_taken);
    for (qsizetype ink = 0; ink < m_document.inks().size(); ++ink) {
        paintInk(m_changing, ink);
        if (!m_canvas->moveTo(plates[std::size_t(ink)].image, m_taken))
            return false;
    }
    return true;
}
