// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/sqllocation.h"
#include "tests/label/data/rows.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

/// SqlLocation: the URLs of databases, and the passwords that they must not have.
class tst_SqlLocation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void filesAreFound_data();
    void filesAreFound();
    void serversAreFound_data();
    void serversAreFound();
    void connectionStringsAreKept();
    void otherTextsAreRefused_data();
    void otherTextsAreRefused();
    void passwordsAreRefusedAndNotRepeated_data();
    void passwordsAreRefusedAndNotRepeated();
    void schemesTellDatabasesFromFiles();
};

void tst_SqlLocation::filesAreFound_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("display");

    QTest::newRow("full path") << u"sqlite:///data/x.db"_s << u"/data/x.db"_s << u"/data/x.db"_s;
    QTest::newRow("full path, one slash") << u"sqlite:/data/x.db"_s << u"/data/x.db"_s << u"/data/x.db"_s;
    QTest::newRow("beside the document") << u"sqlite:x.db"_s << u"/labels/x.db"_s << u"x.db"_s;
    QTest::newRow("below it") << u"sqlite:data/x.db"_s << u"/labels/data/x.db"_s << u"data/x.db"_s;
    QTest::newRow("above it") << u"sqlite:../x.db"_s << u"/x.db"_s << u"../x.db"_s;
    QTest::newRow("capitals") << u"SQLite:x.db"_s << u"/labels/x.db"_s << u"x.db"_s;
    QTest::newRow("blank") << u"sqlite:price%20list.db"_s << u"/labels/price list.db"_s << u"price list.db"_s;
    QTest::newRow("question mark") << u"sqlite:a%3Fb"_s << u"/labels/a?b"_s << u"a?b"_s;
    QTest::newRow("percent sign") << u"sqlite:100%25.db"_s << u"/labels/100%.db"_s << u"100%.db"_s;
    QTest::newRow("umlaut, encoded") << u"sqlite:K%C3%A4se.db"_s << u"/labels/Käse.db"_s << u"Käse.db"_s;
    QTest::newRow("umlaut") << u"sqlite:Käse.db"_s << u"/labels/Käse.db"_s << u"Käse.db"_s;
    QTest::newRow("no memory") << u"sqlite::memory:"_s << u"/labels/:memory:"_s << u":memory:"_s;
    QTest::newRow("at sign and colon") << u"sqlite:a:b@c.db"_s << u"/labels/a:b@c.db"_s << u"a:b@c.db"_s;
}

void tst_SqlLocation::filesAreFound()
{
    QFETCH(QString, url);
    Problems problems;
    const std::optional<SqlLocation> location = SqlLocation::fromUrl(url, u"/labels"_s, problems);
    QCOMPARE(Rows::texts(problems), QStringList());
    QVERIFY(location);
    QCOMPARE(location->kind, SqlLocation::Sqlite);
    QTEST(location->database, "path");
    QTEST(location->display, "display");
}

void tst_SqlLocation::serversAreFound_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("parts"); ///< user, host, port, database, options
    QTest::addColumn<QString>("display");

    QTest::newRow("all") << u"postgresql://ann@db.example:5433/shop"_s << u"ann db.example 5433 shop "_s
                         << u"postgresql://ann@db.example:5433/shop"_s;
    QTest::newRow("short scheme") << u"postgres://ann@db/shop"_s << u"ann db -1 shop "_s
                                  << u"postgresql://ann@db/shop"_s;
    QTest::newRow("no user") << u"postgresql://db/shop"_s << u" db -1 shop "_s << u"postgresql://db/shop"_s;
    QTest::newRow("no host") << u"postgresql:///shop"_s << u"  -1 shop "_s << u"postgresql:///shop"_s;
    QTest::newRow("no database") << u"postgresql://db"_s << u" db -1  "_s << u"postgresql://db/"_s;
    QTest::newRow("six") << u"postgresql://[::1]:5432/shop"_s << u" ::1 5432 shop "_s
                         << u"postgresql://[::1]:5432/shop"_s;
    QTest::newRow("socket") << u"postgresql://%2Frun%2Fpg/shop"_s << u" /run/pg -1 shop "_s
                            << u"postgresql:///run/pg/shop"_s;
    QTest::newRow("encoded") << u"postgresql://a%40b@db/my%20shop"_s << u"a@b db -1 my shop "_s
                             << u"postgresql://a@b@db/my shop"_s;
    QTest::newRow("options") << u"postgresql://db/shop?sslmode=require&sslrootcert=%2Fetc/ca.pem"_s
                             << u" db -1 shop sslmode=require,sslrootcert=/etc/ca.pem"_s
                             << u"postgresql://db/shop"_s;
}

