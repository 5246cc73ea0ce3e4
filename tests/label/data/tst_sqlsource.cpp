// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/data/memory.h"
#include "tests/label/data/rows.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

#include <ctime>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Endless numbers.
const QString endless = u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "_s;

} // namespace

/// SqlSource on SQLite files: what is read, and what a query cannot do.
class tst_SqlSource : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void rowsComeInOrder();
    void valuesAreText_data();
    void valuesAreText();
    void bytesThatAreNoTextBreakTheRow();
    void columnsNeedNames();
    void emptyAnswersHaveColumns();
    void endAndFailureStay();
    void badQueriesAreRefused_data();
    void badQueriesAreRefused();
    void unusableFilesAreRefused_data();
    void unusableFilesAreRefused();
    void missingFilesAreNotMade();
    void databasesInUseCanBeRead();
    void queriesOnlyRead_data();
    void queriesOnlyRead();
    void schemasAreNotChanged();
    void readingIsAllowed_data();
    void readingIsAllowed();
    void endlessWorkIsStopped_data();
    void endlessWorkIsStopped();
    void timeIsForEachRow();
    void memoryIsLimited_data();
    void memoryIsLimited();
    void valuesAreLimited();
    void rowsAreLimited();
    void rowsAreNotKept();
    void sourcesAreIndependent();

