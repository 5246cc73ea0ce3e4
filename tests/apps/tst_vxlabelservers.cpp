// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"
#include "tests/label/data/postgresserver.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace BatchLabels;

/// Labels whose rows come from a database server, with a password that nobody gets to see.
class tst_VxLabelServers : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void rowsArePrinted_data();
    void rowsArePrinted();
    void wrongPasswordsAreRefused();
    void passwordsForEverybodyAreNone();
    void serversThatAreNotThereAreTold();

private:
    void writePassword(const QByteArray &password) const;
    [[nodiscard]] QString url(int port) const
    {
        return u"postgresql://%1@127.0.0.1:%2/postgres"_s.arg(PostgresServer::user()).arg(port);
    }
    [[nodiscard]] QStringList dataOf(int port) const
    {
        return { u"a.vxl"_s, u"--data"_s, url(port), u"--query"_s,
            u"SELECT * FROM (VALUES ('A1', 'Apple', 1.5), ('B2', 'Pear', 2)) AS rows (sku, name, price)"_s,
            u"--password-file"_s, u"password"_s };
    }

    std::unique_ptr<PostgresServer> m_server;
};

void tst_VxLabelServers::initTestCase()
{
    qunsetenv("PGPASSWORD");
    m_server = std::make_unique<PostgresServer>();
    QVERIFY2(m_server->error().isEmpty(), qPrintable(m_server->error()));
}

void tst_VxLabelServers::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    renew();
    write(
        u"a.vxl"_s, toJson(labelWith({ text(10, 10, u"${name}"_s), text(10, 35, u"${price:%.2f} EUR"_s) })));
    writePassword(PostgresServer::password().toUtf8() + '\n');
}

/// For nobody but its owner.
void tst_VxLabelServers::writePassword(const QByteArray &password) const
{
    write(u"password"_s, password);
    QVERIFY(QFile::setPermissions(path(u"password"_s), QFile::ReadOwner | QFile::WriteOwner));
}

void tst_VxLabelServers::rowsArePrinted_data()
{
    QTest::addColumn<QString>("jobs");
    QTest::newRow("one process") << u"1"_s;
    QTest::newRow("two processes, each of which asks") << u"2"_s;
}

void tst_VxLabelServers::rowsArePrinted()
{
    QFETCH(const QString, jobs);
    expect(QStringList { u"check"_s } + dataOf(m_server->port()), 0);
    const ProgramResult result = run(QStringList { u"batch"_s } + dataOf(m_server->port())
        + QStringList { u"-o"_s, u"out/{sku}.{ink}.png"_s, u"--jobs"_s, jobs });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.out, "2 rows printed\n");
    QCOMPARE(files(u"out"_s),
        QStringList(
            { u"A1.black.png"_s, u"A1.red.png"_s, u"B2.black.png"_s, u"B2.red.png"_s, u"manifest.jsonl"_s }));
    QVERIFY(!read(u"out/manifest.jsonl"_s).contains(PostgresServer::password().toUtf8()));
}

void tst_VxLabelServers::wrongPasswordsAreRefused()
{
    writePassword("unfit\n");
    const ProgramResult result = run(QStringList { u"batch"_s } + dataOf(m_server->port())
        + QStringList { u"-o"_s, u"out/{sku}.{ink}.png"_s });
    QCOMPARE(result.code, 4);
    QVERIFY2(result.err.contains("password authentication failed for user \"owner\""), result.err);
    QVERIFY2(!result.err.contains("unfit"), result.err);
    QCOMPARE(files(), QStringList({ u"a.vxl"_s, u"password"_s }));
}

void tst_VxLabelServers::passwordsForEverybodyAreNone()
{
    QVERIFY(
        QFile::setPermissions(path(u"password"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
    expect(QStringList { u"batch"_s } + dataOf(m_server->port())
            + QStringList { u"-o"_s, u"out/{sku}.{ink}.png"_s },
        4,
        "vxlabel: password: holds a password, and others than its owner may read or write it; chmod 600 "
        "makes it "
        "the owner's\n");
}

void tst_VxLabelServers::serversThatAreNotThereAreTold()
{
    constexpr int port = 1; // of a service that nobody runs any more
    const ProgramResult result
        = run(QStringList { u"batch"_s } + dataOf(port) + QStringList { u"-o"_s, u"out/{sku}.{ink}.png"_s });
    QCOMPARE(result.code, 4);
    QVERIFY2(result.err.startsWith("vxlabel: " + url(port).toUtf8()), result.err);
    QVERIFY2(result.err.contains("Connection refused"), result.err);
}

QTEST_GUILESS_MAIN(tst_VxLabelServers)
#include "tst_vxlabelservers.moc"
