// SPDX-License-Identifier: BSD-3-Clause
#include "label/picturesplit.h"
#include "tests/label/inksplits.h"

#include <QPainter>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace InkSplits;

namespace {

const QList<QColor> inks { Qt::black, Qt::red };

/// The images laid over a plate that is black already, one letter for each dot.
QString overBlack(const QImage &image)
{
    QImage plate = filled(image.size(), black);
    QPainter(&plate).drawImage(0, 0, image);
    QString dots;
    for (int x = 0; x < plate.width(); ++x)
        dots += plate.pixel(x, 0) == black ? u'#' : plate.pixel(x, 0) == white ? u'.' : u'?';
    return dots;
}

} // namespace

class tst_PictureSplit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void clearPlacesLetThroughWhatLiesBelow();
    void opaquePicturesAreThePlanesThemselves();
    void translucentPixelsAreThoseOnPaper();
    void nothingToSplitIsNothing();
};

void tst_PictureSplit::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_PictureSplit::clearPlacesLetThroughWhatLiesBelow()
{
    QImage picture(10, 1, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    for (const int x : { 1, 2, 9 })
        picture.setPixel(x, 0, red);
    for (const int x : { 3, 8 })
        picture.setPixel(x, 0, white);
    picture.setPixel(4, 0, black);
    for (const Dither dither : allDithers) {
        const QList<QImage> images = splitForPlates(picture, inks, Qt::white, dither);
        QCOMPARE(images.size(), 2);
        QCOMPARE(overBlack(images[0]), u"#...####.."_s);
        QCOMPARE(overBlack(images[1]), u"###..###.#"_s);
    }
}

void tst_PictureSplit::opaquePicturesAreThePlanesThemselves()
{
    const QImage picture = noise({ 37, 20 }, 6);
    for (const Dither dither : allDithers) {
        const Planes planes = splitIntoInks(picture, inks, Qt::white, dither);
        const QList<QImage> images = splitForPlates(picture, inks, Qt::white, dither);
        QCOMPARE(images, QList<QImage>(planes.begin(), planes.end()));
        // With an alpha channel that leaves nothing out, they are the same dots.
        const QList<QImage> others
            = splitForPlates(picture.convertToFormat(QImage::Format_ARGB32), inks, Qt::white, dither);
        for (qsizetype ink = 0; ink < 2; ++ink)
            QCOMPARE(others[ink].convertToFormat(QImage::Format_RGB32),
                images[ink].convertToFormat(QImage::Format_RGB32));
    }
}

void tst_PictureSplit::translucentPixelsAreThoseOnPaper()
{
    QImage picture(64, 64, QImage::Format_ARGB32);
    picture.fill(qRgba(0, 0, 0, 1));
    const QList<QImage> images = splitForPlates(picture, inks, Qt::red, Dither::Diffusion);
    QCOMPARE(images.size(), 2);
    // Nearly all is paper, which clears.
    QCOMPARE(overBlack(images[0]), QString(64, u'.'));
}

void tst_PictureSplit::nothingToSplitIsNothing()
{
    QVERIFY(splitForPlates(QImage(), inks, Qt::white, Dither::Diffusion).isEmpty());
    QVERIFY(splitForPlates(filled({ 2, 2 }, red), {}, Qt::white, Dither::Diffusion).isEmpty());
}

QTEST_GUILESS_MAIN(tst_PictureSplit)
#include "tst_picturesplit.moc"
