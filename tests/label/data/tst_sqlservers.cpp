// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/data/memory.h"
#include "tests/label/data/postgresserver.h"
#include "tests/label/data/rows.h"

#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryFile>
#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto setupName = "setup"_L1;

} // namespace

/// SqlSource on a PostgreSQL server: what is read, what a query cannot do, and who may ask.
class tst_SqlServers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void rowsComeInOrder();
    void valuesAreText_data();
    void valuesAreText();
    void bytesThatAreNoTextBreakTheRow();
    void emptyAnswersHaveColumns();
    void badQueriesAreRefused_data();
    void badQueriesAreRefused();
    void queriesOnlyRead_data();
    void queriesOnlyRead();
    void failuresAmongTheRowsEndThem();
    void longWorkIsStopped_data();
    void longWorkIsStopped();
    void slowReadersGetAllRows();
    void valuesAreLimited();
    void rowsAreLimited();
    void rowsAreNotKept();
    void noticesAreNotShown();
    void passwordsComeFromFilesAndTheEnvironment_data();
    void passwordsComeFromFilesAndTheEnvironment();
    void unreachableDatabasesAreRefused_data();
    void unreachableDatabasesAreRefused();
    void usersReadWhatTheyMay();

private:
    void execute(const QString &sql) const;
    [[nodiscard]] QString content() const;
    [[nodiscard]] QString url(const QString &user = PostgresServer::user()) const
    {
        return u"postgresql://%1@127.0.0.1:%2/postgres"_s.arg(user).arg(m_server->port());
    }
    [[nodiscard]] QString name() const { return url(); }
    /// Through a socket that holds far less than one of the network does.
    [[nodiscard]] QString socketUrl(const QString &user = PostgresServer::user()) const
    {
        return u"postgresql://%1@%2:%3/postgres"_s.arg(user,
            QString::fromLatin1(m_server->socketFolder().toUtf8().toPercentEncoding()),
            QString::number(m_server->port()));
    }
    [[nodiscard]] QStringList answer(const QString &query, const SqlSource::Options &options = {}) const
    {
        return Rows::answer(url(), query, options);
    }

    std::unique_ptr<PostgresServer> m_server;
};

void tst_SqlServers::initTestCase()
{
    m_server = std::make_unique<PostgresServer>();
    QVERIFY2(m_server->error().isEmpty(), qPrintable(m_server->error()));
    execute(u"CREATE TABLE prices (name text, price numeric(8, 2), stock integer);"
            "INSERT INTO prices VALUES ('Apple', 1.5, 12), ('Pear|Quince', 0.1, NULL), ('Käse', 3, 0);"
            "CREATE SEQUENCE numbers"_s);
}

void tst_SqlServers::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    qputenv("PGPASSWORD", PostgresServer::password().toUtf8());
}

void tst_SqlServers::cleanup()
{
    QCOMPARE(QSqlDatabase::connectionNames(), QStringList());
}

void tst_SqlServers::execute(const QString &sql) const
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QPSQL"_s, setupName);
        database.setHostName(u"127.0.0.1"_s);
        database.setPort(m_server->port());
        database.setDatabaseName(u"postgres"_s);
        database.setUserName(PostgresServer::user());
        database.setPassword(PostgresServer::password());
        QVERIFY2(database.open(), qPrintable(database.lastError().text()));
        QSqlQuery query(database);
        QVERIFY2(query.exec(sql), qPrintable(query.lastError().text()));
    }
    QSqlDatabase::removeDatabase(setupName);
}

QString tst_SqlServers::content() const
{
    return answer(u"SELECT * FROM prices ORDER BY name"_s).join(u'\n')
        + answer(u"SELECT relname FROM pg_class WHERE relname = 'x'"_s).join(u'\n');
}

