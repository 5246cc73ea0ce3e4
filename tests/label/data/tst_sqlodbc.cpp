// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/data/odbcsetup.h"
#include "tests/label/data/rows.h"

#include <QRegularExpression>
#include <QSqlDatabase>
#include <QTest>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

/// SqlSource through ODBC, on an SQLite file: what is read, and what a query cannot do.
class tst_SqlOdbc : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void rowsComeInOrder_data();
    void rowsComeInOrder();
    void valuesAreText_data();
    void valuesAreText();
    void unreachableDatabasesAreRefused_data();
    void unreachableDatabasesAreRefused();
    void badQueriesAreRefused();
    void onlySingleQueriesThatReadAreAsked_data();
    void onlySingleQueriesThatReadAreAsked();
    void changesAreTakenBack();
    void rowsAndValuesAreLimited();

private:
    [[nodiscard]] QStringList answer(const QString &query, const SqlSource::Options &options = {}) const
    {
        return Rows::answer(u"odbc:DSN=prices"_s, query, options);
    }
    [[nodiscard]] QString path() const { return m_odbc->path(u"prices.db"_s); }

    std::unique_ptr<OdbcSetup> m_odbc;
};

void tst_SqlOdbc::initTestCase()
{
    m_odbc = std::make_unique<OdbcSetup>(u"SQLite3"_s, u"libsqlite3odbc.so"_s);
    QVERIFY2(m_odbc->hasDriver(), "there is no ODBC driver for SQLite: install libsqliteodbc");
    m_odbc->addSource(u"[prices]\nDriver=SQLite3\nDatabase=%1\n"_s.arg(path()));
}

void tst_SqlOdbc::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QFile::remove(path());
    sqlite3 *database = nullptr;
    QCOMPARE(sqlite3_open(QFile::encodeName(path()).constData(), &database), SQLITE_OK);
    const char *sql
        = "CREATE TABLE prices (name TEXT, price REAL, stock INTEGER);"
          "INSERT INTO prices VALUES ('Apple', 1.5, 12), ('Pear|Quince', 0.1, NULL), ('Käse', 3, 0);";
    const int result = sqlite3_exec(database, sql, nullptr, nullptr, nullptr);
    sqlite3_close(database);
    QCOMPARE(result, SQLITE_OK);
}

void tst_SqlOdbc::cleanup()
{
    QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
}

void tst_SqlOdbc::rowsComeInOrder_data()
{
    QTest::addColumn<QString>("url");

    QTest::newRow("data source") << u"odbc:DSN=prices"_s;
    QTest::newRow("data source and user") << u"odbc:UID=ann;dsn=prices"_s;
    QTest::newRow("driver") << u"odbc:Driver=SQLite3;Database=%1"_s.arg(path());
    QTest::newRow("driver in braces") << u"odbc:Database=%1;DRIVER={SQLite3};"_s.arg(path());
}

void tst_SqlOdbc::rowsComeInOrder()
{
    QFETCH(QString, url);
    Problems problems;
    const std::unique_ptr<SqlSource> source
        = Rows::open(url, u"SELECT name, price, stock FROM prices ORDER BY name;"_s, problems);
    QCOMPARE(Rows::texts(problems), QStringList());
    QVERIFY(source);
    QCOMPARE(source->columns(), QStringList({ u"name"_s, u"price"_s, u"stock"_s }));
    const QList<QStringList> expected { { u"Apple"_s, u"1.5"_s, u"12"_s }, { u"Käse"_s, u"3"_s, u"0"_s },
        { u"Pear|Quince"_s, u"0.1"_s, u""_s } };
    for (qsizetype i = 0; i < expected.size(); ++i) {
        const RowResult result = source->next();
        QCOMPARE(result.kind, RowResult::Data);
        QCOMPARE(result.row.values, expected[i]);
        QCOMPARE(result.row.address, url + u": row %1"_s.arg(i + 1));
    }
    QCOMPARE(source->next().kind, RowResult::End);
}

void tst_SqlOdbc::valuesAreText_data()
{
    QTest::addColumn<QString>("type"); ///< of the column, by which the driver goes
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("NULL") << u"INTEGER"_s << u"NULL"_s << u""_s;
    QTest::newRow("text") << u"TEXT"_s << u"'it''s'"_s << u"it's"_s;
    QTest::newRow("letters") << u"TEXT"_s << u"'Käse 😀'"_s << u"Käse 😀"_s;
    QTest::newRow("long text") << u"TEXT"_s << u"'%1'"_s.arg(QString(5000, u'x')) << QString(5000, u'x');
    QTest::newRow("integer") << u"INTEGER"_s << u"1000000"_s << u"1000000"_s;
    QTest::newRow("large integer") << u"BIGINT"_s << u"9223372036854775807"_s << u"9223372036854775807"_s;
    QTest::newRow("real") << u"DOUBLE"_s << u"0.1"_s << u"0.1"_s;
    QTest::newRow("whole real") << u"DOUBLE"_s << u"1000000.0"_s << u"1000000"_s;
    QTest::newRow("date") << u"DATE"_s << u"'2026-11-22'"_s << u"2026-11-22"_s;
    QTest::newRow("time") << u"TIME"_s << u"'10:20:30'"_s << u"10:20:30"_s;
    QTest::newRow("timestamp") << u"TIMESTAMP"_s << u"'2026-11-22 10:20:30'"_s << u"2026-11-22T10:20:30"_s;
    QTest::newRow("bytes of text") << u"BLOB"_s << u"x'4bc3a47365'"_s << u"Käse"_s;
    QTest::newRow("true") << u"BOOLEAN"_s << u"1"_s << u"true"_s;
}

