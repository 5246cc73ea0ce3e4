// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/data/rows.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

/// SqlSource without the drivers of Qt, which are packages of their own.
class tst_SqlDrivers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Before the first question for a driver, which looks for them.
    void initTestCase() { QCoreApplication::setLibraryPaths({}); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void missingOnesAreNamed_data();
    void missingOnesAreNamed();
};

void tst_SqlDrivers::missingOnesAreNamed_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("problem");

    QTest::newRow("SQLite")
        << u"sqlite:x.db"_s
        << u"x.db: Qt's driver for SQLite is not installed; on Debian, install libqt6sql6-sqlite"_s;
    QTest::newRow("PostgreSQL")
        << u"postgresql://db/shop"_s
        << u"postgresql://db/shop: Qt's driver for PostgreSQL is not installed; on Debian, "
           "install libqt6sql6-psql"_s;
    QTest::newRow("ODBC")
        << u"odbc:DSN=x"_s
        << u"odbc:DSN=x: Qt's driver for ODBC is not installed; on Debian, install libqt6sql6-odbc"_s;
}

void tst_SqlDrivers::missingOnesAreNamed()
{
    QFETCH(QString, url);
    QFETCH(QString, problem);
    QCOMPARE(Rows::answer(url, u"SELECT 1"_s), QStringList(problem));
}

QTEST_GUILESS_MAIN(tst_SqlDrivers)
#include "tst_sqldrivers.moc"
