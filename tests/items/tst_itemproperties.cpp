// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/allitems.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"

#include <QRegularExpression>
#include <QTest>

#include <rapidcheck.h>

#include <array>
#include <cmath>
#include <numbers>

using namespace Qt::StringLiterals;

namespace {

// Values with an exact short form in binary or decimal, over the sizes that documents use and far beyond.
double side()
{
    return *rc::gen::inRange(1, 8'000'000) / 8.0;
}

double coordinate()
{
    return *rc::gen::inRange(-8'000'000, 8'000'001) / 8.0;
}

double angle()
{
    return *rc::gen::inRange(-1'080'000, 1'080'001) / 1000.0;
}

bool either()
{
    return *rc::gen::arbitrary<bool>();
}

QColor colour(int lowestAlpha)
{
    const auto channel = [] { return *rc::gen::inRange(0, 256); };
    return QColor(channel(), channel(), channel(), *rc::gen::inRange(lowestAlpha, 256));
}

MobraTypes::ShapeType anyShape()
{
    static const QList<MobraTypes::ShapeType> shapes = AllItems::shapes();
    return shapes[*rc::gen::inRange<qsizetype>(0, shapes.size())];
}

/// Any of the classes but those that turn about the centre that their content has before it is scaled.
MobraTypes::ShapeType anyShapeNotScaled()
{
    static const QList<MobraTypes::ShapeType> shapes = [] {
        QList<MobraTypes::ShapeType> all = AllItems::shapes();
        all.removeIf(AllItems::isScaled);
        return all;
    }();
    return shapes[*rc::gen::inRange<qsizetype>(0, shapes.size())];
}

void placeAnywhere(Item &item)
{
    item.setItemSize(QSizeF(side(), side()));
    AllItems::graphics(item).setPos(coordinate(), coordinate());
    item.setItemHorizontalMirror(either());
    item.setItemVerticalMirror(either());
}

void drawAnyhow(Item &item, int lowestAlpha)
{
    if (auto *contoured = dynamic_cast<ContouredItem *>(&item)) {
        contoured->setItemPenColor(colour(lowestAlpha));
        contoured->setItemPenWidth(*rc::gen::inRange<ushort>(0, 100));
        contoured->setItemPenCapStyle(either() ? Qt::FlatCap : Qt::RoundCap);
        contoured->setItemPenJoinStyle(*rc::gen::element(Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin));
        contoured->setItemPenStyle(static_cast<Qt::PenStyle>(*rc::gen::inRange(0, 7)));
    }
    if (auto *fillable = dynamic_cast<FillableItem *>(&item)) {
        fillable->setItemFillColor(colour(lowestAlpha));
        fillable->setItemBrushStyleInt(*rc::gen::inRange(0, 18));
        fillable->updateItemBrush();
    }
    if (auto *picture = dynamic_cast<PixMapItem *>(&item)) {
        const QSize size(*rc::gen::inRange(1, 9), *rc::gen::inRange(1, 9));
        picture->setPixmap(AllItems::plainPicture(size, colour(lowestAlpha)));
    }
}

/// An item of any class, or the given one, with any values; colours at least as opaque as told.
std::unique_ptr<Item> anyItem(int lowestAlpha, MobraTypes::ShapeType shape = anyShape())
{
    std::unique_ptr<Item> item = AllItems::made(shape);
    item->setItemFlags(*rc::gen::arbitrary<unsigned int>());
    placeAnywhere(*item);
    item->setItemRotation(angle());
    item->setItemId(*rc::gen::arbitrary<short>());
    item->setAllowOverprint(either());
    item->setItemZValue(coordinate());
    item->setItemIsVisible(either());
    item->setDatasourceId(*rc::gen::arbitrary<int>());
    item->setDatasourceField(QString::fromStdString(*rc::gen::arbitrary<std::string>()));
    drawAnyhow(*item, lowestAlpha);
    return item;
}

/// Where a point of the item lies in the scene, told in parts of its size.
QPointF inScene(Item &item, double x, double y)
{
    return AllItems::graphics(item).mapToScene(
        AllItems::pointIn(item, x * item.getItemWidth(), y * item.getItemHeight()));
}

QPointF sceneCentre(Item &item)
{
    return inScene(item, 0.5, 0.5);
}

/// How far apart two points may lie after calculations with numbers as large as the item's: 1e-9 of the
/// largest number, and 1e-9 where all are small.
double tolerance(Item &item)
{
    const QPointF position = AllItems::graphics(item).scenePos();
    const double largest = std::max(
        { 1.0, item.getItemWidth(), item.getItemHeight(), std::abs(position.x()), std::abs(position.y()) });
    return 1e-9 * largest;
}

double distance(const QPointF &left, const QPointF &right)
{
    return std::hypot(left.x() - right.x(), left.y() - right.y());
}

} // namespace

