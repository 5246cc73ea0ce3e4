// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"
#include "items/style/fillableitem.h"
#include "tests/support/bareshape.h"
#include "tests/support/hexbytes.h"

#include <QDataStream>
#include <QTransform>

#include <bit>

/// Whole records of rectangles as bytes, and what it takes to read, write and damage them.
namespace RectangleRecords {

// The records below are printed by tests/tools/record_rectangle.py, which knows nothing of the library.

// A new rectangle. The item's part takes
//   2 + 4 + 3 × 1 + 8 + 4 + 1 + 8 + 2 × 8 + 2 × 8 + 9 × 8 + 2 × 8 + 4 + 4 = 158 bytes,
// the pen colour 11, the pen 2 + 3 × 4 = 14, the fill 2 + 11 = 13: 158 + 11 + 14 + 13 = 196 bytes.
inline constexpr char newRectangle[] = "FFFF" // item id -1
                                       "00000001" // flag word: visible in print
                                       "00" // horizontal mirror
                                       "00" // vertical mirror
                                       "01" // allow overprint
                                       "0000000000000000" // z value
                                       "00000107" // graphics-item flags
                                       "01" // visible
                                       "0000000000000000" // rotation
                                       "4059000000000000" // width 100
                                       "4059000000000000" // height 100
                                       "3FF0000000000000" // horizontal scale 1
                                       "3FF0000000000000" // vertical scale 1
                                       "3FF0000000000000" // m11 1
                                       "0000000000000000" // m12
                                       "0000000000000000" // m13
                                       "0000000000000000" // m21
                                       "3FF0000000000000" // m22 1
                                       "0000000000000000" // m23
                                       "0000000000000000" // m31
                                       "0000000000000000" // m32
                                       "3FF0000000000000" // m33 1
                                       "0000000000000000" // x
                                       "0000000000000000" // y
                                       "FFFFFFFF" // datasource id -1
                                       "FFFFFFFF" // datasource field: null
                                       "01FFFF0000000000000000" // pen colour: RGB, opaque, black
                                       "0001" // pen width 1
                                       "00000001" // pen style: solid
                                       "00000020" // cap style: round
                                       "00000080" // join style: round
                                       "0001" // brush style: solid
                                       "0100000000000000000000"; // fill colour: RGB, transparent

/// The part of it that all items have, with other words of flags.
inline QByteArray newItem(const char *itemFlags, const char *graphicsFlags)
{
    constexpr int itemBytes = 158;
    constexpr int itemFlagsAt = 2;
    constexpr int graphicsFlagsAt = 17;
    QByteArray item = fromHexText(newRectangle).first(itemBytes);
    item.replace(itemFlagsAt, 4, fromHexText(itemFlags));
    return item.replace(graphicsFlagsAt, 4, fromHexText(graphicsFlags));
}

// The same to a little-endian stream.
inline constexpr char newRectangleLittleEndian[] = "FFFF" // item id -1
                                                   "01000000" // flag word
                                                   "000001" // mirrors, overprint
                                                   "0000000000000000" // z value
                                                   "07010000" // graphics-item flags
                                                   "01" // visible
                                                   "0000000000000000" // rotation
                                                   "0000000000005940 0000000000005940" // size
                                                   "000000000000F03F 000000000000F03F" // scales
                                                   "000000000000F03F 0000000000000000 0000000000000000"
                                                   "0000000000000000 000000000000F03F 0000000000000000"
                                                   "0000000000000000 0000000000000000 000000000000F03F"
                                                   "0000000000000000 0000000000000000" // position
                                                   "FFFFFFFF FFFFFFFF" // datasource
                                                   "01FFFF0000000000000000" // pen colour
                                                   "0100 01000000 20000000 80000000" // pen
                                                   "0100" // brush style
                                                   "0100000000000000000000"; // fill colour

// The same to a stream of single precision: 17 numbers of 4 bytes less, 196 - 68 = 128 bytes.
inline constexpr char newRectangleSinglePrecision[] = "FFFF" // item id -1
                                                      "00000001" // flag word
                                                      "000001" // mirrors, overprint
                                                      "00000000" // z value
                                                      "00000107" // graphics-item flags
                                                      "01" // visible
                                                      "00000000" // rotation
                                                      "42C80000 42C80000" // size
                                                      "3F800000 3F800000" // scales
                                                      "3F800000 00000000 00000000"
                                                      "00000000 3F800000 00000000"
                                                      "00000000 00000000 3F800000"
                                                      "00000000 00000000" // position
                                                      "FFFFFFFF FFFFFFFF" // datasource
                                                      "01FFFF0000000000000000" // pen colour
                                                      "0001 00000001 00000020 00000080" // pen
                                                      "0001" // brush style
                                                      "0100000000000000000000"; // fill colour

// A rectangle that differs from a new one in every field. Its datasource field of nine UTF-16 units makes it
// 18 bytes longer: 214.
inline constexpr char changedRectangle[]
    = "FED4" // item id -300
      "F00F0069" // flag word, with bits that nobody knows
      "01" // horizontal mirror
      "01" // vertical mirror
      "00" // no overprint
      "C004000000000000" // z value -2.5
      "0000010F" // graphics-item flags
      "00" // invisible
      "403E800000000000" // rotation 30.5
      "406F480000000000" // width 250.25
      "4044400000000000" // height 40.5
      "4004000000000000" // horizontal scale 2.5
      "3FD0000000000000" // vertical scale 0.25
      "3FF8000000000000" // m11 1.5
      "3FD0000000000000" // m12 0.25
      "3F60000000000000" // m13 0.001953125
      "BFE0000000000000" // m21 -0.5
      "4000000000000000" // m22 2
      "BF80000000000000" // m23 -0.0078125
      "4029800000000000" // m31 12.75
      "C01E000000000000" // m32 -7.5
      "4010000000000000" // m33 4
      "C05EE00000000000" // x -123.5
      "40B0002000000000" // y 4096.125
      "00011170" // datasource id 70000
      "00000012" // datasource field of 18 bytes:
      "0047007200F600DF00650020" // "Größe "
      "20ACD83DDE00" // "€😀"
      "024D4D52088080C8C80000" // pen colour: HSV 210°, 128, 200, alpha 77
      "0007" // pen width 7
      "00000004" // pen style: dash, dot
      "00000000" // cap style: flat
      "00000040" // join style: bevel
      "FFFF" // brush style -1
      "0128280A0A14141E1E0000"; // fill colour: RGB 10, 20, 30, alpha 40

// Where fields start.
namespace Offset {
inline constexpr int itemFlags = 2;
inline constexpr int mirrors = 6; // two, and the overprint flag
inline constexpr int overprint = 8;
inline constexpr int zValue = 9;
inline constexpr int visible = 21;
inline constexpr int rotation = 22;
inline constexpr int width = 30;
inline constexpr int height = 38;
inline constexpr int scales = 46;
inline constexpr int y = 142;
inline constexpr int datasourceField = 154;
// Of a record with a null datasource field:
inline constexpr int penWidth = 169;
inline constexpr int penStyle = 171;
inline constexpr int capStyle = 175;
inline constexpr int joinStyle = 179;
inline constexpr int brushStyle = 183;
inline constexpr int fillColor = 185;
// Of the changed rectangle:
inline constexpr int changedBrushStyle = 201;
} // namespace Offset

inline constexpr unsigned int presentVersion = 6;

/// A fillable item and nothing else.
class FilledSample final : public BareShape<FillableItem>
{
public:
    Item *createItemCopy() override { return copyAs<FilledSample>().release(); }
    void preparePrintImage() override { setPreprintedImage(QImage()); }
};

enum class Form { BigEndian, LittleEndian, SinglePrecision };

inline void setForm(QDataStream &stream, Form form)
{
    stream.setVersion(QDataStream::Qt_6_4);
    if (form == Form::LittleEndian)
        stream.setByteOrder(QDataStream::LittleEndian);
    if (form == Form::SinglePrecision)
        stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
}

inline QByteArray saved(Item &item, Form form = Form::BigEndian)
{
    QByteArray record;
    QDataStream stream(&record, QIODevice::WriteOnly);
    setForm(stream, form);
    item.saveItemToData(stream);
    return record;
}

struct Reading
{
    QDataStream::Status status;
    qint64 consumed;
};

inline Reading load(
    Item &item, const QByteArray &record, unsigned int version = presentVersion, Form form = Form::BigEndian)
{
    QDataStream stream(record);
    setForm(stream, form);
    item.loadItemFromData(stream, version);
    return { stream.status(), stream.device()->pos() };
}

inline QByteArray patched(const char *record, int offset, const char *bytes)
{
    const QByteArray patch = fromHexText(bytes);
    return fromHexText(record).replace(offset, patch.size(), patch);
}

inline QByteArray patched(const char *record, int offset, double number)
{
    return patched(
        record, offset, QByteArray::number(std::bit_cast<quint64>(number), 16).rightJustified(16, '0'));
}

// A record of version 5 or less knows neither mirrors nor overprint.
inline QByteArray withoutMirrors(const char *record)
{
    return fromHexText(record).remove(Offset::mirrors, 3);
}

inline QTransform changedTransform()
{
    return { 1.5, 0.25, 0.001953125, -0.5, 2, -0.0078125, 12.75, -7.5, 4 };
}

inline QString changedField()
{
    return QStringLiteral("Größe €😀");
}

inline QColor changedPenColor()
{
    return QColor::fromHsv(210, 128, 200, 77);
}

} // namespace RectangleRecords