private:
    void execute(const QByteArray &sql) const;
    [[nodiscard]] QByteArray content() const
    {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    [[nodiscard]] QStringList filesThere() const
    {
        return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    [[nodiscard]] QString path() const { return m_folder->filePath(u"prices.db"_s); }
    [[nodiscard]] QStringList answer(const QString &query, const SqlSource::Options &options = {}) const
    {
        return Rows::answer(u"sqlite:prices.db"_s, query, options, m_folder->path());
    }
    [[nodiscard]] std::unique_ptr<SqlSource> open(
        const QString &query, const SqlSource::Options &options = {}) const
    {
        Problems problems;
        return Rows::open(u"sqlite:prices.db"_s, query, problems, options, m_folder->path());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_SqlSource::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    execute(
        "CREATE TABLE prices (name TEXT, price REAL, stock INTEGER); CREATE INDEX byName ON prices (name);"
        "INSERT INTO prices VALUES ('Apple', 1.5, 12), ('Pear|Quince', 0.1, NULL), ('Käse', 3, 0);");
}

void tst_SqlSource::cleanup()
{
    QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
}

void tst_SqlSource::execute(const QByteArray &sql) const
{
    sqlite3 *database = nullptr;
    QCOMPARE(sqlite3_open(QFile::encodeName(path()).constData(), &database), SQLITE_OK);
    const int result = sqlite3_exec(database, sql.constData(), nullptr, nullptr, nullptr);
    const QByteArray message = sqlite3_errmsg(database);
    sqlite3_close(database);
    QVERIFY2(result == SQLITE_OK, message.constData());
}

void tst_SqlSource::rowsComeInOrder()
{
    const std::unique_ptr<SqlSource> source = open(u"SELECT name, price, stock FROM prices ORDER BY name"_s);
    QVERIFY(source);
    QCOMPARE(source->columns(), QStringList({ u"name"_s, u"price"_s, u"stock"_s }));
    QCOMPARE(source->total(), std::nullopt);
    const QList<QStringList> expected { { u"Apple"_s, u"1.5"_s, u"12"_s }, { u"Käse"_s, u"3"_s, u"0"_s },
        { u"Pear|Quince"_s, u"0.1"_s, u""_s } };
    for (qsizetype i = 0; i < expected.size(); ++i) {
        const RowResult result = source->next();
        QCOMPARE(result.kind, RowResult::Data);
        QCOMPARE(result.row.number, i + 1);
        QCOMPARE(result.row.values, expected[i]);
        QCOMPARE(result.row.address, u"prices.db: row %1"_s.arg(i + 1));
    }
    QCOMPARE(source->next().kind, RowResult::End);
}

void tst_SqlSource::valuesAreText_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("NULL") << u"NULL"_s << u""_s;
    QTest::newRow("text") << u"'it''s'"_s << u"it's"_s;
    QTest::newRow("text of digits") << u"'007'"_s << u"007"_s;
    QTest::newRow("zero") << u"0"_s << u"0"_s;
    QTest::newRow("integer") << u"1000000"_s << u"1000000"_s;
    QTest::newRow("largest integer") << u"9223372036854775807"_s << u"9223372036854775807"_s;
    QTest::newRow("smallest integer") << u"-9223372036854775807 - 1"_s << u"-9223372036854775808"_s;
    QTest::newRow("fraction") << u"0.1"_s << u"0.1"_s;
    QTest::newRow("sum of fractions") << u"0.1 + 0.2"_s << u"0.30000000000000004"_s;
    QTest::newRow("whole real") << u"12.0"_s << u"12"_s;
    QTest::newRow("million, real") << u"1000000.0"_s << u"1000000"_s;
    QTest::newRow("small") << u"0.000001"_s << u"0.000001"_s;
    QTest::newRow("negative") << u"-2.5"_s << u"-2.5"_s;
    QTest::newRow("minus zero") << u"-0.0"_s << u"0"_s;
    QTest::newRow("huge") << u"1e300"_s << u"1e+300"_s;
    QTest::newRow("tiny") << u"1e-300"_s << u"1e-300"_s;
    QTest::newRow("bytes of text") << u"x'4bc3a47365'"_s << u"Käse"_s;
    QTest::newRow("no bytes") << u"x''"_s << u""_s;
    QTest::newRow("date") << u"date('2026-11-22')"_s << u"2026-11-22"_s;
    QTest::newRow("two lines") << u"'a' || char(10) || 'b'"_s << u"a\nb"_s;
    QTest::newRow("beyond 16 bits") << u"char(128512)"_s << u"😀"_s;
}

void tst_SqlSource::valuesAreText()
{
    QFETCH(QString, value);
    QFETCH(QString, text);
    QCOMPARE(answer(u"SELECT %1 AS v"_s.arg(value)), QStringList({ u"v"_s, text }));
}

void tst_SqlSource::bytesThatAreNoTextBreakTheRow()
{
    QCOMPARE(answer(u"SELECT 1 AS a, x'41' AS b UNION ALL SELECT 2, x'ff00' UNION ALL SELECT 3, x'42'"_s),
        QStringList({ u"a|b"_s, u"1|A"_s,
            u"prices.db: row 2: column \"b\" holds bytes that are no UTF-8 text; leave it out of the query"_s,
            u"3|B"_s }));
    const std::unique_ptr<SqlSource> source = open(u"SELECT x'ff' AS b"_s);
    QVERIFY(source);
    const RowResult broken = source->next();
    QCOMPARE(broken.kind, RowResult::Broken);
    QCOMPARE(broken.row.number, 1);
    QCOMPARE(broken.row.address, u"prices.db: row 1"_s);
    QVERIFY(broken.row.values.isEmpty());
}

void tst_SqlSource::columnsNeedNames()
{
    QCOMPARE(answer(u"SELECT 1 AS a, 2 AS b, 3 AS a"_s),
        QStringList(u"prices.db: column 3: has the name of column 1, \"a\"; rename one of them"_s));
    QCOMPARE(answer(u"SELECT 1 AS \"\""_s).size(), 1);
    QVERIFY(answer(u"SELECT 1 AS \"\""_s).first().startsWith(u"prices.db: column 1: has no name"_s));
    QCOMPARE(answer(u"SELECT 1 AS a, 2 AS A"_s), QStringList({ u"a|A"_s, u"1|2"_s }));
}

void tst_SqlSource::emptyAnswersHaveColumns()
{
    QCOMPARE(answer(u"SELECT name, price FROM prices WHERE price > 100"_s), QStringList(u"name|price"_s));
}

void tst_SqlSource::endAndFailureStay()
{
    const std::unique_ptr<SqlSource> ended = open(u"SELECT 1 AS a"_s);
    QVERIFY(ended);
    QCOMPARE(ended->next().kind, RowResult::Data);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(ended->next().kind, RowResult::End);

    const std::unique_ptr<SqlSource> failed
        = open(u"SELECT 1 AS a UNION ALL SELECT abs(-9223372036854775807 - 1)"_s);
    QVERIFY(failed);
    QCOMPARE(failed->next().kind, RowResult::Data);
    for (int i = 0; i < 3; ++i) {
        const RowResult result = failed->next();
        QCOMPARE(result.kind, RowResult::Failed);
        QCOMPARE(result.problem.text(), u"prices.db: integer overflow"_s);
    }
}

void tst_SqlSource::badQueriesAreRefused_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("problem");

    const QString none = u"there is no query; write one that begins with SELECT"_s;
    QTest::newRow("empty") << QString() << none;
    QTest::newRow("blank") << u" \n\t"_s << none;
    QTest::newRow("zero") << u"SELECT 1"_s + QChar() + u"x"_s
                          << u"the query holds a zero character; write one that begins with SELECT"_s;
    QTest::newRow("unknown table") << u"SELECT * FROM price"_s << u"no such table: price"_s;
    QTest::newRow("unknown column") << u"SELECT cost FROM prices"_s << u"no such column: cost"_s;
    QTest::newRow("no SQL") << u"prices"_s << u"near \"prices\": syntax error"_s;
    QTest::newRow("placeholder") << u"SELECT ? AS a"_s << u"Parameter count mismatch"_s;
    QTest::newRow("comment") << u"-- nothing"_s << u"No query"_s;
}

