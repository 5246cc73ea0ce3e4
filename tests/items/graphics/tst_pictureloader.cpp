// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/pictureloader.h"
#include "items/graphics/pixmapitem.h"
#include "tests/support/colours.h"
#include "tests/support/pictures.h"

#include <QApplication>
#include <QDataStream>
#include <QFile>
#include <QImageReader>
#include <QLoggingCategory>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <ctime>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace Colours;
using Pictures::encoded;
using Pictures::plain;
using Pictures::written;

namespace {

const QString secret = u"vx_referred_file"_s;

/// Drawings that refer to a file, in every disguise that a picture plugin would see through.
QList<std::pair<QString, QByteArray>> drawings(const QByteArray &folder)
{
    const QByteArray body = "<svg xmlns='http://www.w3.org/2000/svg' "
                            "xmlns:xlink='http://www.w3.org/1999/xlink' width='9' height='9'>"
                            "<image width='9' height='9' xlink:href='"
        + folder + "/vx_referred_file.png'/></svg>";
    const QByteArray sheet = "<?xml version='1.0'?><?xml-stylesheet type='text/css' href='" + folder
        + "/vx_referred_file.css'?>" + body;
    // A member of one stored block: ten bytes, the lengths, the content, and no matter what checksum.
    QByteArray packed("\x1F\x8B\x08\x00\x00\x00\x00\x00\x00\x03\x01", 11);
    Pictures::append16(packed, quint16(body.size()));
    Pictures::append16(packed, quint16(~body.size()));
    packed += body;
    Pictures::append32(packed, 0);
    Pictures::append32(packed, quint32(body.size()));
    return { { u"plain.svg"_s, body }, { u"named.png"_s, body }, { u"sheet.png"_s, sheet },
        { u"spaces.jpg"_s, "\n  \t" + body }, { u"mark.png"_s, "\xEF\xBB\xBF" + body },
        { u"comment.bmp"_s, "<!-- BM -->" + body }, { u"behind.png"_s, "x = 1; " + body },
        { u"type.gif"_s, "<!DOCTYPE svg>" + body }, { u"packed.svgz"_s, packed }, { u"packed.png"_s, packed },
        { u"icon.svg"_s, QByteArray("\0\0\1\0", 4) + body } };
}

/// A record's picture with these bytes.
QByteArray recordOf(const QByteArray &bytes)
{
    return QByteArray("\0\0\0\1", 4) + bytes;
}

/// Offers every drawing to everything that takes pictures; what the traced child does.
int offerAll(const QString &folder)
{
    const QTemporaryDir own;
    for (const auto &[name, bytes] : drawings(folder.toUtf8())) {
        const QByteArray path = written(own, name, bytes);
        PixMapItem item;
        if (item.loadItemFromFile(path) || !PictureLoader::decoded(bytes).isNull())
            return 1;
        item.setItemData(path);
        item.setPixmapItemData(recordOf(bytes).toBase64());
        QDataStream stream(recordOf(bytes));
        item.loadItemFromData(stream, 6);
    }
    return 0;
}

/// For comparison: Qt's own way.
int offerUnsafely(const QString &folder)
{
    return QPixmap().loadFromData(drawings(folder.toUtf8()).first().second) ? 0 : 1;
}

/// How often a child of this program opened a file with the name of the one that drawings refer to.
int secretsOpened(const QString &mode, int *exitCode)
{
    const QTemporaryDir folder;
    const QString log = folder.filePath(u"calls.txt"_s);
    for (const QString &suffix : { u".png"_s, u".css"_s })
        static_cast<void>(written(folder, secret + suffix, encoded(plain(QSize(9, 9), red), "PNG")));
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LD_PRELOAD"_s, QStringLiteral(VX_OPEN_CALLS_LIBRARY));
    environment.insert(u"VX_OPEN_CALLS"_s, log);
    environment.insert(u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0:detect_leaks=0"_s);
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(), { mode, folder.path() });
    *exitCode = child.waitForFinished(60'000) ? child.exitCode() : -1;
    QFile calls(log);
    if (!calls.open(QIODevice::ReadOnly))
        return -1;
    int opened = 0;
    for (const QByteArray &line : calls.readAll().split('\n'))
        opened += line.contains(secret.toLatin1() + '.') ? 1 : 0;
    return opened;
}

double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

/// A JPEG of the sides in so many passes, each of which holds nothing.
QByteArray jpegOfScans(int scans)
{
    const QByteArray whole = encoded(plain(QSize(64, 64), red, QImage::Format_RGB32), "JPG");
    const qsizetype scan = whole.indexOf("\xFF\xDA");
    const QByteArray pass = whole.sliced(scan, whole.size() - scan - 2);
    return whole.first(scan) + pass.repeated(scans) + "\xFF\xD9";
}

} // namespace

/// Pictures of which nobody knows where they come from.
class tst_PictureLoader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // Files
    void onlyRegularFilesAreRead_data();
    void onlyRegularFilesAreRead();
    void linksAreFollowedToFiles();
    void largeFilesAreNotRead();