void tst_SqlServers::rowsComeInOrder()
{
    Problems problems;
    const std::unique_ptr<SqlSource> source
        = Rows::open(url(), u"SELECT name, price, stock FROM prices ORDER BY stock;"_s, problems);
    QCOMPARE(Rows::texts(problems), QStringList());
    QVERIFY(source);
    QCOMPARE(source->columns(), QStringList({ u"name"_s, u"price"_s, u"stock"_s }));
    QCOMPARE(source->total(), std::nullopt);
    const QList<QStringList> expected { { u"Käse"_s, u"3.00"_s, u"0"_s }, { u"Apple"_s, u"1.50"_s, u"12"_s },
        { u"Pear|Quince"_s, u"0.10"_s, u""_s } };
    for (qsizetype i = 0; i < expected.size(); ++i) {
        const RowResult result = source->next();
        QCOMPARE(result.kind, RowResult::Data);
        QCOMPARE(result.row.number, i + 1);
        QCOMPARE(result.row.values, expected[i]);
        QCOMPARE(result.row.address, name() + u": row %1"_s.arg(i + 1));
    }
    QCOMPARE(source->next().kind, RowResult::End);
    QCOMPARE(source->next().kind, RowResult::End);
}

void tst_SqlServers::valuesAreText_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("NULL") << u"NULL::integer"_s << u""_s;
    QTest::newRow("text") << u"'it''s \\ Käse'"_s << u"it's \\ Käse"_s;
    QTest::newRow("fixed length") << u"'ab'::char(3)"_s << u"ab "_s;
    QTest::newRow("integer") << u"1000000"_s << u"1000000"_s;
    QTest::newRow("small integer") << u"7::smallint"_s << u"7"_s;
    QTest::newRow("large integer") << u"9223372036854775807"_s << u"9223372036854775807"_s;
    QTest::newRow("numeric") << u"12.50"_s << u"12.50"_s;
    QTest::newRow("long numeric") << u"12345678901234567890.12345678901234567890"_s
                                  << u"12345678901234567890.12345678901234567890"_s;
    QTest::newRow("double") << u"0.1::double precision"_s << u"0.1"_s;
    QTest::newRow("sum of doubles") << u"0.1::float8 + 0.2::float8"_s << u"0.30000000000000004"_s;
    QTest::newRow("single") << u"1.1::real"_s << u"1.1"_s;
    QTest::newRow("whole double") << u"1000000::float8"_s << u"1000000"_s;
    QTest::newRow("not a number") << u"'NaN'::float8"_s << u"nan"_s;
    QTest::newRow("true") << u"true"_s << u"true"_s;
    QTest::newRow("false") << u"false"_s << u"false"_s;
    QTest::newRow("date") << u"date '2026-11-22'"_s << u"2026-11-22"_s;
    QTest::newRow("time") << u"time '10:20:30'"_s << u"10:20:30"_s;
    QTest::newRow("time with parts") << u"time '10:20:30.25'"_s << u"10:20:30.250"_s;
    QTest::newRow("timestamp") << u"timestamp '2026-11-22 10:20:30'"_s << u"2026-11-22T10:20:30"_s;
    QTest::newRow("timestamp with a zone")
        << u"timestamptz '2026-11-22 10:20:30+00'"_s
        << QDateTime(QDate(2026, 11, 22), QTime(10, 20, 30), Qt::UTC).toLocalTime().toString(Qt::ISODate);
    QTest::newRow("interval") << u"interval '90 minutes'"_s << u"01:30:00"_s;
    QTest::newRow("money") << u"12.5::money"_s << u"$12.50"_s;
    QTest::newRow("bytes of text") << u"'\\x4bc3a47365'::bytea"_s << u"Käse"_s;
    QTest::newRow("list") << u"ARRAY[1, 2]"_s << u"{1,2}"_s;
    QTest::newRow("JSON") << u"'{\"a\": 1}'::jsonb"_s << u"{\"a\": 1}"_s;
    QTest::newRow("identifier") << u"'A0EEBC99-9C0B-4EF8-BB6D-6BB9BD380A11'::uuid"_s
                                << u"a0eebc99-9c0b-4ef8-bb6d-6bb9bd380a11"_s;
    QTest::newRow("placeholders") << u"'?' || ':name'"_s << u"?:name"_s;
    QTest::newRow("quotes of all kinds") << u"$a$it's $$ \" \\' $a$"_s << u"it's $$ \" \\' "_s;
}