void tst_SqlSource::badQueriesAreRefused()
{
    QFETCH(QString, query);
    QFETCH(QString, problem);
    QCOMPARE(answer(query), QStringList(u"prices.db: "_s + problem));
}

void tst_SqlSource::unusableFilesAreRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("what");

    QTest::newRow("missing") << u"missing.db"_s << u"does not exist"_s;
    QTest::newRow("folder") << u"folder"_s << u"is a folder"_s;
    QTest::newRow("pipe") << u"pipe"_s << u"is no ordinary file"_s;
    QTest::newRow("device") << u"../../../../../../dev/null"_s << u"is no ordinary file"_s;
    QTest::newRow("other file") << u"text"_s << u"file is not a database"_s;
    QTest::newRow("memory") << u":memory:"_s << u"does not exist"_s;
}

void tst_SqlSource::unusableFilesAreRefused()
{
    QFETCH(QString, name);
    QFETCH(QString, what);
    QVERIFY(QDir(m_folder->path()).mkdir(u"folder"_s));
    QCOMPARE(::mkfifo(QFile::encodeName(m_folder->filePath(u"pipe"_s)).constData(), 0600), 0);
    QFile text(m_folder->filePath(u"text"_s));
    QVERIFY(text.open(QIODevice::WriteOnly));
    QCOMPARE(text.write(QByteArray(5000, 'x')), 5000);
    text.close();
    const QString folder = name.startsWith(u"..") ? m_folder->path() : QString();
    QCOMPARE(Rows::answer(u"sqlite:"_s + name, u"SELECT 1"_s, {}, m_folder->path()),
        QStringList(name + u": "_s + what));
}

void tst_SqlSource::missingFilesAreNotMade()
{
    const QStringList before = filesThere();
    QCOMPARE(Rows::answer(u"sqlite:new.db"_s, u"SELECT 1 AS a"_s, {}, m_folder->path()),
        QStringList(u"new.db: does not exist"_s));
    QCOMPARE(filesThere(), before);
}

void tst_SqlSource::databasesInUseCanBeRead()
{
    sqlite3 *writer = nullptr;
    QCOMPARE(sqlite3_open(QFile::encodeName(path()).constData(), &writer), SQLITE_OK);
    const auto run
        = [writer](const char *sql) { return sqlite3_exec(writer, sql, nullptr, nullptr, nullptr); };
    QCOMPARE(run("PRAGMA journal_mode = WAL"), SQLITE_OK);
    QCOMPARE(run("BEGIN; UPDATE prices SET price = 7"), SQLITE_OK);
    const QStringList lines = answer(u"SELECT price FROM prices WHERE name = 'Apple'"_s);
    QCOMPARE(run("COMMIT"), SQLITE_OK);
    const QStringList after = answer(u"SELECT price FROM prices WHERE name = 'Apple'"_s);
    sqlite3_close(writer);
    QCOMPARE(lines, QStringList({ u"price"_s, u"1.5"_s }));
    QCOMPARE(after, QStringList({ u"price"_s, u"7"_s }));
}

