// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/data/odbcsetup.h"
#include "tests/label/data/postgresserver.h"
#include "tests/label/data/rows.h"

#include <QRegularExpression>
#include <QSqlDatabase>
#include <QTest>

using namespace Qt::StringLiterals;

/// SqlSource through ODBC on a server that asks for passwords and can be written to.
class tst_SqlOdbcServer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }
    void cleanup() { QCOMPARE(QSqlDatabase::connectionNames(), QStringList()); }

    void valuesAreText_data();
    void valuesAreText();
    void passwordsComeFromAFile_data();
    void passwordsComeFromAFile();
    void changesAreTakenBack_data();
    void changesAreTakenBack();

private:
    [[nodiscard]] QString url() const
    {
        return u"odbc:Driver=Server;Server=127.0.0.1;Port=%1;Database=postgres;UID=%2"_s.arg(m_server->port())
            .arg(PostgresServer::user());
    }
    [[nodiscard]] QStringList answer(
        const QString &query, const QString &password = PostgresServer::password()) const;

    std::unique_ptr<OdbcSetup> m_odbc;
    std::unique_ptr<PostgresServer> m_server;
};

void tst_SqlOdbcServer::initTestCase()
{
    m_odbc = std::make_unique<OdbcSetup>(u"Server"_s, u"psqlodbcw.so"_s);
    QVERIFY2(m_odbc->hasDriver(), "there is no ODBC driver for PostgreSQL: install odbc-postgresql");
    m_server = std::make_unique<PostgresServer>();
    QVERIFY2(m_server->error().isEmpty(), qPrintable(m_server->error()));
}

QStringList tst_SqlOdbcServer::answer(const QString &query, const QString &password) const
{
    QFile file(m_odbc->path(u"password"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(password.toUtf8() + '\n') < 0
        || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner))
        return { u"no password file"_s };
    file.close();
    SqlSource::Options options;
    options.passwordFile = file.fileName();
    return Rows::answer(url(), query, options);
}

void tst_SqlOdbcServer::valuesAreText_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("NULL") << u"NULL::integer"_s << u""_s;
    QTest::newRow("NULL, truth") << u"NULL::boolean"_s << u""_s;
    QTest::newRow("text") << u"'it''s Käse 😀'::varchar(50)"_s << u"it's Käse 😀"_s;
    QTest::newRow("integer") << u"1000000"_s << u"1000000"_s;
    QTest::newRow("large integer") << u"9223372036854775807"_s << u"9223372036854775807"_s;
    QTest::newRow("numeric") << u"12.50::numeric(8, 2)"_s << u"12.50"_s;
    QTest::newRow("double") << u"0.1::float8"_s << u"0.1"_s;
    QTest::newRow("whole double") << u"1000000::float8"_s << u"1000000"_s;
    QTest::newRow("large double") << u"1e14::float8"_s << u"100000000000000"_s;
    QTest::newRow("single") << u"1.5::real"_s << u"1.5"_s;
    QTest::newRow("date") << u"date '2026-11-22'"_s << u"2026-11-22"_s;
    QTest::newRow("time") << u"time '10:20:30'"_s << u"10:20:30"_s;
    QTest::newRow("timestamp") << u"timestamp '2026-11-22 10:20:30'"_s << u"2026-11-22T10:20:30"_s;
}

void tst_SqlOdbcServer::valuesAreText()
{
    QFETCH(QString, value);
    QFETCH(QString, text);
    QCOMPARE(answer(u"SELECT %1 AS v"_s.arg(value)).join(u'|'), u"v|"_s + text);
}

void tst_SqlOdbcServer::passwordsComeFromAFile_data()
{
    QTest::addColumn<QString>("password");
    QTest::addColumn<bool>("isRight");

    QTest::newRow("right") << PostgresServer::password() << true;
    QTest::newRow("wrong") << u"unfit"_s << false;
    QTest::newRow("wrong, with marks") << u"unfit};Database={x"_s << false;
}

void tst_SqlOdbcServer::passwordsComeFromAFile()
{
    QFETCH(QString, password);
    QFETCH(bool, isRight);
    const QStringList lines = answer(u"SELECT 1 AS a"_s, password);
    if (isRight) {
        QCOMPARE(lines, QStringList({ u"a"_s, u"1"_s }));
        return;
    }
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines[0].startsWith(url() + u": cannot be opened: "_s), qPrintable(lines[0]));
    QVERIFY2(lines[0].contains(u"password authentication failed"_s), qPrintable(lines[0]));
    QVERIFY(!lines[0].contains(u"unfit"_s));
}

void tst_SqlOdbcServer::changesAreTakenBack_data()
{
    QTest::addColumn<QString>("query");

    QTest::newRow("new table") << u"SELECT 1 AS a INTO x"_s;
    QTest::newRow("large object") << u"WITH x AS (SELECT lo_create(4711) AS a) SELECT a FROM x"_s;
}

void tst_SqlOdbcServer::changesAreTakenBack()
{
    QFETCH(QString, query);
    const QString state
        = u"SELECT (SELECT count(*) FROM pg_largeobject_metadata) + (SELECT count(*) FROM pg_class) AS a"_s;
    const QStringList before = answer(state);
    QCOMPARE(before.size(), 2);
    QVERIFY(!answer(query).isEmpty());
    QCOMPARE(answer(state), before);
}

QTEST_GUILESS_MAIN(tst_SqlOdbcServer)
#include "tst_sqlodbcserver.moc"
