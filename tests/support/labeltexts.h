// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "tests/support/hexbytes.h"

#include <QFont>
#include <QGraphicsTextItem>
#include <QTextDocument>

#include <bit>

/// What label texts look like and how they are recorded, without asking the library.
namespace LabelTexts {

inline const QString family = QStringLiteral("_Fen Loma");

/// Shows the default family in a font that every machine of the developers has.
inline void useKnownFont()
{
    QFont::insertSubstitution(family, QStringLiteral("Loma"));
}

inline QFont fontOf(int pixelSize, QFont::Weight weight = QFont::Bold)
{
    QFont font;
    font.setFamily(family);
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    return font;
}

/// The size that Qt gives a text.
inline QSizeF naturalSize(const QString &text, const QFont &font = fontOf(48), double margin = 4.0)
{
    QGraphicsTextItem item;
    item.document()->setDocumentMargin(margin);
    item.setFont(font);
    item.setPlainText(text);
    return item.boundingRect().size();
}

/// The size that Qt gives the text of a label.
inline QSizeF naturalSizeOf(const QGraphicsTextItem &label)
{
    return naturalSize(label.toPlainText(), label.font(), label.document()->documentMargin());
}

inline QByteArray hexOf(double number)
{
    return QByteArray::number(std::bit_cast<quint64>(number), 16).rightJustified(16, '0');
}

// The record of a new label. Text 4 + 4 × 2 = 12 bytes, colour 11, alignment 2, margin 8, the fillable item
// 196, the family 4 + 9 × 2 = 22, size and weight 4, italic and underline 2, two coefficients 16, four bytes:
//   12 + 11 + 2 + 8 + 196 + 22 + 4 + 2 + 16 + 4 = 277 bytes.
inline constexpr char beforeTheItem[] = "00000008 0054 0045 0058 0054" // "TEXT"
                                        "01FFFF0000000000000000" // text colour: RGB, opaque, black
                                        "0084" // alignment: centred both ways
                                        "4010000000000000"; // margin 4
inline constexpr char beforeTheSize[] = "FFFF" // item id -1
                                        "00000001" // flag word: visible in print
                                        "00 00 01" // mirrors, overprint
                                        "0000000000000000" // z value
                                        "00000107" // graphics-item flags
                                        "01" // visible
                                        "0000000000000000"; // rotation
inline constexpr char behindTheSize[]
    = "3FF0000000000000 3FF0000000000000" // scales
      "3FF0000000000000 0000000000000000 0000000000000000" // m11, m12, m13
      "0000000000000000 3FF0000000000000 0000000000000000" // m21, m22, m23
      "0000000000000000 0000000000000000 3FF0000000000000" // m31, m32, m33
      "0000000000000000 0000000000000000" // position
      "FFFFFFFF FFFFFFFF" // datasource id -1, field: null
      "01FFFF0000000000000000" // pen colour: RGB, opaque, black
      "0000 00000001 00000020 00000080" // pen: no width, solid, round cap, round join
      "0001" // brush style: solid
      "0100000000000000000000"; // fill colour: RGB, transparent
inline constexpr char behindTheItem[] = "00000012 005F 0046 0065 006E 0020 004C 006F 006D 0061" // "_Fen Loma"
                                        "0030" // 48 pixels
                                        "02BC" // weight 700
                                        "00 00" // neither italic nor underlined
                                        "0000000000000000 0000000000000000" // M31, M32
                                        "00 00 00 00"; // vertical, resized, pinned, limited

inline QByteArray newLabel(const QSizeF &size)
{
    return fromHexText(beforeTheItem) + fromHexText(beforeTheSize) + fromHexText(hexOf(size.width()))
        + fromHexText(hexOf(size.height())) + fromHexText(behindTheSize) + fromHexText(behindTheItem);
}

// Where fields start.
namespace Offset {
inline constexpr int alignment = 12 + 11;
inline constexpr int item = alignment + 2 + 8;
inline constexpr int mirrors = item + 6;
inline constexpr int width = item + 30;
inline constexpr int x = item + 134;
inline constexpr int pixelSize = item + 196 + 22;
inline constexpr int weight = pixelSize + 2;
inline constexpr int flags = weight + 2 + 2 + 16;
} // namespace Offset

inline QByteArray patched(QByteArray record, int offset, const char *hex)
{
    const QByteArray bytes = fromHexText(hex);
    return record.replace(offset, bytes.size(), bytes);
}

} // namespace LabelTexts