void tst_SqlSource::queriesOnlyRead_data()
{
    QTest::addColumn<QString>("query");

    QTest::newRow("INSERT") << u"INSERT INTO prices VALUES ('x', 1, 1)"_s;
    QTest::newRow("INSERT RETURNING") << u"INSERT INTO prices VALUES ('x', 1, 1) RETURNING name"_s;
    QTest::newRow("WITH INSERT") << u"WITH x AS (SELECT 1) INSERT INTO prices SELECT * FROM x, x, x"_s;
    QTest::newRow("UPDATE") << u"UPDATE prices SET price = 0"_s;
    QTest::newRow("DELETE") << u"DELETE FROM prices"_s;
    QTest::newRow("DROP") << u"DROP TABLE prices"_s;
    QTest::newRow("CREATE") << u"CREATE TABLE x (a)"_s;
    QTest::newRow("CREATE TEMP") << u"CREATE TEMP TABLE x (a)"_s;
    QTest::newRow("CREATE VIRTUAL") << u"CREATE VIRTUAL TABLE x USING fts5(a)"_s;
    QTest::newRow("ATTACH") << u"ATTACH 'FOLDER/other.db' AS other"_s;
    QTest::newRow("DETACH") << u"DETACH main"_s;
    QTest::newRow("VACUUM") << u"VACUUM"_s;
    QTest::newRow("VACUUM INTO") << u"VACUUM INTO 'FOLDER/copy.db'"_s;
    QTest::newRow("PRAGMA write") << u"PRAGMA user_version = 7"_s;
    QTest::newRow("PRAGMA journal") << u"PRAGMA journal_mode = WAL"_s;
    QTest::newRow("PRAGMA temporary folder") << u"PRAGMA temp_store_directory = 'FOLDER'"_s;
    QTest::newRow("PRAGMA as a table") << u"SELECT * FROM pragma_table_info('prices')"_s;
    QTest::newRow("BEGIN") << u"BEGIN"_s;
    QTest::newRow("SAVEPOINT") << u"SAVEPOINT x"_s;
    QTest::newRow("REINDEX") << u"REINDEX"_s;
    QTest::newRow("ANALYZE") << u"ANALYZE"_s;
    QTest::newRow("load_extension") << u"SELECT load_extension('FOLDER/x.so') AS a"_s;
    QTest::newRow("Load_Extension") << u"SELECT Load_Extension('FOLDER/x.so', 'main') AS a"_s;
    QTest::newRow("fts3_tokenizer") << u"SELECT fts3_tokenizer('simple') AS a"_s;
}

void tst_SqlSource::queriesOnlyRead()
{
    QFETCH(QString, query);
    query.replace(u"FOLDER"_s, m_folder->path());
    const QByteArray before = content();
    QCOMPARE(answer(query), QStringList(u"prices.db: the query does more than read; let it be a SELECT"_s));
    QCOMPARE(content(), before);
    QCOMPARE(filesThere(), QStringList(u"prices.db"_s));
}

void tst_SqlSource::schemasAreNotChanged()
{
    const QByteArray before = content();
    QCOMPARE(answer(u"UPDATE sqlite_master SET name = 'costs'"_s),
        QStringList(u"prices.db: table sqlite_master may not be modified"_s));
    QCOMPARE(content(), before);
}

void tst_SqlSource::readingIsAllowed_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QStringList>("lines");

    QTest::newRow("VALUES") << u"VALUES (1, 2)"_s << QStringList { u"column1|column2"_s, u"1|2"_s };
    QTest::newRow("WITH") << u"WITH x AS (SELECT 1 AS a) SELECT * FROM x"_s << QStringList { u"a"_s, u"1"_s };
    QTest::newRow("comment in front") << u"/* a */ SELECT 1 AS a -- b"_s << QStringList { u"a"_s, u"1"_s };
    QTest::newRow("semicolon") << u"SELECT 1 AS a; "_s << QStringList { u"a"_s, u"1"_s };
    QTest::newRow("functions") << u"SELECT upper(name) AS a FROM prices WHERE name LIKE 'A%'"_s
                               << QStringList { u"a"_s, u"APPLE"_s };
    QTest::newRow("recursion") << endless + u"SELECT sum(i) AS a FROM (SELECT i FROM n LIMIT 100)"_s
                               << QStringList { u"a"_s, u"5050"_s };
    QTest::newRow("JSON") << u"SELECT value AS a FROM json_each('[1,2]')"_s
                          << QStringList { u"a"_s, u"1"_s, u"2"_s };
    QTest::newRow("schema") << u"SELECT name AS a FROM sqlite_schema"_s
                            << QStringList { u"a"_s, u"prices"_s, u"byName"_s };
    QTest::newRow("full-text search, older")
        << u"SELECT a FROM words4 WHERE a MATCH 'apple'"_s << QStringList { u"a"_s, u"an apple"_s };
    QTest::newRow("full-text search")
        << u"SELECT a FROM words5 WHERE a MATCH 'apple'"_s << QStringList { u"a"_s, u"an apple"_s };
}