void tst_SqlServers::valuesAreText()
{
    QFETCH(QString, value);
    QFETCH(QString, text);
    QCOMPARE(answer(u"SELECT %1 AS v"_s.arg(value)), QStringList({ u"v"_s, text }));
}

void tst_SqlServers::bytesThatAreNoTextBreakTheRow()
{
    QCOMPARE(answer(u"SELECT 1 AS a, '\\x41'::bytea AS b UNION ALL SELECT 2, '\\xff00' ORDER BY a"_s),
        QStringList({ u"a|b"_s, u"1|A"_s,
            name()
                + u": row 2: column \"b\" holds bytes that are no UTF-8 text; leave it out of the query"_s }));
}

void tst_SqlServers::emptyAnswersHaveColumns()
{
    QCOMPARE(answer(u"SELECT name, price FROM prices WHERE price > 100"_s), QStringList(u"name|price"_s));
    QCOMPARE(answer(u"SELECT name, 1 AS name FROM prices WHERE price > 100"_s),
        QStringList(name() + u": column 2: has the name of column 1, \"name\"; rename one of them"_s));
}

void tst_SqlServers::badQueriesAreRefused_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("problem");

    QTest::newRow("blank") << u" "_s << u"there is no query; write one that begins with SELECT"_s;
    QTest::newRow("comment") << u"-- nothing"_s
                             << u"the query is not a single one that reads; let it be a SELECT"_s;
    QTest::newRow("unknown table") << u"SELECT * FROM price"_s << u"relation \"price\" does not exist"_s;
    QTest::newRow("no SQL") << u"prices"_s << u"syntax error at or near \"prices\""_s;
    QTest::newRow("placeholder") << u"SELECT $1 AS a"_s << u"there is no parameter $1"_s;
}

void tst_SqlServers::badQueriesAreRefused()
{
    QFETCH(QString, query);
    QFETCH(QString, problem);
    QCOMPARE(answer(query), QStringList(name() + u": "_s + problem));
}

void tst_SqlServers::queriesOnlyRead_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QString>("problem"); ///< in part

    const QString notSingle = u"the query is not a single one that reads; let it be a SELECT"_s;
    const QString notReading = u"the query does more than read; let it be a SELECT"_s;
    QTest::newRow("INSERT") << u"INSERT INTO prices VALUES ('x')"_s << notSingle;
    QTest::newRow("INSERT RETURNING") << u"INSERT INTO prices VALUES ('x') RETURNING name"_s << notReading;
    QTest::newRow("WITH INSERT")
        << u"WITH x AS (INSERT INTO prices VALUES ('x') RETURNING name) SELECT * FROM x"_s << notReading;
    QTest::newRow("UPDATE") << u"UPDATE prices SET price = 0"_s << notSingle;
    QTest::newRow("DELETE") << u"DELETE FROM prices"_s << notSingle;
    QTest::newRow("DROP") << u"DROP TABLE prices"_s << notSingle;
    QTest::newRow("SELECT INTO") << u"SELECT 1 AS a INTO x"_s << notSingle;
    QTest::newRow("CREATE AS") << u"CREATE TABLE x AS SELECT 1 AS a"_s << notSingle;
    QTest::newRow("COPY TO PROGRAM") << u"COPY prices TO PROGRAM 'cat'"_s << notSingle;
    QTest::newRow("CALL") << u"CALL x()"_s << u"procedure x() does not exist"_s;
    QTest::newRow("COMMIT") << u"COMMIT"_s << notSingle;
    QTest::newRow("SET") << u"SET statement_timeout = 0"_s << notSingle;
    QTest::newRow("SET TRANSACTION") << u"SET TRANSACTION READ WRITE"_s << notSingle;
    QTest::newRow("two queries") << u"SELECT 1 AS a; SELECT 2 AS a"_s << notSingle;
    QTest::newRow("a second statement") << u"SELECT 1 AS a; DROP TABLE prices"_s << notSingle;
    QTest::newRow("a second transaction")
        << u"SELECT 1 AS a; COMMIT; SET SESSION CHARACTERISTICS AS TRANSACTION READ WRITE; DROP TABLE prices"_s
        << notSingle;
    QTest::newRow("out of the quotes") << u"SELECT 1'); COMMIT; DROP TABLE prices; --"_s << u"unterminated"_s;
    QTest::newRow("out of the dollars") << u"SELECT 1 END$$; COMMIT; DROP TABLE prices; --"_s << notSingle;
    QTest::newRow("writes by a function")
        << u"SELECT set_config('transaction_read_only', 'off', false) AS a, nextval('numbers')"_s
        << u"transaction read-write mode must be set before any query"_s;
    QTest::newRow("sequence") << u"SELECT nextval('numbers') AS a"_s << notReading;
    QTest::newRow("rows locked") << u"SELECT name FROM prices FOR UPDATE"_s << notReading;
    QTest::newRow("rows written by text")
        << u"SELECT * FROM query_to_xml('DROP TABLE prices', true, true, '')"_s << u""_s;
}

