// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/borrowedscene.h"

#include <QGraphicsItem>
#include <QGraphicsPixmapItem>
#include <QPixmap>

#include <utility>

namespace {

/// Stands in for the parent of a borrowed item: has its transform and opacity and paints nothing.
class Frame final : public QGraphicsItem
{
public:
    Frame() { setFlag(ItemHasNoContents); }
    QRectF boundingRect() const override { return {}; }
    void paint(
        QPainter * /*painter*/, const QStyleOptionGraphicsItem * /*option*/, QWidget * /*widget*/) override
    {
    }
};

/// Takes the item out of its scene and parent. Qt cannot move it from one scene to a parent in another.
void detach(QGraphicsItem &item)
{
    if (QGraphicsScene *scene = item.scene())
        scene->removeItem(&item);
    item.setParentItem(nullptr);
}

/// Whether only the order of insertion decides which of two siblings lies above.
bool stackAlike(const QGraphicsItem &left, const QGraphicsItem &right)
{
    constexpr auto behind = QGraphicsItem::ItemStacksBehindParent;
    return left.zValue() == right.zValue() && (left.flags() & behind) == (right.flags() & behind);
}

void restoreOrder(const QList<QGraphicsItem *> &siblings)
{
    for (qsizetype i = siblings.size() - 2; i >= 0; --i) {
        if (stackAlike(*siblings[i], *siblings[i + 1]))
            siblings[i]->stackBefore(siblings[i + 1]);
    }
}

} // namespace

BorrowedScene::BorrowedScene(QGraphicsScene *owner, const QRectF &area)
    : m_owner(owner)
    , m_silence(owner)
    , m_scene(area)
    , m_selected(owner ? owner->selectedItems() : QList<QGraphicsItem *>())
    , m_focused(owner ? owner->focusItem() : nullptr)
{
    m_scene.setItemIndexMethod(QGraphicsScene::NoIndex);
}

BorrowedScene::~BorrowedScene()
{
    for (; !m_loans.empty(); m_loans.pop_back())
        giveBack(m_loans.back());
    for (const Siblings &siblings : std::as_const(m_siblings))
        restoreOrder(siblings);
    for (QGraphicsItem *item : std::as_const(m_selected))
        item->setSelected(true);
    if (m_focused && m_owner->focusItem() != m_focused)
        m_owner->setFocusItem(m_focused);
}

void BorrowedScene::borrow(QGraphicsItem &item)
{
    QGraphicsItem *parent = item.parentItem();
    if (!m_siblings.contains(parent))
        m_siblings.insert(parent, siblingsOf(item));
    if (!m_owner && item.isSelected())
        m_selected.append(&item);
    m_loans.push_back({ &item, parent });
    // The item keeps its own position and transform, which are those within its parent.
    QGraphicsItem *frame = addFrame(parent);
    detach(item);
    item.setParentItem(frame);
}

void BorrowedScene::addPicture(const QPixmap &pixmap, const QGraphicsItem &inPlaceOf, const QPointF &shift)
{
    const QPointF position = inPlaceOf.scenePos();
    auto *picture = new QGraphicsPixmapItem(pixmap, addFrame(nullptr));
    picture->setTransform(
        inPlaceOf.sceneTransform() * QTransform::fromTranslate(-position.x(), -position.y()));
    picture->setPos(position + shift);
    picture->setOpacity(inPlaceOf.effectiveOpacity());
    picture->setZValue(inPlaceOf.zValue());
    picture->setFlag(QGraphicsItem::ItemStacksBehindParent);
}

void BorrowedScene::render(QPainter &painter)
{
    m_scene.clearSelection();
    m_scene.render(&painter);
}

/// One for each item, because siblings would be painted in the order of their z values and flags.
QGraphicsItem *BorrowedScene::addFrame(const QGraphicsItem *parent)
{
    auto *frame = new Frame;
    if (parent) {
        frame->setTransform(parent->sceneTransform());
        frame->setOpacity(parent->effectiveOpacity());
    }
    m_scene.addItem(frame);
    return frame;
}

BorrowedScene::Siblings BorrowedScene::siblingsOf(const QGraphicsItem &item) const
{
    if (const QGraphicsItem *parent = item.parentItem())
        return parent->childItems();
    Siblings siblings;
    if (m_owner) {
        siblings = m_owner->items(Qt::AscendingOrder);
        siblings.removeIf([](const QGraphicsItem *other) { return other->parentItem() != nullptr; });
    }
    return siblings;
}

void BorrowedScene::giveBack(const Loan &loan)
{
    detach(*loan.item);
    if (loan.parent)
        loan.item->setParentItem(loan.parent);
    else if (m_owner)
        m_owner->addItem(loan.item);
}