void tst_SqlLocation::serversAreFound()
{
    QFETCH(QString, url);
    Problems problems;
    const std::optional<SqlLocation> location = SqlLocation::fromUrl(url, u"/labels"_s, problems);
    QCOMPARE(Rows::texts(problems), QStringList());
    QVERIFY(location);
    QCOMPARE(location->kind, SqlLocation::PostgreSql);
    const QStringList parts { location->user, location->host, QString::number(location->port),
        location->database, location->options.join(u',') };
    QTEST(parts.join(u' '), "parts");
    QTEST(location->display, "display");
}

void tst_SqlLocation::connectionStringsAreKept()
{
    const QString text = u"DSN=prices;UID=ann;Database={a;b}"_s;
    Problems problems;
    const std::optional<SqlLocation> location = SqlLocation::fromUrl(u"odbc:"_s + text, {}, problems);
    QCOMPARE(Rows::texts(problems), QStringList());
    QVERIFY(location);
    QCOMPARE(location->kind, SqlLocation::Odbc);
    QCOMPARE(location->database, text);
    QCOMPARE(location->display, u"odbc:"_s + text);
}

void tst_SqlLocation::otherTextsAreRefused_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("what");

    const QString unknown = u"the place of the data is no URL of a database"_s;
    QTest::newRow("empty") << QString() << unknown;
    QTest::newRow("file") << u"prices.csv"_s << unknown;
    QTest::newRow("unknown scheme") << u"mysql://db/shop"_s << unknown;
    QTest::newRow("only a colon") << u":x"_s << unknown;

    const QString noFile = u"names no database file"_s;
    QTest::newRow("sqlite: nothing") << u"sqlite:"_s << noFile;
    QTest::newRow("sqlite: host") << u"sqlite://x.db"_s << noFile;
    QTest::newRow("sqlite: options") << u"sqlite:x.db?mode=rwc"_s << noFile;
    QTest::newRow("sqlite: stray percent") << u"sqlite:100%.db"_s << noFile;
    QTest::newRow("sqlite: zero") << u"sqlite:x%00.db"_s << noFile;
    QTest::newRow("sqlite: no UTF-8") << u"sqlite:x%E4.db"_s << noFile;

    const QString noDatabase = u"names no database"_s;
    QTest::newRow("postgresql: nothing") << u"postgresql:"_s << noDatabase;
    QTest::newRow("postgresql: no slashes") << u"postgresql:shop"_s << noDatabase;
    QTest::newRow("postgresql: port") << u"postgresql://db:http/shop"_s << noDatabase;
    QTest::newRow("postgresql: long port") << u"postgresql://db:543200/shop"_s << noDatabase;
    QTest::newRow("postgresql: folders") << u"postgresql://db/shop/prices"_s << noDatabase;
    QTest::newRow("postgresql: zero") << u"postgresql://db/shop%00"_s << noDatabase;
    QTest::newRow("postgresql: options for the session")
        << u"postgresql://db/shop?options=-cx%3Dy"_s << u"has an unknown option, \"options\""_s;
    QTest::newRow("postgresql: other host")
        << u"postgresql://db/shop?host=other"_s << u"has an unknown option, \"host\""_s;
    QTest::newRow("postgresql: further option") << u"postgresql://db/shop?sslmode=require%20host%3Dother"_s
                                                << u"has an option without a usable value, sslmode"_s;
    QTest::newRow("postgresql: option behind a semicolon")
        << u"postgresql://db/shop?sslmode=require;host=other"_s
        << u"has an option without a usable value, sslmode"_s;
    QTest::newRow("postgresql: option behind an ampersand, encoded")
        << u"postgresql://db/shop?sslmode=require%26host=other"_s
        << u"has an option without a usable value, sslmode"_s;
    QTest::newRow("postgresql: option of no value")
        << u"postgresql://db/shop?sslmode"_s << u"has an option without a usable value, sslmode"_s;

    QTest::newRow("odbc: nothing") << u"odbc:"_s << u"names neither a data source nor a driver"_s;
    QTest::newRow("odbc: only a user") << u"odbc:UID=ann"_s << u"names neither a data source nor a driver"_s;
    QTest::newRow("odbc: name only") << u"odbc:prices"_s << u"is no connection string"_s;
    QTest::newRow("odbc: open brace") << u"odbc:DSN={prices"_s << u"is no connection string"_s;
    QTest::newRow("odbc: driver's path") << u"odbc:Driver=/tmp/x.so"_s << u"has the path of a driver"_s;
    QTest::newRow("odbc: path in braces") << u"odbc:Driver={/tmp/x.so}"_s << u"has the path of a driver"_s;
    QTest::newRow("odbc: second driver")
        << u"odbc:Driver=SQLite3;Driver=/tmp/x.so"_s << u"has the path of a driver"_s;
    QTest::newRow("odbc: extension") << u"odbc:DSN=x;LoadExt=/tmp/x.so"_s
                                     << u"has an unknown keyword, \"loadext\""_s;
    QTest::newRow("odbc: file to write")
        << u"odbc:DSN=x;SAVEFILE=/tmp/x"_s << u"has an unknown keyword, \"savefile\""_s;
    QTest::newRow("odbc: file to read")
        << u"odbc:FILEDSN=/tmp/x"_s << u"has an unknown keyword, \"filedsn\""_s;
    QTest::newRow("odbc: name of a file") << u"odbc:DSN=x.dsn"_s << u"names a file with a data source"_s;
}