/// What holds for any item and any values. The cases are drawn at random from a fixed seed, so every run
/// tries the same; RC_PARAMS in the environment chooses others.
class tst_ItemProperties : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void rotationsKeepTheCentre();
    void rotationTurnsTheCornersAboutTheCentre();
    void rotationIsKeptWithinOneTurn();
    void recordRoundTripIsIdentity();
    void mapRoundTripIsIdentity();
    void resizingBackRestoresTheItem();
    void resizingBackRestoresTheCornersOfALabelText();
    void copiesAreEqual();
};

void tst_ItemProperties::initTestCase()
{
    if (!qEnvironmentVariableIsSet("RC_PARAMS"))
        qputenv("RC_PARAMS", "seed=20230401 max_success=1000");
}

void tst_ItemProperties::rotationsKeepTheCentre()
{
    QVERIFY(rc::check([] {
        const std::unique_ptr<Item> item = AllItems::made(anyShapeNotScaled());
        placeAnywhere(*item);
        const QPointF centre = sceneCentre(*item);
        for (int turns = *rc::gen::inRange(1, 5); turns > 0; --turns) {
            item->setItemRotation(angle());
            RC_ASSERT(distance(sceneCentre(*item), centre) <= tolerance(*item));
        }
    }));
}

void tst_ItemProperties::rotationTurnsTheCornersAboutTheCentre()
{
    QVERIFY(rc::check([] {
        const std::unique_ptr<Item> item = AllItems::made(anyShapeNotScaled());
        placeAnywhere(*item);
        const QPointF centre = sceneCentre(*item);
        const double degrees = angle();
        item->setItemRotation(degrees);

        // A mirrored line is turned half a circle further.
        const bool isLine = item->getItemShape() == MobraTypes::LineShape;
        const double radians = (degrees + (isLine && item->getItemHorizontalMirror() ? 180.0 : 0.0))
            * std::numbers::pi / 180.0;
        const double cosine = std::cos(radians);
        const double sine = std::sin(radians);
        for (const double x : { 0.0, 1.0 }) {
            for (const double y : { 0.0, 1.0 }) {
                const QPointF arm((x - 0.5) * item->getItemWidth(), (y - 0.5) * item->getItemHeight());
                const QPointF turned(arm.x() * cosine - arm.y() * sine, arm.x() * sine + arm.y() * cosine);
                RC_ASSERT(distance(inScene(*item, x, y), centre + turned) <= tolerance(*item));
            }
        }
    }));
}

void tst_ItemProperties::rotationIsKeptWithinOneTurn()
{
    QVERIFY(rc::check([] {
        const std::unique_ptr<Item> item = AllItems::made(anyShape());
        const int thousandths = *rc::gen::inRange(-1'080'000, 1'080'001);
        item->setItemRotation(thousandths / 1000.0);
        const double expected = (thousandths + 1'080'000) % 360'000 / 1000.0;
        RC_ASSERT(item->getItemRotation() >= 0.0);
        RC_ASSERT(item->getItemRotation() < 360.0);
        RC_ASSERT(std::abs(item->getItemRotation() - expected) <= 1e-9);
    }));
}