    // Formats
    void contentDecidesTheFormat_data();
    void contentDecidesTheFormat();
    void whatIsNoPictureIsRefused_data();
    void whatIsNoPictureIsRefused();
    void cutPicturesAreRefusedOrPartial_data();
    void cutPicturesAreRefusedOrPartial();
    void drawingsOpenNoFile();
    void deepBitmap_data();
    void deepBitmap();

    // Limits
    void bombsAreRefusedInTime_data();
    void bombsAreRefusedInTime();
    void sidesAndAreaAreLimited_data();
    void sidesAndAreaAreLimited();
    void scansOfAJpegAreLimited();

    // Records
    void picturesOfRecordsAreReadAsQtDoes_data();
    void picturesOfRecordsAreReadAsQtDoes();
    void largePicturesOfRecordsAreCorrupt();
    void whatIsNoPictureInARecordIsNone_data();
    void whatIsNoPictureInARecordIsNone();
    void oldStreamsHaveNoMarker();

private:
    QTemporaryDir m_folder;
};

void tst_PictureLoader::initTestCase()
{
    // Qt tells what is wrong with a damaged file.
    QLoggingCategory::setFilterRules(u"qt.gui.imageio*=false"_s);
    // Of Qt's limit, which takes every pixel for 32 bits, nothing is to be seen here.
    constexpr int megabytes = 512;
    QImageReader::setAllocationLimit(megabytes);
}

// Files

void tst_PictureLoader::onlyRegularFilesAreRead_data()
{
    QTest::addColumn<QByteArray>("path");
    const QByteArray pipe = m_folder.filePath(u"pipe.png"_s).toUtf8();
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    QTest::newRow("pipe") << pipe;
    QTest::newRow("folder") << m_folder.path().toUtf8();
    QTest::newRow("missing") << m_folder.filePath(u"missing.png"_s).toUtf8();
    QTest::newRow("no name") << QByteArray();
    QTest::newRow("name with a null") << QByteArray("/etc/passwd\0.png", 16);
    QTest::newRow("empty file") << written(m_folder, u"empty.png"_s, {});
    QTest::newRow("endless device") << QByteArray("/dev/zero");
    QTest::newRow("terminal") << QByteArray("/dev/tty");
    QTest::newRow("made up by the system") << QByteArray("/proc/self/environ");
    QTest::newRow("memory") << QByteArray("/proc/self/mem");
}

void tst_PictureLoader::onlyRegularFilesAreRead()
{
    QFETCH(const QByteArray, path);
    QCOMPARE(PictureLoader::bytesOfFile(path), QByteArray());
    PixMapItem item;
    QVERIFY(!item.loadItemFromFile(path));
}

void tst_PictureLoader::linksAreFollowedToFiles()
{
    const QByteArray file = written(m_folder, u"target.bin"_s, "content");
    const QString link = m_folder.filePath(u"link"_s);
    QVERIFY(QFile::link(QString::fromUtf8(file), link));
    QCOMPARE(PictureLoader::bytesOfFile(link.toUtf8()), QByteArray("content"));
    QVERIFY(QFile::link(u"/dev/zero"_s, m_folder.filePath(u"zero"_s)));
    QCOMPARE(PictureLoader::bytesOfFile(m_folder.filePath(u"zero"_s).toUtf8()), QByteArray());
}