void tst_SqlOdbc::valuesAreText()
{
    QFETCH(QString, type);
    QFETCH(QString, value);
    QFETCH(QString, text);
    sqlite3 *database = nullptr;
    QCOMPARE(sqlite3_open(QFile::encodeName(path()).constData(), &database), SQLITE_OK);
    const QByteArray sql = u"CREATE TABLE t (v %1); INSERT INTO t VALUES (%2)"_s.arg(type, value).toUtf8();
    const int result = sqlite3_exec(database, sql.constData(), nullptr, nullptr, nullptr);
    sqlite3_close(database);
    QCOMPARE(result, SQLITE_OK);
    QCOMPARE(answer(u"SELECT v FROM t"_s), QStringList({ u"v"_s, text }));
}

void tst_SqlOdbc::unreachableDatabasesAreRefused_data()
{
    QTest::addColumn<QString>("url");

    QTest::newRow("data source") << u"odbc:DSN=costs"_s;
    QTest::newRow("driver") << u"odbc:Driver=Unknown;Database=x"_s;
}

void tst_SqlOdbc::unreachableDatabasesAreRefused()
{
    QFETCH(QString, url);
    const QStringList lines = Rows::answer(url, u"SELECT 1"_s);
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].startsWith(url + u": cannot be opened: "_s), qPrintable(lines[0]));
}

void tst_SqlOdbc::badQueriesAreRefused()
{
    const QStringList lines = answer(u"SELECT * FROM costs"_s);
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].contains(u"no such table: costs"_s), qPrintable(lines[0]));
}

void tst_SqlOdbc::onlySingleQueriesThatReadAreAsked_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<bool>("isAsked");

    QTest::newRow("SELECT") << u"SELECT 1 AS a"_s << true;
    QTest::newRow("semicolon") << u" select 1 AS a ; "_s << true;
    QTest::newRow("WITH") << u"WITH x AS (SELECT 1 AS a) SELECT a FROM x"_s << true;
    QTest::newRow("INSERT") << u"INSERT INTO prices (name) VALUES ('x')"_s << false;
    QTest::newRow("DROP") << u"DROP TABLE prices"_s << false;
    QTest::newRow("second statement") << u"SELECT 1 AS a; DROP TABLE prices"_s << false;
    QTest::newRow("procedure") << u"{call x}"_s << false;
    QTest::newRow("longer word") << u"SELECTED"_s << false;
}

void tst_SqlOdbc::onlySingleQueriesThatReadAreAsked()
{
    QFETCH(QString, query);
    QFETCH(bool, isAsked);
    const QStringList lines = answer(query);
    const QString refusal
        = u"odbc:DSN=prices: the query is not a single one that begins with SELECT, WITH, VALUES or "
          "TABLE; a \";\" can only be its end"_s;
    QCOMPARE(lines.last(), isAsked ? u"1"_s : refusal);
}

void tst_SqlOdbc::changesAreTakenBack()
{
    const QStringList before = answer(u"SELECT * FROM prices"_s);
    QCOMPARE(before.size(), 4);
    const QStringList lines = answer(u"WITH x AS (SELECT 1) INSERT INTO prices (name) SELECT * FROM x"_s);
    QCOMPARE(lines, QStringList(u"odbc:DSN=prices: the query gives no columns; let it be a SELECT"_s));
    QCOMPARE(answer(u"SELECT * FROM prices"_s), before);
}

void tst_SqlOdbc::rowsAndValuesAreLimited()
{
    SqlSource::Options options;
    options.maxRows = 2;
    options.maxValueBytes = 5;
    QCOMPARE(answer(u"SELECT name FROM prices ORDER BY stock"_s, options),
        QStringList({ u"name"_s, u"odbc:DSN=prices: row 1: column \"name\" holds more than 5 bytes"_s,
            u"Käse"_s, u"odbc:DSN=prices: the query gives more than 2 rows; let it choose fewer"_s }));
}

QTEST_GUILESS_MAIN(tst_SqlOdbc)
#include "tst_sqlodbc.moc"