void tst_SqlServers::queriesOnlyRead()
{
    QFETCH(QString, query);
    QFETCH(QString, problem);
    const QString before = content();
    const QStringList lines = answer(query);
    QVERIFY2(lines.last().startsWith(name() + u": "_s), qPrintable(lines.join(u'\n')));
    QVERIFY2(lines.last().contains(problem), qPrintable(lines.join(u'\n')));
    QCOMPARE(content(), before);
}

void tst_SqlServers::failuresAmongTheRowsEndThem()
{
    const QString query = u"SELECT 10 / (4 - i) AS a FROM generate_series(1, 9) AS i"_s;
    QCOMPARE(
        answer(query), QStringList({ u"a"_s, u"3"_s, u"5"_s, u"10"_s, name() + u": division by zero"_s }));
    Problems problems;
    const std::unique_ptr<SqlSource> source = Rows::open(url(), query, problems);
    QVERIFY(source);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(source->next().kind, RowResult::Data);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(source->next().kind, RowResult::Failed);
}

void tst_SqlServers::longWorkIsStopped_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QStringList>("before");

    QTest::newRow("endless") << u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i FROM n) "
                                "SELECT count(*) AS a FROM n"_s
                             << QStringList();
    QTest::newRow("sleep") << u"SELECT pg_sleep(60)::text AS a"_s << QStringList();
    QTest::newRow("sleep after a row")
        << u"SELECT pg_sleep((i - 1) * 60)::text || i AS a FROM generate_series(1, 2) i"_s
        << QStringList { u"a"_s, u"1"_s };
    QTest::newRow("limit taken away")
        << u"SELECT i || set_config('statement_timeout', '0', false) || pg_sleep((i - 1) * 60) AS a "
           "FROM generate_series(1, 2) i"_s
        << QStringList { u"a"_s, u"10"_s };
}

void tst_SqlServers::longWorkIsStopped()
{
    QFETCH(QString, query);
    QFETCH(QStringList, before);
    SqlSource::Options options;
    options.patience = 400ms;
    QCOMPARE(answer(query, options),
        before
            + QStringList(name()
                + u": the query works for more than 0.4 s without giving a row; let it choose fewer rows, or "
                  u"give the "
                  "tables an index"_s));
}

/// The server waits for those who read its rows, and takes that for its own time.
void tst_SqlServers::slowReadersGetAllRows()
{
    SqlSource::Options options;
    options.patience = 1000ms;
    Problems problems;
    const std::unique_ptr<SqlSource> source = Rows::open(socketUrl(),
        u"SELECT i, repeat('x', 10000) AS t FROM generate_series(1, 1000) AS i"_s, problems, options);
    QVERIFY(source);
    qint64 rows = 0;
    RowResult result;
    while ((result = source->next()).kind == RowResult::Data) {
        if (++rows % 400 == 0)
            QTest::qSleep(1200);
    }
    QCOMPARE(result.problem.text(), QString());
    QCOMPARE(result.kind, RowResult::End);
    QCOMPARE(rows, 1000);
}