void tst_ItemProperties::recordRoundTripIsIdentity()
{
    QVERIFY(rc::check([] {
        const std::unique_ptr<Item> item = ItemRecords::settled(anyItem(0));
        const QByteArray record = ItemRecords::saved(*item);
        const std::unique_ptr<Item> loaded = AllItems::made(item->getItemShape());
        RC_ASSERT(ItemRecords::load(*loaded, record) == QDataStream::Ok);
        RC_ASSERT(ItemRecords::saved(*loaded) == record);
        RC_ASSERT(AllItems::graphics(*loaded).boundingRect() == AllItems::graphics(*item).boundingRect());
        RC_ASSERT(AllItems::graphics(*loaded).shape() == AllItems::graphics(*item).shape());
    }));
}

void tst_ItemProperties::mapRoundTripIsIdentity()
{
    QVERIFY(rc::check([] {
        const std::unique_ptr<Item> item = anyItem(255);
        const QVariantMap map = item->saveItemToJSON();
        const std::unique_ptr<Item> loaded = AllItems::made(item->getItemShape());
        loaded->loadItemFromJSON(map, ItemRecords::currentVersion);
        RC_ASSERT(loaded->saveItemToJSON() == map);
        RC_ASSERT(AllItems::graphics(*loaded).boundingRect() == AllItems::graphics(*item).boundingRect());
        RC_ASSERT(AllItems::graphics(*loaded).shape() == AllItems::graphics(*item).shape());
    }));
}

void tst_ItemProperties::resizingBackRestoresTheItem()
{
    QVERIFY(rc::check([] {
        // The transform and place of what scales its content are calculated anew from the scales.
        const std::unique_ptr<Item> item = anyItem(0, anyShapeNotScaled());
        RC_PRE(item->getItemShape() != MobraTypes::LabelTextShape);
        const QSizeF before = item->getItemSize();
        const QRectF bounds = AllItems::graphics(*item).boundingRect();
        const QVariantMap map = item->saveItemToJSON();
        item->setItemSize(QSizeF(side(), side()));
        item->setItemSize(before);
        RC_ASSERT(item->getItemSize() == before);
        RC_ASSERT(AllItems::graphics(*item).boundingRect() == bounds);
        QVariantMap after = item->saveItemToJSON();
        for (const QString &scale : { u"itemScaleX"_s, u"itemScaleY"_s }) {
            const double expected = map.value(scale).toDouble();
            RC_ASSERT(std::abs(after.value(scale).toDouble() - expected) <= 1e-12 * std::max(1.0, expected));
            after.insert(scale, map.value(scale));
        }
        RC_ASSERT(after == map);
    }));
}

void tst_ItemProperties::resizingBackRestoresTheCornersOfALabelText()
{
    QVERIFY(rc::check([] {
        const std::unique_ptr<Item> item = AllItems::made(MobraTypes::LabelTextShape);
        placeAnywhere(*item);
        item->setItemRotation(angle());
        const QSizeF before = item->getItemSize();
        const auto corners = [&item] {
            return std::array { inScene(*item, 0.0, 0.0), inScene(*item, 1.0, 0.0), inScene(*item, 1.0, 1.0),
                inScene(*item, 0.0, 1.0) };
        };
        const auto expected = corners();
        item->setItemSize(QSizeF(side(), side()));
        item->setItemSize(before);
        RC_ASSERT(item->getItemSize() == before);
        for (std::size_t i = 0; i < expected.size(); ++i)
            RC_ASSERT(distance(corners()[i], expected[i]) <= tolerance(*item));
    }));
}

void tst_ItemProperties::copiesAreEqual()
{
    QVERIFY(rc::check([] {
        const std::unique_ptr<Item> item = anyItem(0);
        const std::unique_ptr<Item> copy(item->createItemCopy());
        RC_ASSERT(ItemRecords::saved(*copy) == ItemRecords::saved(*item));
        RC_ASSERT(copy->saveItemToJSON() == item->saveItemToJSON());
        RC_ASSERT(AllItems::graphics(*copy).boundingRect() == AllItems::graphics(*item).boundingRect());
        RC_ASSERT(AllItems::graphics(*copy).shape() == AllItems::graphics(*item).shape());
    }));
}

QTEST_MAIN(tst_ItemProperties)
#include "tst_itemproperties.moc"
