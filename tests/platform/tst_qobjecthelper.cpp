// SPDX-License-Identifier: BSD-3-Clause
#include "platform/json/qobjecthelper.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using QJson::QObjectHelper;

namespace {

class Base : public QObject
{
    Q_OBJECT
    Q_PROPERTY(double ratio MEMBER ratio)

public:
    double ratio = 0.5;
};

class Subject : public Base
{
    Q_OBJECT
    Q_PROPERTY(int count MEMBER count)
    Q_PROPERTY(short number MEMBER number)
    Q_PROPERTY(bool open MEMBER open)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QVariant anything MEMBER anything)
    Q_PROPERTY(QVariantList values MEMBER values)
    Q_PROPERTY(int fixed READ fixed)
    Q_PROPERTY(double flag READ isFlag WRITE setFlag)
    Q_PROPERTY(int second READ logged WRITE logSecond)
    Q_PROPERTY(int first READ logged WRITE logFirst)

public:
    [[nodiscard]] int fixed() const { return 99; }
    [[nodiscard]] bool isFlag() const { return flag; }
    void setFlag(bool on) { flag = on; }
    [[nodiscard]] int logged() const { return int(log.size()); }
    void logFirst(int /*value*/) { log.append(u"first"_s); }
    void logSecond(int /*value*/) { log.append(u"second"_s); }

    int count = 3;
    short number = -7;
    bool open = true;
    QString title = u"Größe"_s;
    QVariant anything;
    QVariantList values = { 1.5, 2 };
    bool flag = true;
    QStringList log;
};

/// Declares a property of its base again, with another type and its own storage.
class Redeclaring : public Base
{
    Q_OBJECT
    Q_PROPERTY(QString ratio READ text WRITE setText)

public:
    [[nodiscard]] QString text() const { return m_text; }
    void setText(const QString &text) { m_text = text; }

private:
    QString m_text = u"one to two"_s;
};

} // namespace

class tst_QObjectHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void mapHoldsEveryReadableProperty();
    void mapValuesKeepTheirDeclaredTypes();
    void ignoredPropertiesAreLeftOut();
    void emptyIgnoreListKeepsTheObjectName();
    void ignoreListsOfOneClassMayAlternate();
    void ignoreListOfOneClassLeavesAnotherAlone();
    void ignoredPropertiesAreWrittenAllTheSame();
    void redeclaredPropertyIsThatOfTheDerivedClass();
    void valuesOfTheSameTypeAreWritten();
    void valuesOfOtherTypesAreConverted_data();
    void valuesOfOtherTypesAreConverted();
    void valuesThatCannotBeConvertedAreSkipped_data();
    void valuesThatCannotBeConvertedAreSkipped();
    void variantPropertiesTakeAnyValue();
    void unknownAndReadOnlyKeysAreSkipped();
    void emptyMapWritesNothing();
    void keysAreWrittenInAscendingOrder();
    void mapRestoresAnotherObject();
};

void tst_QObjectHelper::mapHoldsEveryReadableProperty()
{
    const Subject subject;
    const QVariantMap map = QObjectHelper::qobject2qvariant(&subject);
    const QStringList names = { u"anything"_s, u"count"_s, u"first"_s, u"fixed"_s, u"flag"_s, u"number"_s,
        u"open"_s, u"ratio"_s, u"second"_s, u"title"_s, u"values"_s };
    QCOMPARE(map.keys(), names);
    QCOMPARE(map.value(u"fixed"_s), QVariant(99));
    QCOMPARE(map.value(u"ratio"_s), QVariant(0.5));
    QCOMPARE(map.value(u"title"_s), QVariant(u"Größe"_s));
    QCOMPARE(map.value(u"values"_s).toList(), (QVariantList { 1.5, 2 }));
}

void tst_QObjectHelper::mapValuesKeepTheirDeclaredTypes()
{
    const Subject subject;
    const QVariantMap map = QObjectHelper::qobject2qvariant(&subject);
    QCOMPARE(map.value(u"count"_s).metaType(), QMetaType::fromType<int>());
    QCOMPARE(map.value(u"number"_s).metaType(), QMetaType::fromType<short>());
    QCOMPARE(map.value(u"open"_s).metaType(), QMetaType::fromType<bool>());
    QCOMPARE(map.value(u"flag"_s).metaType(), QMetaType::fromType<double>());
    QCOMPARE(map.value(u"flag"_s).toDouble(), 1.0);
}

void tst_QObjectHelper::ignoredPropertiesAreLeftOut()
{
    const Subject subject;
    const QVariantMap map
        = QObjectHelper::qobject2qvariant(&subject, { u"count"_s, u"ratio"_s, u"unheard of"_s });
    QVERIFY(!map.contains(u"count"_s));
    QVERIFY(!map.contains(u"ratio"_s));
    QVERIFY(map.contains(u"objectName"_s));
    QCOMPARE(map.size(), 10);
}