void tst_SqlServers::valuesAreLimited()
{
    Problems problems;
    const std::unique_ptr<SqlSource> source = Rows::open(url(),
        u"SELECT repeat('ä', 8000000) || repeat('x', i) AS a FROM generate_series(0, 1) AS i"_s, problems);
    QVERIFY(source);
    const RowResult largest = source->next();
    QCOMPARE(largest.kind, RowResult::Data);
    QCOMPARE(largest.row.values[0].toUtf8().size(), LabelLimits::MaxValueBytes);
    QCOMPARE(
        source->next().problem.text(), name() + u": row 2: column \"a\" holds more than 16000000 bytes"_s);
    QCOMPARE(source->next().kind, RowResult::End);
}

void tst_SqlServers::rowsAreLimited()
{
    SqlSource::Options options;
    options.maxRows = 3;
    const QString query = u"SELECT i AS a FROM generate_series(1, %1) AS i"_s;
    QCOMPARE(answer(query.arg(3), options), QStringList({ u"a"_s, u"1"_s, u"2"_s, u"3"_s }));
    QCOMPARE(answer(query.arg(4), options),
        QStringList({ u"a"_s, u"1"_s, u"2"_s, u"3"_s,
            name() + u": the query gives more than 3 rows; let it choose fewer"_s }));
}

void tst_SqlServers::rowsAreNotKept()
{
    Problems problems;
    const std::unique_ptr<SqlSource> source = Rows::open(
        url(), u"SELECT i, repeat('x', 1000) AS t FROM generate_series(1, 100000) AS i"_s, problems);
    QVERIFY(source);
    const qint64 before = Memory::mebibytes("VmRSS:");
    qint64 most = 0;
    qint64 rows = 0;
    while (source->next().kind == RowResult::Data) {
        if (++rows % 1000 == 0)
            most = std::max(most, Memory::mebibytes("VmRSS:"));
    }
    QCOMPARE(rows, 100'000);
    QVERIFY2(most - before < 30 + Memory::extra, QByteArray::number(most - before).constData());
}

void tst_SqlServers::noticesAreNotShown()
{
    execute(u"CREATE OR REPLACE FUNCTION noisy() RETURNS integer LANGUAGE plpgsql AS "
            "$$BEGIN RAISE WARNING 'noise'; RETURN 1; END$$"_s);
    QTemporaryFile file;
    QVERIFY(file.open());
    const int before = ::dup(STDERR_FILENO);
    ::dup2(file.handle(), STDERR_FILENO);
    const QStringList lines = answer(u"SELECT noisy() AS a"_s);
    ::dup2(before, STDERR_FILENO);
    ::close(before);
    QCOMPARE(lines, QStringList({ u"a"_s, u"1"_s }));
    QCOMPARE(file.size(), 0);
}

void tst_SqlServers::passwordsComeFromFilesAndTheEnvironment_data()
{
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("reason"); ///< empty if it is let in

    const QString right = PostgresServer::password();
    const QString wrong = u"password authentication failed for user \"owner\""_s;
    QTest::newRow("variable") << u"PGPASSWORD"_s << right << QString();
    QTest::newRow("variable, wrong") << u"PGPASSWORD"_s << u"unfit"_s << wrong;
    QTest::newRow("libpq's file") << u"PGPASSFILE"_s << right << QString();
    QTest::newRow("libpq's file, wrong") << u"PGPASSFILE"_s << u"unfit"_s << wrong;
    QTest::newRow("password file") << u"file"_s << right << QString();
    QTest::newRow("password file, more than a line") << u"file"_s << right + u"\r\nnote\n"_s << QString();
    QTest::newRow("password file, wrong") << u"file"_s << u"unfit"_s << wrong;
    QTest::newRow("password file, wrong with blanks") << u"file"_s << u" unfit' host='x "_s << wrong;
    QTest::newRow("none") << u"none"_s << u"unfit"_s << u"fe_sendauth: no password supplied"_s;
}

void tst_SqlServers::passwordsComeFromFilesAndTheEnvironment()
{
    QFETCH(QString, place);
    QFETCH(QString, password);
    QFETCH(QString, reason);
    QTemporaryDir folder;
    const bool isOfLibpq = place == u"PGPASSFILE";
    const QString entry = u"127.0.0.1:%1:*:%2:"_s.arg(m_server->port()).arg(PostgresServer::user());
    QFile file(folder.filePath(u"password"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write((isOfLibpq ? entry + password : password).toUtf8()) > 0);
    file.close();
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner));

    qputenv("PGPASSFILE", isOfLibpq ? file.fileName().toLocal8Bit() : "/nowhere");
    qunsetenv("PGPASSWORD");
    if (place == u"PGPASSWORD")
        qputenv("PGPASSWORD", password.toUtf8());
    SqlSource::Options options;
    if (place == u"file")
        options.passwordFile = file.fileName();
    const QStringList lines = answer(u"SELECT 1 AS a"_s, options);
    qunsetenv("PGPASSFILE");
    if (reason.isEmpty()) {
        QCOMPARE(lines, QStringList({ u"a"_s, u"1"_s }));
        return;
    }
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].startsWith(name() + u": cannot be opened: "_s), qPrintable(lines[0]));
    QVERIFY2(lines[0].contains(reason), qPrintable(lines[0]));
    QVERIFY2(
        lines[0].endsWith(u"; is the password right? it comes from a password file, or for PostgreSQL from "
                          "PGPASSWORD or ~/.pgpass"_s),
        qPrintable(lines[0]));
    QVERIFY(!lines[0].contains(u"unfit"_s));
}