void tst_SqlLocation::otherTextsAreRefused()
{
    QFETCH(QString, url);
    Problems problems;
    QVERIFY(!SqlLocation::fromUrl(url, u"/labels"_s, problems));
    QCOMPARE(problems.size(), 1);
    QTEST(problems[0].what, "what");
    QVERIFY(!problems[0].advice.isEmpty());
}

void tst_SqlLocation::passwordsAreRefusedAndNotRepeated_data()
{
    QTest::addColumn<QString>("url");

    QTest::newRow("postgresql") << u"postgresql://ann:secret@db/shop"_s;
    QTest::newRow("postgres") << u"postgres://ann:secret@db/shop"_s;
    QTest::newRow("no user") << u"postgresql://:secret@db/shop"_s;
    QTest::newRow("colon in it") << u"postgresql://ann:a:secret@db/shop"_s;
    QTest::newRow("at sign in it") << u"postgresql://ann:1@secret@db/shop"_s;
    QTest::newRow("at sign in the user") << u"postgresql://ann@corp:1/secret@db"_s;
    QTest::newRow("slash in it") << u"postgresql://ann:1/secret@db/shop"_s;
    QTest::newRow("question mark in it") << u"postgresql://ann:1?secret@db/shop"_s;
    QTest::newRow("sharp in it") << u"postgresql://ann:1#secret@db/shop"_s;
    QTest::newRow("line end in it") << u"postgresql://ann:1\nsecret@db/shop"_s;
    QTest::newRow("option") << u"postgresql://db/shop?password=secret"_s;
    QTest::newRow("option, second") << u"postgresql://db/shop?sslmode=require&sslpassword=secret"_s;
    QTest::newRow("odbc") << u"odbc:DSN=prices;PWD=secret"_s;
    QTest::newRow("odbc, lower case") << u"odbc:DSN=prices;pwd = secret"_s;
    QTest::newRow("odbc, password") << u"odbc:Password=secret;DSN=prices"_s;
    QTest::newRow("odbc, braces") << u"odbc:DSN=prices;PWD={a;secret}"_s;
    QTest::newRow("odbc, semicolon in it") << u"odbc:DSN=prices;PWD=a;secret=b"_s;
    QTest::newRow("odbc, no braces' end") << u"odbc:DSN=prices;PWD={secret"_s;
}

void tst_SqlLocation::passwordsAreRefusedAndNotRepeated()
{
    QFETCH(QString, url);
    Problems problems;
    QVERIFY(!SqlLocation::fromUrl(url, u"/labels"_s, problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].text(),
        (url.startsWith(u"odbc"_s) ? u"odbc"_s : u"postgresql"_s)
            + u":…: has a password, which others could read; leave it out; it belongs in a password file, or "
              u"for "
              "PostgreSQL in PGPASSWORD or ~/.pgpass"_s);
    QVERIFY(!problems[0].text().contains(u"secret"_s));
}

void tst_SqlLocation::schemesTellDatabasesFromFiles()
{
    for (const char *url : { "sqlite:x", "SQLITE:x", "postgres://db", "postgresql://db", "odbc:DSN=x" })
        QVERIFY2(SqlLocation::isUrl(QString::fromLatin1(url)), url);
    for (const char *file : { "", "sqlite", "x.csv", "-", "./sqlite:x", "mysql:x", "file:///x.db" })
        QVERIFY2(!SqlLocation::isUrl(QString::fromLatin1(file)), file);
}

QTEST_GUILESS_MAIN(tst_SqlLocation)
#include "tst_sqllocation.moc"