void tst_QObjectHelper::emptyIgnoreListKeepsTheObjectName()
{
    Subject subject;
    subject.setObjectName(u"Otto"_s);
    QCOMPARE(QObjectHelper::qobject2qvariant(&subject, {}).value(u"objectName"_s), QVariant(u"Otto"_s));
}

void tst_QObjectHelper::ignoreListsOfOneClassMayAlternate()
{
    const Subject subject;
    for (int turn = 0; turn < 3; ++turn) {
        const QVariantMap withoutCount = QObjectHelper::qobject2qvariant(&subject, { u"count"_s });
        QVERIFY(!withoutCount.contains(u"count"_s));
        QVERIFY(withoutCount.contains(u"ratio"_s));
        QCOMPARE(withoutCount.size(), 11);
        const QVariantMap withoutRatio
            = QObjectHelper::qobject2qvariant(&subject, { u"ratio"_s, u"title"_s });
        QVERIFY(withoutRatio.contains(u"count"_s));
        QVERIFY(!withoutRatio.contains(u"ratio"_s));
        QVERIFY(!withoutRatio.contains(u"title"_s));
        QCOMPARE(withoutRatio.size(), 10);
        QCOMPARE(QObjectHelper::qobject2qvariant(&subject, {}).size(), 12);
    }
}

void tst_QObjectHelper::ignoreListOfOneClassLeavesAnotherAlone()
{
    const Subject subject;
    const Base base;
    QVERIFY(!QObjectHelper::qobject2qvariant(&subject, { u"ratio"_s }).contains(u"ratio"_s));
    QCOMPARE(QObjectHelper::qobject2qvariant(&base).keys(), QStringList { u"ratio"_s });
    QVERIFY(!QObjectHelper::qobject2qvariant(&subject, { u"ratio"_s }).contains(u"ratio"_s));
}

void tst_QObjectHelper::ignoredPropertiesAreWrittenAllTheSame()
{
    Subject subject;
    QVERIFY(!QObjectHelper::qobject2qvariant(&subject, { u"count"_s }).contains(u"count"_s));
    QObjectHelper::qvariant2qobject({ { u"count"_s, 12 } }, &subject);
    QCOMPARE(subject.count, 12);
}

void tst_QObjectHelper::redeclaredPropertyIsThatOfTheDerivedClass()
{
    Redeclaring object;
    const QVariantMap map = QObjectHelper::qobject2qvariant(&object);
    QCOMPARE(map.keys(), QStringList { u"ratio"_s });
    QCOMPARE(map.value(u"ratio"_s), QVariant(u"one to two"_s));

    QObjectHelper::qvariant2qobject({ { u"ratio"_s, u"three to four"_s } }, &object);
    QCOMPARE(object.text(), u"three to four"_s);
    QCOMPARE(object.ratio, 0.5);
    QObjectHelper::qvariant2qobject({ { u"ratio"_s, 0.25 } }, &object);
    QCOMPARE(object.text(), u"0.25"_s);
    QCOMPARE(object.ratio, 0.5);
}

void tst_QObjectHelper::valuesOfTheSameTypeAreWritten()
{
    Subject subject;
    QObjectHelper::qvariant2qobject({ { u"count"_s, 12 }, { u"title"_s, u"new"_s }, { u"ratio"_s, 0.25 },
                                        { u"open"_s, false }, { u"values"_s, QVariantList { u"x"_s } } },
        &subject);
    QCOMPARE(subject.count, 12);
    QCOMPARE(subject.title, u"new"_s);
    QCOMPARE(subject.ratio, 0.25);
    QVERIFY(!subject.open);
    QCOMPARE(subject.values, QVariantList { u"x"_s });
}

void tst_QObjectHelper::valuesOfOtherTypesAreConverted_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("written");

    QTest::newRow("text to integer") << u"count"_s << QVariant(u"41"_s) << QVariant(41);
    QTest::newRow("double to integer") << u"count"_s << QVariant(41.0) << QVariant(41);
    QTest::newRow("long integer to short")
        << u"number"_s << QVariant(qlonglong(-5)) << QVariant::fromValue(short(-5));
    QTest::newRow("integer to double") << u"ratio"_s << QVariant(2) << QVariant(2.0);
    QTest::newRow("text to double") << u"ratio"_s << QVariant(u"-2.75"_s) << QVariant(-2.75);
    QTest::newRow("integer to text") << u"title"_s << QVariant(5) << QVariant(u"5"_s);
    QTest::newRow("integer to bool") << u"open"_s << QVariant(0) << QVariant(false);
    QTest::newRow("bool to a double with a bool behind") << u"flag"_s << QVariant(false) << QVariant(0.0);
    QTest::newRow("fraction to a double with a bool behind") << u"flag"_s << QVariant(0.3) << QVariant(1.0);
}