void tst_SqlServers::unreachableDatabasesAreRefused_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("reason");

    const QString port = QString::number(m_server->port());
    QTest::newRow("nobody listens") << u"postgresql://owner@127.0.0.1:1/postgres"_s
                                    << u"Connection refused"_s;
    QTest::newRow("unknown database")
        << u"postgresql://owner@127.0.0.1:%1/shop"_s.arg(port) << u"database \"shop\" does not exist"_s;
    QTest::newRow("name of a database that is none")
        << u"postgresql://owner@127.0.0.1:%1/x%27%20host%3D%27y"_s.arg(port) << u"does not exist"_s;
    QTest::newRow("no TLS") << u"postgresql://owner@127.0.0.1:%1/postgres?sslmode=require"_s.arg(port)
                            << u"server does not support SSL, but SSL was required"_s;
}

void tst_SqlServers::unreachableDatabasesAreRefused()
{
    QFETCH(QString, url);
    QFETCH(QString, reason);
    const QStringList lines = Rows::answer(url, u"SELECT 1 AS a"_s);
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].contains(u": cannot be opened: "_s), qPrintable(lines[0]));
    QVERIFY2(lines[0].contains(reason), qPrintable(lines[0]));
}

void tst_SqlServers::usersReadWhatTheyMay()
{
    execute(u"CREATE ROLE guest LOGIN PASSWORD 'guest word'; "
            "CREATE TABLE costs (cost integer); GRANT SELECT ON prices TO guest"_s);
    qputenv("PGPASSWORD", "guest word");
    QCOMPARE(Rows::answer(socketUrl(u"guest"_s), u"SELECT count(*) AS a FROM prices"_s).join(u'|'), u"a|3"_s);
    QCOMPARE(Rows::answer(url(u"guest"_s), u"SELECT cost FROM costs"_s),
        QStringList(url(u"guest"_s) + u": permission denied for table costs"_s));
}

QTEST_GUILESS_MAIN(tst_SqlServers)
#include "tst_sqlservers.moc"
