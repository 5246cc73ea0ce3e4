// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/record.h"

#include <QDataStream>
#include <QIODevice>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <bit>
#include <limits>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

constexpr int randomRecords = 200;

/// A record with a field of every type. Its width in a stream of the usual kind is
///   1 + 1 + 2 + 2 + 4 + 4 + 8 + 8 + 1 + 8 + 11 + 1 + 11 + 8 = 70 bytes.
struct Fields
{
    qint8 signed8 = 0;
    quint8 unsigned8 = 0;
    qint16 signed16 = 0;
    quint16 unsigned16 = 0;
    qint32 signed32 = 0;
    quint32 unsigned32 = 0;
    qint64 signed64 = 0;
    quint64 unsigned64 = 0;
    bool flag = false;
    double number = 0.0;
    QColor color;
    bool otherFlag = false;
    QColor otherColor;
    double otherNumber = 0.0;

    auto tied()
    {
        return std::tie(signed8, unsigned8, signed16, unsigned16, signed32, unsigned32, signed64, unsigned64,
            flag, number, color, otherFlag, otherColor, otherNumber);
    }
};

constexpr int widthOfFields = 70;

/// How a stream is set up.
struct Form
{
    int version = QDataStream::Qt_6_0;
    QDataStream::ByteOrder byteOrder = QDataStream::BigEndian;
    QDataStream::FloatingPointPrecision precision = QDataStream::DoublePrecision;

    void applyTo(QDataStream &stream) const
    {
        stream.setVersion(version); // resets the precision
        stream.setByteOrder(byteOrder);
        stream.setFloatingPointPrecision(precision);
    }
};

QByteArray writtenByOperators(Fields fields, const Form &form = {})
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    form.applyTo(stream);
    std::apply([&stream](const auto &...field) { (stream << ... << field); }, fields.tied());
    return bytes;
}

QByteArray writtenAsARecord(Fields fields, const Form &form = {})
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    form.applyTo(stream);
    std::apply([&stream](const auto &...field) { Record::write(stream, field...); }, fields.tied());
    return bytes;
}

struct Reading
{
    QByteArray fields; ///< what was read, written by the operators: equal for equal bits, also of no numbers
    QDataStream::Status status;
    qint64 consumed;

    bool operator==(const Reading &) const = default;
};

/// What two fields of different histories become, if reading leaves any of them alone.
Fields occupied()
{
    return { -1, 1, -2, 2, -3, 3, -4, 4, true, 1.5, Qt::red, true, Qt::blue, -1.5 };
}

template <typename Read> Reading readBy(const QByteArray &bytes, const Form &form, const Read &read)
{
    QDataStream stream(bytes);
    form.applyTo(stream);
    Fields fields = occupied();
    read(stream, fields);
    return { writtenByOperators(fields), stream.status(), stream.device()->pos() };
}

Reading readByOperators(const QByteArray &bytes, const Form &form = {})
{
    return readBy(bytes, form, [](QDataStream &stream, Fields &fields) {
        std::apply([&stream](auto &...field) { (stream >> ... >> field); }, fields.tied());
    });
}

Reading readAsARecord(const QByteArray &bytes, const Form &form = {})
{
    return readBy(
        bytes, form, [](QDataStream &stream, Fields &fields) { Record::read(stream, fields.tied()); });
}

/// The bytes of a record, its colours of unknown kinds replaced by the invalid colour that they are read as.
QByteArray withKnownColors(QByteArray bytes, const Form &form = {})
{
    const bool single = form.version >= QDataStream::Qt_4_6 && form.precision == QDataStream::SinglePrecision;
    const int first = 31 + (single ? 4 : 8);
    const int second = first + 11 + 1;
    for (const int kindAt : { first, second }) {
        const auto kind = qint8(bytes[kindAt]);
        if (kind < 0 || kind > 5)
            bytes.replace(kindAt, 11, QByteArray::fromHex("00ffff0000000000000000"));
    }
    return bytes;
}

double randomNumber(QRandomGenerator &random)
{
    constexpr double special[] = { 0.0, -0.0, std::numeric_limits<double>::quiet_NaN(),
        std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
        std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::max() };
    const auto index = random.bounded(2 * int(std::size(special)));
    if (index < int(std::size(special)))
        return special[index];
    return std::bit_cast<double>(random.generate64()); // any bits, of no number too
}