void tst_QObjectHelper::valuesOfOtherTypesAreConverted()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    Subject subject;
    QObjectHelper::qvariant2qobject({ { key, value } }, &subject);
    QTEST(subject.property(qPrintable(key)), "written");
}

void tst_QObjectHelper::valuesThatCannotBeConvertedAreSkipped_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("invalid to integer") << u"count"_s << QVariant();
    QTest::newRow("invalid to text") << u"title"_s << QVariant();
    QTest::newRow("invalid to variant") << u"anything"_s << QVariant();
    QTest::newRow("letters to integer") << u"count"_s << QVariant(u"many"_s);
    QTest::newRow("letters to double") << u"ratio"_s << QVariant(u"wide"_s);
    QTest::newRow("list to integer") << u"count"_s << QVariant(QVariantList { 1, 2 });
    QTest::newRow("map to double") << u"ratio"_s << QVariant(QVariantMap { { u"a"_s, 1 } });
    QTest::newRow("map to text") << u"title"_s << QVariant(QVariantMap { { u"a"_s, 1 } });
    QTest::newRow("integer to list") << u"values"_s << QVariant(4);
}

void tst_QObjectHelper::valuesThatCannotBeConvertedAreSkipped()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    Subject subject;
    subject.anything = u"kept"_s;
    QObjectHelper::qvariant2qobject(
        { { key, value }, { u"number"_s, QVariant::fromValue(short(8)) } }, &subject);
    QCOMPARE(subject.count, 3);
    QCOMPARE(subject.ratio, 0.5);
    QCOMPARE(subject.title, u"Größe"_s);
    QCOMPARE(subject.values, (QVariantList { 1.5, 2 }));
    QCOMPARE(subject.anything, QVariant(u"kept"_s));
    QCOMPARE(subject.number, short(8));
}

void tst_QObjectHelper::variantPropertiesTakeAnyValue()
{
    Subject subject;
    QObjectHelper::qvariant2qobject({ { u"anything"_s, QVariantList { 1, u"two"_s } } }, &subject);
    QCOMPARE(subject.anything.metaType(), QMetaType::fromType<QVariantList>());
    QCOMPARE(subject.anything.toList(), (QVariantList { 1, u"two"_s }));
}

void tst_QObjectHelper::unknownAndReadOnlyKeysAreSkipped()
{
    Subject subject;
    QObjectHelper::qvariant2qobject(
        { { u"fixed"_s, 1 }, { u"unheard of"_s, 2 }, { QString(), 3 }, { u"count"_s, 4 } }, &subject);
    QCOMPARE(subject.fixed(), 99);
    QVERIFY(subject.dynamicPropertyNames().isEmpty());
    QCOMPARE(subject.count, 4);
}

void tst_QObjectHelper::emptyMapWritesNothing()
{
    Subject subject;
    QObjectHelper::qvariant2qobject({}, &subject);
    const Subject untouched;
    QCOMPARE(QObjectHelper::qobject2qvariant(&subject), QObjectHelper::qobject2qvariant(&untouched));
}

void tst_QObjectHelper::keysAreWrittenInAscendingOrder()
{
    Subject subject;
    QObjectHelper::qvariant2qobject({ { u"second"_s, 1 }, { u"first"_s, 1 } }, &subject);
    QCOMPARE(subject.log, (QStringList { u"first"_s, u"second"_s }));
}

void tst_QObjectHelper::mapRestoresAnotherObject()
{
    Subject subject;
    subject.count = 17;
    subject.number = 300;
    subject.open = false;
    subject.title = u"Ärger 😀"_s;
    subject.anything = 2.5;
    subject.values = { u"a"_s, 1 };
    subject.flag = false;
    subject.ratio = -1e300;
    Subject other;
    QObjectHelper::qvariant2qobject(QObjectHelper::qobject2qvariant(&subject), &other);
    QCOMPARE(other.count, 17);
    QCOMPARE(other.number, short(300));
    QVERIFY(!other.open);
    QCOMPARE(other.title, u"Ärger 😀"_s);
    QCOMPARE(other.anything, QVariant(2.5));
    QCOMPARE(other.values, (QVariantList { u"a"_s, 1 }));
    QVERIFY(!other.flag);
    QCOMPARE(other.ratio, -1e300);
}

QTEST_MAIN(tst_QObjectHelper)
#include "tst_qobjecthelper.moc"
