// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgguard.h"
#include "tests/support/drawings.h"
#include "tests/support/images.h"

#include <QDirIterator>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString iconFolder = u"/usr/share/icons"_s;

QStringList icons()
{
    QStringList paths;
    for (QDirIterator files(iconFolder, { u"*.svg"_s, u"*.svgz"_s }, QDir::Files | QDir::NoSymLinks,
             QDirIterator::Subdirectories);
         files.hasNext();)
        paths.append(files.next());
    paths.sort();
    return paths;
}

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// The icons of the desktop, none of which is hostile.
class tst_SvgOrdinary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void iconsAreClean();
    void iconsLookAsWithoutTheGuard();
};

void tst_SvgOrdinary::iconsAreClean()
{
    const QStringList paths = icons();
    QVERIFY2(paths.size() > 2'000, "the icons of elementary-icon-theme are missing");
    for (const QString &path : paths) {
        const QByteArray bytes = contentsOf(path);
        const SvgGuard::Answer answer = SvgGuard::check(bytes);
        QVERIFY2(answer.verdict == SvgGuard::Verdict::Clean, qPrintable(path + u": "_s + answer.reason));
        QVERIFY2(answer.drawing == bytes || bytes.startsWith("\x1F\x8B"), qPrintable(path));
    }
}

void tst_SvgOrdinary::iconsLookAsWithoutTheGuard()
{
    const QStringList paths = icons();
    int drawn = 0;
    for (qsizetype i = 0; i < paths.size(); i += 40) {
        const QByteArray bytes = contentsOf(paths[i]);
        const QImage guarded = Drawings::rendered(SvgGuard::check(bytes).drawing, QSize(64, 64));
        QCOMPARE(
            Images::difference(guarded, Drawings::rendered(bytes, QSize(64, 64)), u"svg-icon"_s), QString());
        drawn += Images::coloursOf(guarded).size() > 1 ? 1 : 0;
    }
    QVERIFY(drawn > 40);
}

QTEST_MAIN(tst_SvgOrdinary)
#include "tst_svgordinary.moc"