/// A colour of any kind, with 16 bits in each channel.
QColor randomColor(QRandomGenerator &random)
{
    const auto part = [&random] { return float(random.generateDouble()); };
    const auto wide = [&random] { return quint16(random.bounded(0x10000)); };
    switch (random.bounded(7)) {
    case 0:
        return QColor();
    case 1:
        return QColor::fromHsvF(part(), part(), part(), part());
    case 2:
        return QColor::fromHslF(part(), part(), part(), part());
    case 3:
        return QColor::fromCmykF(part(), part(), part(), part(), part());
    case 4:
        return QColor::fromRgba64(wide(), wide(), wide(), wide());
    case 5:
        return QColor::fromRgbF(4.0F * part(), part() - 2.0F, part(), part()); // beyond what 16 bits hold
    default:
        return QColor::fromRgba(random.generate());
    }
}

Fields randomFields(QRandomGenerator &random)
{
    return { qint8(random.generate()), quint8(random.generate()), qint16(random.generate()),
        quint16(random.generate()), qint32(random.generate()), random.generate(), qint64(random.generate64()),
        random.generate64(), random.bounded(2) == 1, randomNumber(random), randomColor(random),
        random.bounded(2) == 1, randomColor(random), randomNumber(random) };
}

QByteArray randomBytes(QRandomGenerator &random, int count)
{
    QByteArray bytes(count, '\0');
    for (char &byte : bytes)
        byte = char(random.generate());
    return bytes;
}

void addForms()
{
    QTest::addColumn<Form>("form");

    for (int version = QDataStream::Qt_4_0; version <= QDataStream::Qt_6_0; ++version) {
        for (const auto order : { QDataStream::BigEndian, QDataStream::LittleEndian }) {
            for (const auto precision : { QDataStream::DoublePrecision, QDataStream::SinglePrecision })
                QTest::addRow("version %d, %s endian, %s precision", version,
                    order == QDataStream::BigEndian ? "big" : "little",
                    precision == QDataStream::DoublePrecision ? "double" : "single")
                    << Form { version, order, precision };
        }
    }
}

} // namespace

class tst_Record : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void recordIsAsWideAsItsFields();
    void knownFieldsHaveTheirBytes();
    void recordsAreWrittenAsByTheOperators_data();
    void recordsAreWrittenAsByTheOperators();
    void recordsAreReadAsByTheOperators_data();
    void recordsAreReadAsByTheOperators();
    void anyBytesAreReadAsByTheOperators_data();
    void anyBytesAreReadAsByTheOperators();
    void coloursOfAnyBytesAreReadAsByTheOperators();
    void unknownKindsOfColourAreInvalid();
    void cutRecordsAreReadAsByTheOperators_data();
    void cutRecordsAreReadAsByTheOperators();
    void failedStreamsAreReadAsByTheOperators();
    void recordsFollowEachOther();
};

void tst_Record::recordIsAsWideAsItsFields()
{
    QCOMPARE((Record::width<qint16, qint32, bool, double, QColor>), 2 + 4 + 1 + 8 + 11);
    QCOMPARE(writtenAsARecord({}).size(), widthOfFields);
}

void tst_Record::knownFieldsHaveTheirBytes()
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    Record::write(stream, qint16(-300), quint32(0xF00F0069U), true, false, -2.5, QColor(10, 20, 30, 40),
        QColor::fromHsv(210, 128, 200, 77), QColor());
    QCOMPARE(bytes.toHex(),
        QByteArray("fed4"
                   "f00f0069"
                   "01"
                   "00"
                   "c004000000000000"
                   "0128280a0a14141e1e0000" // RGB
                   "024d4d52088080c8c80000" // HSV: the hue in hundredths of a degree
                   "00ffff0000000000000000")); // no colour
}

void tst_Record::recordsAreWrittenAsByTheOperators_data()
{
    addForms();
}

void tst_Record::recordsAreWrittenAsByTheOperators()
{
    QFETCH(const Form, form);
    QRandomGenerator random(1);
    for (int i = 0; i < randomRecords; ++i) {
        const Fields fields = randomFields(random);
        QCOMPARE(writtenAsARecord(fields, form).toHex(), writtenByOperators(fields, form).toHex());
    }
}

void tst_Record::recordsAreReadAsByTheOperators_data()
{
    addForms();
}

void tst_Record::recordsAreReadAsByTheOperators()
{
    QFETCH(const Form, form);
    QRandomGenerator random(2);
    for (int i = 0; i < randomRecords; ++i) {
        const QByteArray bytes = writtenByOperators(randomFields(random), form);
        const Reading reading = readAsARecord(bytes, form);
        QCOMPARE(reading.status, QDataStream::Ok);
        QCOMPARE(reading.consumed, bytes.size());
        QVERIFY(reading == readByOperators(bytes, form));
    }
}