void tst_PictureLoader::largeFilesAreNotRead()
{
    // Without content, so that it takes no room.
    constexpr qint64 limit = 268'435'456;
    const QString path = m_folder.filePath(u"large.png"_s);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(limit + 1));
    QCOMPARE(PictureLoader::bytesOfFile(path.toUtf8()).size(), 0);
    QVERIFY(file.resize(limit));
    QCOMPARE(PictureLoader::bytesOfFile(path.toUtf8()).size(), limit);
}

// Formats

void tst_PictureLoader::contentDecidesTheFormat_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QImage image = plain(QSize(3, 2), red, QImage::Format_RGB32);
    for (const char *format : { "png", "jpg", "bmp", "ppm", "xpm" })
        QTest::newRow(format) << encoded(image, format);
    QTest::newRow("pgm") << QByteArray("P5 3 2 255 \x4C\x4C\x4C\x4C\x4C\x4C");
    QTest::newRow("pbm") << QByteArray("P4 3 2 \xE0\xE0");
    QTest::newRow("xbm") << encoded(image.convertToFormat(QImage::Format_Mono), "xbm");
    QTest::newRow("gif") << QByteArray::fromHex(
        "47494638396103000200800000FF0000FFFFFF2C0000000003000200000204848F0959003B");
    if (QImageReader::supportedImageFormats().contains("ico"))
        QTest::newRow("ico") << encoded(image.convertToFormat(QImage::Format_ARGB32), "ico");
}

void tst_PictureLoader::contentDecidesTheFormat()
{
    QFETCH(const QByteArray, bytes);
    QVERIFY(!bytes.isEmpty());
    QCOMPARE(PictureLoader::decoded(bytes).size(), QSize(3, 2));
    // Whatever its name.
    PixMapItem item;
    QVERIFY(item.loadItemFromFile(written(m_folder, u"picture.txt"_s, bytes)));
    QCOMPARE(item.pixmap().size(), QSize(3, 2));
}

void tst_PictureLoader::whatIsNoPictureIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("text") << QByteArray("no picture");
    QTest::newRow("zeros") << QByteArray(1000, '\0');
    QTest::newRow("portable document") << QByteArray("%PDF-1.4\n1 0 obj\n");
    QTest::newRow("script") << QByteArray("%!PS-Adobe-3.0 EPSF-3.0\n");
    QTest::newRow("two bytes of a bitmap") << QByteArray("BM");
    QTest::newRow("gif with the mark of a drawing")
        << QByteArray::fromHex("3C7376672078" // <svg x
                               "03000200800000FF0000FFFFFF2C0000000003000200000204848F0959003B");
    QTest::newRow("29 bytes of a bitmap") << Pictures::bitmapFile(24, '\x40').first(29);
    QTest::newRow("mark of a PNG") << QByteArray("\x89PNG\r\n\x1A\n");
    QTest::newRow("mark of a JPEG") << QByteArray("\xFF\xD8\xFF");
    QTest::newRow("mark of a GIF") << QByteArray("GIF89a");
}

void tst_PictureLoader::whatIsNoPictureIsRefused()
{
    QFETCH(const QByteArray, bytes);
    QVERIFY(PictureLoader::decoded(bytes).isNull());
    PixMapItem item;
    QVERIFY(!item.loadItemFromFile(written(m_folder, u"no-picture.png"_s, bytes)));
    QVERIFY(item.pixmap().isNull());
}

void tst_PictureLoader::cutPicturesAreRefusedOrPartial_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QImage image = plain(QSize(20, 20), translucentRed);
    for (const char *format : { "png", "jpg", "bmp", "ppm", "xpm" })
        QTest::newRow(format) << encoded(image, format);
}

void tst_PictureLoader::cutPicturesAreRefusedOrPartial()
{
    QFETCH(const QByteArray, bytes);
    for (qsizetype length = 0; length < bytes.size(); ++length) {
        const QImage image = PictureLoader::decoded(bytes.first(length));
        QVERIFY(image.isNull() || image.size() == QSize(20, 20));
    }
}

void tst_PictureLoader::drawingsOpenNoFile()
{
    int exitCode = -1;
    QCOMPARE(secretsOpened(u"--offer-unsafely"_s, &exitCode), 1);
    QCOMPARE(exitCode, 0);
    QCOMPARE(secretsOpened(u"--offer-all"_s, &exitCode), 0);
    QCOMPARE(exitCode, 0);
}