void tst_SqlSource::readingIsAllowed()
{
    QFETCH(QString, query);
    QFETCH(QStringList, lines);
    if (query.contains(u"MATCH"_s))
        execute(
            "CREATE VIRTUAL TABLE words4 USING fts4(a); INSERT INTO words4 VALUES ('a pear'), ('an apple');"
            "CREATE VIRTUAL TABLE words5 USING fts5(a); INSERT INTO words5 VALUES ('a pear'), ('an apple');");
    QCOMPARE(answer(query).join(u'\n'), lines.join(u'\n'));
}

void tst_SqlSource::endlessWorkIsStopped_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QStringList>("before");

    QTest::newRow("no row at all") << endless + u"SELECT count(*) AS a FROM n"_s << QStringList();
    QTest::newRow("after a row") << endless + u"SELECT i AS a FROM n WHERE i < 2"_s
                                 << QStringList { u"a"_s, u"1"_s };
    QTest::newRow("many rows, joined")
        << u"WITH x(i) AS (%1SELECT i FROM n LIMIT 2000) SELECT count(*) AS a FROM x AS p, x AS q, x AS r"_s
               .arg(endless)
        << QStringList();
}

void tst_SqlSource::endlessWorkIsStopped()
{
    QFETCH(QString, query);
    QFETCH(QStringList, before);
    SqlSource::Options options;
    options.patience = 200ms;
    QCOMPARE(answer(query, options),
        before
            + QStringList(
                u"prices.db: the query works for more than 0.2 s without giving a row; let it choose "
                "fewer rows, or give the tables an index"_s));
}

void tst_SqlSource::timeIsForEachRow()
{
    SqlSource::Options options;
    options.patience = 500ms;
    const std::unique_ptr<SqlSource> source = open(endless + u"SELECT i AS a FROM n LIMIT 3"_s, options);
    QVERIFY(source);
    for (int i = 0; i < 3; ++i) {
        QTest::qSleep(300);
        QCOMPARE(source->next().kind, RowResult::Data);
    }
    QCOMPARE(source->next().kind, RowResult::End);
}

