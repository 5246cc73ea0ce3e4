// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QGraphicsScene>
#include <QHash>
#include <QList>
#include <QPointF>
#include <QSignalBlocker>

#include <vector>

class QGraphicsItem;
class QPainter;
class QPixmap;

/// A scene that borrows items from an editor's, to paint them without the rest and without selection frames.
/// When it is destroyed, the editor's scene is as it was: every item in its parent, at its place, in its
/// stacking order, selected or not, and no signal has told of it.
class BorrowedScene
{
public:
    /// Shows the area of a scene, of which items can be borrowed. Without a scene, the items have none.
    BorrowedScene(QGraphicsScene *owner, const QRectF &area);
    ~BorrowedScene();
    Q_DISABLE_COPY_MOVE(BorrowedScene)

    /// Shows the item as its own scene does, above all that came before.
    void borrow(QGraphicsItem &item);
    /// Shows a picture in the place of an item, moved by a distance in the scene.
    void addPicture(const QPixmap &pixmap, const QGraphicsItem &inPlaceOf, const QPointF &shift);
    /// Fills the painter's device with the area.
    void render(QPainter &painter);

private:
    struct Loan
    {
        QGraphicsItem *item;
        QGraphicsItem *parent;
    };
    using Siblings = QList<QGraphicsItem *>;

    QGraphicsItem *addFrame(const QGraphicsItem *parent);
    Siblings siblingsOf(const QGraphicsItem &item) const;
    void giveBack(const Loan &loan);

    QGraphicsScene *m_owner;
    QSignalBlocker m_silence;
    QGraphicsScene m_scene;
    std::vector<Loan> m_loans;
    /// The children of each parent, or of the scene, that have lent some of themselves, from the bottom.
    QHash<QGraphicsItem *, Siblings> m_siblings;
    QList<QGraphicsItem *> m_selected;
    QGraphicsItem *m_focused;
};
