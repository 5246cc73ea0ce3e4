// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/symbolitem.h"
#include "items/text/simpletextitem.h"
#include "tests/support/allitems.h"
#include "tests/support/groups.h"
#include "tests/support/groupwindow.h"
#include "tests/support/images.h"
#include "tests/support/labeltexts.h"

#include <QApplication>
#include <QPainter>
#include <QRegularExpression>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize frameSize(260, 240);
constexpr int frames = 8;
constexpr int framesInARow = 4;

QString stripFile()
{
    return QStringLiteral(VX_TEST_DATA_DIR "/windows/group.png");
}

SimpleTextItem *label(const QString &text, QPointF place, double angle)
{
    auto *item = new SimpleTextItem;
    item->setItemText(text);
    item->setItemSize(QSizeF(50.0, 18.0));
    item->setItemRotation(angle);
    item->setPos(place);
    return item;
}

SymbolItem *symbol(QPointF place, double angle, const QColor &pen)
{
    auto *item = new SymbolItem;
    AllItems::draw(*item);
    item->setItemPenColor(pen);
    item->setItemFillColor(QColor(255, 240, 200));
    item->setItemSize(QSizeF(30.0, 24.0));
    item->setItemRotation(angle);
    item->setPos(place);
    return item;
}

/// Labels and symbols, turned, two of them in a group of their own that is turned as well.
GroupItem *turnedThings()
{
    auto *inner = new GroupItem;
    auto *innerLabel = label(u"inner"_s, QPointF(0, 0), 20);
    auto *innerSymbol = symbol(QPointF(10, 22), 75, QColor(0, 0, 160));
    innerSymbol->setZValue(1);
    inner->addToGroup({ innerLabel, innerSymbol });
    inner->setItemRotation(330);
    inner->setPos(62, 70);
    inner->setZValue(3);
    auto *wide = label(u"outer"_s, QPointF(60, 45), 345);
    auto *drawn = symbol(QPointF(115, 60), 30, QColor(160, 0, 0));
    drawn->setZValue(1);
    auto *upright = label(u"up"_s, QPointF(95, 100), 90);
    upright->setZValue(2);
    auto *group = new GroupItem;
    group->addToGroup({ wide, drawn, upright, inner });
    group->moveBy(15, 25);
    return group;
}

void collectLeaves(const QGraphicsItem &item, QList<const QGraphicsItem *> &leaves)
{
    for (const QGraphicsItem *child : item.childItems())
        collectLeaves(*child, leaves);
    if (item.childItems().isEmpty())
        leaves.append(&item);
}

/// The way of the corner that has gone farthest.
double farthest(const QList<QPolygonF> &before, const QList<QPolygonF> &after)
{
    double way = 0.0;
    for (qsizetype i = 0; i < before.size(); ++i) {
        for (int corner = 0; corner < 4; ++corner)
            way = std::max(way, QLineF(before[i][corner], after[i][corner]).length());
    }
    return way;
}

/// Drags in single steps, and watches that nothing goes much farther than the mouse.
class Drag
{
public:
    Drag(GroupWindow &window, const GroupItem &group)
        : m_window(window)
    {
        collectLeaves(group, m_leaves);
    }

    /// along tells where the mouse is from 0 to 1. The widest step of a corner, in steps of the mouse.
    template <typename Path> double operator()(Path along)
    {
        constexpr int steps = 40;
        m_window.press(along(0.0));
        QPoint mouse = m_window.mapFromScene(along(0.0));
        QList<QPolygonF> before = corners();
        double widest = 0.0;
        for (int step = 1; step <= steps; ++step) {
            const QPointF to = along(double(step) / steps);
            m_window.moveTo(to);
            const QPoint pixel = m_window.mapFromScene(to);
            const double way = std::max(1.0, QLineF(mouse, pixel).length());
            const QList<QPolygonF> after = corners();
            widest = std::max(widest, farthest(before, after) / way);
            mouse = pixel;
            before = after;
        }
        m_window.release(along(1.0));
        return farthest(before, corners()) > 0.0 ? qInf() : widest;
    }

private:
    [[nodiscard]] QList<QPolygonF> corners() const
    {
        QList<QPolygonF> all;
        for (const QGraphicsItem *leaf : m_leaves)
            all.append(Groups::corners(*leaf));
        return all;
    }

    GroupWindow &m_window;
    QList<const QGraphicsItem *> m_leaves;
};

} // namespace

/// A group in an editor's hands: resized, turned and moved with the mouse. VX_UPDATE_REFERENCES=1 writes the
/// film strip anew: look at every frame.
class tst_GroupWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void nothingJumps();

private:
    void keepFrame(GroupWindow &window);

    QImage m_strip { frameSize.width() * framesInARow, frameSize.height() * (frames / framesInARow),
        QImage::Format_RGB32 };
    int m_frames = 0;
};

void tst_GroupWindow::initTestCase()
{
    LabelTexts::useKnownFont();
    QPalette palette;
    palette.setColor(QPalette::WindowText, Qt::black); // the selection frame
    palette.setColor(QPalette::Base, Qt::white);
    QApplication::setPalette(palette);
}

void tst_GroupWindow::keepFrame(GroupWindow &window)
{
    QPainter painter(&m_strip);
    const int column = m_frames % framesInARow;
    const int row = m_frames / framesInARow;
    painter.drawImage(column * frameSize.width(), row * frameSize.height(), window.shown());
    ++m_frames;
}

void tst_GroupWindow::nothingJumps()
{
    GroupItem *group = turnedThings();
    GroupWindow window(group, frameSize);
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    Drag drag(window, *group);
    const auto resize = [&](QPointF by) {
        const QPointF from = window.sizeHandle();
        return drag([=](double part) { return from + by * part; });
    };
    const auto turn = [&](double degrees) {
        const QLineF arm(window.centre(), window.turnHandle());
        return drag([=](double part) {
            QLineF turned = arm;
            turned.setAngle(arm.angle() - degrees * part);
            return turned.p2();
        });
    };
    // The mouse is in whole pixels, and an arm that it turns may be half as long as what it turns.
    constexpr double most = 4.0;
    keepFrame(window);
    QVERIFY(resize(QPointF(30, 25)) < most);
    keepFrame(window);
    QVERIFY(turn(40) < most);
    keepFrame(window);
    QVERIFY(resize(QPointF(-25, -15)) < most);
    keepFrame(window);
    QVERIFY(turn(75) < most);
    keepFrame(window);
    const QPointF middle = window.centre();
    QVERIFY(drag([&](double part) { return middle + QPointF(12, -8) * part; }) < 1.5);
    QVERIFY(QLineF(window.centre(), middle + QPointF(12, -8)).length() < 1.0);
    keepFrame(window);
    QVERIFY(resize(QPointF(-5, 30)) < most);
    keepFrame(window);
    QVERIFY(turn(-115) < most);
    keepFrame(window);
    QCOMPARE(m_frames, frames);

    if (qEnvironmentVariableIntValue("VX_UPDATE_REFERENCES") == 1)
        QVERIFY(m_strip.save(stripFile()));
    const QImage reference(stripFile());
    QVERIFY2(!reference.isNull(), "the strip is missing; VX_UPDATE_REFERENCES=1 makes it");
    QCOMPARE(Images::difference(m_strip, reference, u"group-window"_s), QString());
}

QTEST_MAIN(tst_GroupWindow)
#include "tst_groupwindow.moc"