void tst_SqlSource::memoryIsLimited_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("problem");

    QTest::newRow("huge value") << u"SELECT hex(zeroblob(2000000000)) AS a"_s << u"string or blob too big"_s;
    const QString tooMuch = u"the query takes too much memory; let it choose fewer or smaller columns"_s;
    QStringList columns;
    for (int i = 0; i < 500; ++i)
        columns.append(u"hex(zeroblob(8000000 + %1)) AS c%1"_s.arg(i));
    QTest::newRow("many large values") << u"SELECT "_s + columns.join(u',') << tooMuch;
    // There is room for the values, and none for them as Qt wants them.
    QTest::newRow("a few large values")
        << u"SELECT %1 FROM prices WHERE stock = 12"_s.arg(columns.first(6).join(u','))
               .replace(u"8000000"_s, u"8000000 + stock"_s)
        << tooMuch;
    QStringList doubled { u"WITH v0 AS (SELECT 1 AS a)"_s };
    for (int i = 1; i < 30; ++i)
        doubled.append(
            u"v%1 AS (SELECT x.a FROM v%2 AS x UNION SELECT y.a + 1 FROM v%2 AS y)"_s.arg(i).arg(i - 1));
    QTest::newRow("a thousand million tables") << doubled.join(u", "_s) + u" SELECT a FROM v29"_s << tooMuch;
    QTest::newRow("long work without a loop")
        << u"SELECT "_s + QStringList(30'000, u"abs(random())"_s).join(u',').replace(u"),abs"_s, u") + abs"_s)
        << u"Expression tree is too large (maximum depth 1000)"_s;
    QTest::newRow("many instructions")
        << u"SELECT 1 AS a WHERE random() IN (%1)"_s.arg(QStringList(30'000, u"random()"_s).join(u','))
        << tooMuch;
}

void tst_SqlSource::memoryIsLimited()
{
    QFETCH(QString, query);
    QFETCH(QString, problem);
    QVERIFY(Memory::forgetPeak());
    const qint64 before = Memory::mebibytes("VmRSS:");
    QStringList lines = answer(query);
    const qint64 taken = Memory::mebibytes("VmHWM:") - before;
    QVERIFY2(taken < 500 + Memory::extra, QByteArray::number(taken).constData());
    QCOMPARE(lines.takeLast(), u"prices.db: "_s + problem);
    // The columns at most: no row.
    QVERIFY(lines.size() <= 1);
}

void tst_SqlSource::valuesAreLimited()
{
    // A letter of two bytes each, in a table, beside another value.
    execute("CREATE TABLE t AS SELECT 1 AS a, replace(hex(zeroblob(4000000)), '0', 'ä') AS b;"
            "INSERT INTO t SELECT 2, b || 'x' FROM t; INSERT INTO t VALUES (3, hex(zeroblob(15000000))), (4, "
            "'c');");
    const std::unique_ptr<SqlSource> source = open(u"SELECT a, b FROM t"_s);
    QVERIFY(source);
    const RowResult largest = source->next();
    QCOMPARE(largest.kind, RowResult::Data);
    QCOMPARE(largest.row.values[1].toUtf8().size(), LabelLimits::MaxValueBytes);
    const RowResult larger = source->next();
    QCOMPARE(larger.kind, RowResult::Broken);
    QCOMPARE(larger.problem.text(), u"prices.db: row 2: column \"b\" holds more than 16000000 bytes"_s);
    QCOMPARE(source->next().kind, RowResult::Broken);
    QCOMPARE(source->next().row.values, QStringList({ u"4"_s, u"c"_s }));
    QCOMPARE(source->next().kind, RowResult::End);
}

void tst_SqlSource::rowsAreLimited()
{
    SqlSource::Options options;
    options.maxRows = 3;
    const QString query = endless + u"SELECT i AS a FROM n LIMIT %1"_s;
    QCOMPARE(answer(query.arg(3), options), QStringList({ u"a"_s, u"1"_s, u"2"_s, u"3"_s }));
    QCOMPARE(answer(query.arg(4), options),
        QStringList({ u"a"_s, u"1"_s, u"2"_s, u"3"_s,
            u"prices.db: the query gives more than 3 rows; let it choose fewer"_s }));
}

void tst_SqlSource::rowsAreNotKept()
{
    const std::unique_ptr<SqlSource> source = open(endless + u"SELECT i AS a FROM n"_s);
    QVERIFY(source);
    QVERIFY(Memory::forgetPeak());
    const qint64 before = Memory::mebibytes("VmRSS:");
    qint64 rows = 0;
    RowResult result;
    while ((result = source->next()).kind == RowResult::Data)
        ++rows;
    QCOMPARE(rows, 1'000'000);
    QCOMPARE(result.kind, RowResult::Failed);
    QCOMPARE(
        result.problem.text(), u"prices.db: the query gives more than 1000000 rows; let it choose fewer"_s);
    const qint64 taken = Memory::mebibytes("VmHWM:") - before;
    QVERIFY2(taken < 20 + Memory::extra, QByteArray::number(taken).constData());
}

void tst_SqlSource::sourcesAreIndependent()
{
    const QString query = u"SELECT name FROM prices ORDER BY name"_s;
    std::unique_ptr<SqlSource> first = open(query);
    const std::unique_ptr<SqlSource> second = open(query);
    QVERIFY(first && second);
    QCOMPARE(first->next().row.values, QStringList(u"Apple"_s));
    QCOMPARE(second->next().row.values, QStringList(u"Apple"_s));
    first.reset();
    QCOMPARE(second->next().row.values, QStringList(u"Käse"_s));
}

QTEST_GUILESS_MAIN(tst_SqlSource)
#include "tst_sqlsource.moc"
