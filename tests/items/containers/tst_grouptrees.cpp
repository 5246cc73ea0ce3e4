// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/groupitem.h"
#include "tests/support/allitems.h"
#include "tests/support/groups.h"
#include "tests/support/itemrecords.h"
#include "tests/support/labeltexts.h"

#include <QGraphicsScene>
#include <QRegularExpression>
#include <QTest>

#include <random>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

/// The items of a tree that are no groups, from the bottom.
void collectLeaves(QGraphicsItem &item, QList<QGraphicsItem *> &leaves)
{
    if (!dynamic_cast<GroupItem *>(&item)) {
        leaves.append(&item);
        return;
    }
    for (QGraphicsItem *member : item.childItems())
        collectLeaves(*member, leaves);
}

/// A page on which somebody groups, turns, stretches, copies and ungroups items of all classes at random.
class Page
{
public:
    explicit Page(unsigned int seed, bool inScene)
        : m_random(seed)
        , m_inScene(inScene)
    {
        const QList<MobraTypes::ShapeType> shapes = AllItems::shapes();
        for (int i = below(5) + 2; i > 0; --i) {
            Item *item = AllItems::made(shapes[below(int(shapes.size()))]).release();
            AllItems::change(*item);
            item->setItemSize(QSizeF(20 + below(100), 20 + below(100)));
            item->setItemRotation(below(4) ? below(360) : 0);
            adopt(AllItems::graphics(*item));
            m_roots.last()->setPos(below(300), below(300));
        }
    }
    ~Page() { qDeleteAll(m_roots); }
    Q_DISABLE_COPY_MOVE(Page)

    /// Does something that moves nothing on the page, and tells whether nothing has moved.
    [[nodiscard]] bool rearrange()
    {
        const QList<QPolygonF> before = corners();
        const QList<QGraphicsItem *> leaves = m_leaves;
        if (below(2))
            group();
        else
            ungroup();
        noteLeaves();
        for (qsizetype i = 0; i < leaves.size(); ++i) {
            if (!Groups::stayed(before[i], Groups::corners(*leaves[i])))
                return false;
        }
        return m_leaves.size() == leaves.size();
    }

    /// Turns or resizes a group or an item.
    void change()
    {
        auto &item = dynamic_cast<Item &>(*m_roots[below(int(m_roots.size()))]);
        constexpr double factors[] = { 0.7, 1.6 };
        if (below(2))
            item.setItemRotation(below(360));
        else
            item.setItemSize(item.getItemSize() * factors[below(2)]);
    }

    /// Whether a copy of a group or item shows what the original shows.
    [[nodiscard]] bool copyIsEqual()
    {
        QGraphicsItem *root = m_roots[below(int(m_roots.size()))];
        const std::unique_ptr<Item> copy(dynamic_cast<Item &>(*root).createItemCopy());
        QList<QGraphicsItem *> originals;
        QList<QGraphicsItem *> copies;
        collectLeaves(*root, originals);
        collectLeaves(AllItems::graphics(*copy), copies);
        if (originals.size() != copies.size())
            return false;
        for (qsizetype i = 0; i < copies.size(); ++i) {
            auto &original = dynamic_cast<Item &>(*originals[i]);
            auto &copyOf = dynamic_cast<Item &>(*copies[i]);
            if (!Groups::stayed(Groups::corners(*originals[i]), Groups::corners(*copies[i]))
                || original.getItemRotation() != copyOf.getItemRotation()
                || original.getItemSize() != copyOf.getItemSize())
                return false;
        }
        return true;
    }

    /// Whether turning each item that lies in no group by nothing leaves it where it is. Groups with lines
    /// are turned about the centre of the size that was asked for, which lines do not quite reach.
    [[nodiscard]] bool itemsKnowTheirRotation()
    {
        for (QGraphicsItem *root : std::as_const(m_roots)) {
            if (dynamic_cast<GroupItem *>(root))
                continue;
            const QPolygonF before = Groups::corners(*root);
            auto &item = dynamic_cast<Item &>(*root);
            item.setItemRotation(item.getItemRotation());
            if (!Groups::stayed(before, Groups::corners(*root)))
                return false;
        }
        return true;
    }

private:
    int below(int limit) { return int(m_random() % unsigned(limit)); }

    void adopt(QGraphicsItem &item)
    {
        if (m_inScene && !item.scene())
            m_scene.addItem(&item);
        m_roots.append(&item);
        noteLeaves();
    }

    void noteLeaves()
    {
        m_leaves.clear();
        for (QGraphicsItem *root : std::as_const(m_roots))
            collectLeaves(*root, m_leaves);
        std::ranges::sort(m_leaves);
    }

    QList<QPolygonF> corners() const
    {
        QList<QPolygonF> all;
        for (const QGraphicsItem *leaf : m_leaves)
            all.append(Groups::corners(*leaf));
        return all;
    }

    void group()
    {
        QList<QGraphicsItem *> chosen;
        for (int i = below(int(m_roots.size())) + 1; i > 0; --i) {
            chosen.append(m_roots.takeAt(below(int(m_roots.size()))));
            chosen.last()->setZValue(double(i));
        }
        auto *group = new GroupItem;
        if (m_inScene)
            m_scene.addItem(group);
        group->addToGroup(chosen);
        adopt(*group);
    }

    void ungroup()
    {
        auto *group = dynamic_cast<GroupItem *>(m_roots[below(int(m_roots.size()))]);
        if (!group)
            return;
        const QList<QGraphicsItem *> members = group->childItems();
        group->removeFromGroup();
        m_roots.removeOne(group);
        delete group;
        m_roots.append(members);
    }

    std::mt19937 m_random;
    bool m_inScene;
    QGraphicsScene m_scene;
    QList<QGraphicsItem *> m_roots;
    QList<QGraphicsItem *> m_leaves;
};

} // namespace

/// Groups in groups of items of all classes, in any order of events.
class tst_GroupTrees : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void groupingAndUngroupingMovesNothing_data();
    void groupingAndUngroupingMovesNothing();
};

void tst_GroupTrees::groupingAndUngroupingMovesNothing_data()
{
    QTest::addColumn<bool>("inScene");

    QTest::newRow("without a scene") << false;
    QTest::newRow("in a scene") << true;
}

void tst_GroupTrees::groupingAndUngroupingMovesNothing()
{
    QFETCH(const bool, inScene);
    constexpr unsigned int pages = 200;
    constexpr int steps = 12;
    for (unsigned int seed = 0; seed < pages; ++seed) {
        const QByteArray where = "page " + QByteArray::number(seed);
        Page page(seed, inScene);
        for (int step = 0; step < steps; ++step) {
            QVERIFY2(page.rearrange(), where);
            page.change();
            QVERIFY2(page.copyIsEqual(), where);
            QVERIFY2(page.itemsKnowTheirRotation(), where);
        }
    }
}

QTEST_MAIN(tst_GroupTrees)
#include "tst_grouptrees.moc"