void tst_Record::anyBytesAreReadAsByTheOperators_data()
{
    addForms();
}

void tst_Record::anyBytesAreReadAsByTheOperators()
{
    QFETCH(const Form, form);
    QRandomGenerator random(3);
    for (int i = 0; i < randomRecords; ++i) {
        const QByteArray bytes = randomBytes(random, widthOfFields + 20);
        QVERIFY2(readAsARecord(bytes, form) == readByOperators(withKnownColors(bytes, form), form),
            bytes.toHex().constData());
    }
}

void tst_Record::coloursOfAnyBytesAreReadAsByTheOperators()
{
    QRandomGenerator random(4);
    constexpr int colorAt = 39;
    constexpr int padAt = colorAt + 9;
    constexpr int otherColorAt = colorAt + 12;
    for (int kind = 0; kind <= 0xFF; ++kind) {
        for (const char *pad : { "0000", "0001", "0100", "ffff" }) {
            QByteArray bytes = randomBytes(random, widthOfFields);
            bytes[colorAt] = char(kind);
            bytes.replace(padAt, 2, QByteArray::fromHex(pad));
            // One unusual colour sends a whole record to the operators: the other one is plain.
            bytes.replace(otherColorAt, 11, QByteArray::fromHex("01ffff1234567890ab0000"));
            QVERIFY2(
                readAsARecord(bytes) == readByOperators(withKnownColors(bytes)), bytes.toHex().constData());
        }
    }
}

void tst_Record::unknownKindsOfColourAreInvalid()
{
    for (const char *kind : { "06", "7f", "80", "ff" }) {
        QDataStream stream(QByteArray::fromHex(kind) + QByteArray::fromHex("ffff1111222233334444 2a"));
        QColor color(Qt::red);
        qint8 next = 0;
        Record::read(stream, std::tie(color, next));
        QCOMPARE(color.spec(), QColor::Invalid);
        QCOMPARE(color, QColor());
        QCOMPARE(next, qint8(42));
        QCOMPARE(stream.status(), QDataStream::Ok);
    }
}

void tst_Record::cutRecordsAreReadAsByTheOperators_data()
{
    addForms();
}

void tst_Record::cutRecordsAreReadAsByTheOperators()
{
    QFETCH(const Form, form);
    QRandomGenerator random(5);
    for (int i = 0; i < 5; ++i) {
        const QByteArray whole = writtenByOperators(randomFields(random), form);
        for (qsizetype size = 0; size < whole.size(); ++size) {
            const QByteArray cut = whole.left(size);
            const Reading reading = readAsARecord(cut, form);
            QCOMPARE(reading.status, QDataStream::ReadPastEnd);
            QVERIFY2(reading == readByOperators(cut, form), qPrintable(QString::number(size)));
        }
    }
}

void tst_Record::failedStreamsAreReadAsByTheOperators()
{
    const QByteArray bytes = writtenByOperators(occupied());
    for (const auto status :
        { QDataStream::ReadPastEnd, QDataStream::ReadCorruptData, QDataStream::WriteFailed }) {
        const auto readFailed = [&](const auto &read) {
            return readBy(bytes, {}, [&](QDataStream &stream, Fields &fields) {
                stream.setStatus(status);
                read(stream, fields);
            });
        };
        const Reading record
            = readFailed([](QDataStream &stream, Fields &fields) { Record::read(stream, fields.tied()); });
        const Reading operators = readFailed([](QDataStream &stream, Fields &fields) {
            std::apply([&stream](auto &...field) { (stream >> ... >> field); }, fields.tied());
        });
        QCOMPARE(record.status, status);
        QVERIFY(record == operators);
    }
}

void tst_Record::recordsFollowEachOther()
{
    QByteArray bytes;
    QDataStream writer(&bytes, QIODevice::WriteOnly);
    Record::write(writer, qint16(7), QColor::fromHsv(1, 2, 3));
    writer << u"between"_s;
    Record::write(writer, 2.5);

    QDataStream reader(bytes);
    qint16 id = 0;
    QColor color;
    QString text;
    double number = 0.0;
    Record::read(reader, std::tie(id, color));
    reader >> text;
    Record::read(reader, std::tie(number));
    QCOMPARE(id, qint16(7));
    QCOMPARE(color, QColor::fromHsv(1, 2, 3));
    QCOMPARE(text, u"between"_s);
    QCOMPARE(number, 2.5);
    QVERIFY(reader.atEnd());
}

QTEST_GUILESS_MAIN(tst_Record)
#include "tst_record.moc"