void tst_PictureLoader::deepBitmap_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("deep");
    QByteArray high = Pictures::bitmapFile(24, '\x40');
    high[28] = 0;
    high[29] = 2; // 512, taken for 32
    QByteArray both = high;
    both[28] = 16;
    both[29] = 1; // 272, taken for 32
    QTest::newRow("24 bits") << Pictures::bitmapFile(24, '\x40') << false;
    QTest::newRow("32 bits") << Pictures::bitmapFile(32, '\x40') << true;
    QTest::newRow("512 bits") << high << true;
    QTest::newRow("272 bits") << both << true;
    QTest::newRow("30 bytes") << Pictures::bitmapFile(32, '\x40').first(30) << true;
    QTest::newRow("29 bytes") << Pictures::bitmapFile(32, '\x40').first(29) << false;
    QTest::newRow("another file") << QByteArray("XX") + Pictures::bitmapFile(32, '\x40').sliced(2) << false;
    QTest::newRow("nothing") << QByteArray() << false;
}

void tst_PictureLoader::deepBitmap()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const bool, deep);
    QCOMPARE(PictureLoader::isDeepBitmap(bytes), deep);
}

// Limits

void tst_PictureLoader::bombsAreRefusedInTime_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("png 100000 x 1") << Pictures::pngHeader(100'000, 1);
    QTest::newRow("png 65536 x 1") << Pictures::pngHeader(65'536, 1);
    QTest::newRow("png 60000 x 60000") << Pictures::pngHeader(60'000, 60'000);
    QTest::newRow("png of most") << Pictures::pngHeader(0x7FFFFFFF, 0x7FFFFFFF);
    QTest::newRow("ppm 60000 x 60000") << QByteArray("P6 60000 60000 255 ");
    QTest::newRow("xbm 60000 x 60000")
        << QByteArray("#define a_width 60000\n#define a_height 60000\nstatic char a_bits[] = {\n0x00 };\n");
    QTest::newRow("xpm 60000 x 60000")
        << QByteArray("/* XPM */\nstatic char *a[] = {\n\"60000 60000 1 1\",\n\"a c #000000\",\n");
    QTest::newRow("gif 65535 x 65535")
        << QByteArray::fromHex("474946383961FFFFFFFF800000FF0000FFFFFF2C00000000FFFFFFFF000204848F0959003B");
    QByteArray jpeg = encoded(plain(QSize(8, 8), red, QImage::Format_RGB32), "JPG");
    const qsizetype frame = jpeg.indexOf("\xFF\xC0");
    QTest::newRow("jpeg 65500 x 65500") << jpeg.replace(frame + 5, 4, QByteArray::fromHex("FFDCFFDC"));
    QByteArray bitmap = Pictures::bitmapFile(24, '\x40');
    bitmap.replace(18, 8, QByteArray::fromHex("60EA000060EA0000"));
    QTest::newRow("bmp 60000 x 60000") << bitmap;
}

void tst_PictureLoader::bombsAreRefusedInTime()
{
    QFETCH(const QByteArray, bytes);
    const double start = processorSeconds();
    QVERIFY(PictureLoader::decoded(bytes).isNull());
    QVERIFY(processorSeconds() - start < 1.0);
}

void tst_PictureLoader::sidesAndAreaAreLimited_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("taken");
    QTest::newRow("widest") << QSize(65'535, 1) << true;
    QTest::newRow("too wide") << QSize(65'536, 1) << false;
    QTest::newRow("highest") << QSize(1, 65'535) << true;
    QTest::newRow("too high") << QSize(1, 65'536) << false;
    QTest::newRow("largest") << QSize(12'800, 10'000) << true;
    QTest::newRow("too large") << QSize(12'800, 10'001) << false;
}

void tst_PictureLoader::sidesAndAreaAreLimited()
{
    QFETCH(const QSize, size);
    QFETCH(const bool, taken);
    // In one bit, of which the largest takes 16 MB.
    const QByteArray bytes = encoded(plain(size, white, QImage::Format_Mono), "PNG");
    QVERIFY(!bytes.isEmpty());
    QCOMPARE(PictureLoader::decoded(bytes).size(), taken ? size : QSize(0, 0));
}

void tst_PictureLoader::scansOfAJpegAreLimited()
{
    const QByteArray many = jpegOfScans(101);
    const double start = processorSeconds();
    QVERIFY(PictureLoader::decoded(many).isNull());
    QVERIFY(processorSeconds() - start < 1.0);
    QCOMPARE(PictureLoader::decoded(jpegOfScans(1)).size(), QSize(64, 64));

    // A thumbnail in the header has passes of its own, which do not count.
    const QByteArray thumbnail = QByteArray("\xFF\xE1\x40\x02", 4) + QByteArray("\xFF\xDA").repeated(0x2000);
    QByteArray picture = jpegOfScans(1);
    picture.insert(2, thumbnail);
    QCOMPARE(PictureLoader::decoded(picture).size(), QSize(64, 64));
}

// Records

void tst_PictureLoader::picturesOfRecordsAreReadAsQtDoes_data()
{
    QTest::addColumn<QPixmap>("pixmap");
    QTest::newRow("none") << QPixmap();
    QTest::newRow("opaque") << QPixmap::fromImage(plain(QSize(3, 2), red, QImage::Format_RGB32));
    QTest::newRow("translucent") << QPixmap::fromImage(plain(QSize(5, 7), translucentRed));
    QTest::newRow("one bit") << QPixmap(QBitmap::fromImage(plain(QSize(9, 9), black, QImage::Format_Mono)));
}

void tst_PictureLoader::picturesOfRecordsAreReadAsQtDoes()
{
    QFETCH(const QPixmap, pixmap);
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << pixmap << quint32(0x12345678);

    QDataStream theirs(bytes);
    QPixmap expected;
    theirs >> expected;
    QDataStream ours(bytes);
    const QPixmap read = PictureLoader::readPixmap(ours);
    QCOMPARE(read.isNull(), pixmap.isNull());
    QCOMPARE(read.depth(), expected.depth());
    QCOMPARE(read.isQBitmap(), expected.isQBitmap());
    QCOMPARE(read.toImage(), expected.toImage());
    QCOMPARE(read.toImage().convertToFormat(QImage::Format_ARGB32),
        pixmap.toImage().convertToFormat(QImage::Format_ARGB32));

    // And what follows is still there.
    quint32 behind = 0;
    ours >> behind;
    QCOMPARE(behind, 0x12345678U);
    QCOMPARE(ours.status(), QDataStream::Ok);
}

void tst_PictureLoader::largePicturesOfRecordsAreCorrupt()
{
    for (const QByteArray &header : { Pictures::pngHeader(60'000, 60'000), Pictures::pngHeader(65'536, 1) }) {
        QDataStream stream(recordOf(header));
        QVERIFY(PictureLoader::readPixmap(stream).isNull());
        QCOMPARE(stream.status(), QDataStream::ReadCorruptData);
    }
}

void tst_PictureLoader::whatIsNoPictureInARecordIsNone_data()
{
    QTest::addColumn<QByteArray>("record");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("half a marker") << QByteArray("\0\0", 2);
    QTest::newRow("marker alone") << recordOf({});
    QTest::newRow("text") << recordOf("no picture");
    QTest::newRow("other formats") << recordOf(encoded(plain(QSize(3, 2), red), "PPM"));
    QTest::newRow("header alone") << recordOf(Pictures::pngHeader(3, 2));
}

void tst_PictureLoader::whatIsNoPictureInARecordIsNone()
{
    QFETCH(const QByteArray, record);
    QDataStream stream(record);
    QVERIFY(PictureLoader::readPixmap(stream).isNull());
    QCOMPARE(stream.status(), QDataStream::ReadPastEnd);
}

void tst_PictureLoader::oldStreamsHaveNoMarker()
{
    QDataStream stream(encoded(plain(QSize(3, 2), red), "PNG"));
    stream.setVersion(QDataStream::Qt_3_0);
    QCOMPARE(PictureLoader::readPixmap(stream).size(), QSize(3, 2));

    QDataStream without;
    QVERIFY(PictureLoader::readPixmap(without).isNull());
}

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"--offer-all"_s)
        return offerAll(arguments.value(2));
    if (arguments.value(1) == u"--offer-unsafely"_s)
        return offerUnsafely(arguments.value(2));
    tst_PictureLoader test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_pictureloader.moc"
