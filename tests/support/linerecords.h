// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// Whole records of lines as bytes. What reads, writes and damages them is that of the rectangles.
namespace LineRecords {

// The records below are printed by tests/tools/record_line.py, which knows nothing of the library.

// A new line. The item's part takes 158 bytes, the pen colour 11, the pen 14, the line's own part
// 8 + 2 + 8 + 8 = 26: 158 + 11 + 14 + 26 = 209 bytes.
inline constexpr char newLine[] = "FFFF" // item id -1
                                  "00000001" // flag word: visible in print
                                  "00" // horizontal mirror
                                  "00" // vertical mirror
                                  "01" // allow overprint
                                  "0000000000000000" // z value
                                  "0000010F" // graphics-item flags
                                  "01" // visible
                                  "0000000000000000" // rotation
                                  "4059000000000000" // width 100
                                  "0000000000000000" // height 0
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
                                  "4059000000000000" // length 100
                                  "0000" // no arrows
                                  "0000000000000000" // x
                                  "0000000000000000"; // y

// The same to a little-endian stream.
inline constexpr char newLineLittleEndian[] = "FFFF" // item id -1
                                              "01000000" // flag word
                                              "000001" // mirrors, overprint
                                              "0000000000000000" // z value
                                              "0F010000" // graphics-item flags
                                              "01" // visible
                                              "0000000000000000" // rotation
                                              "0000000000005940 0000000000000000" // size
                                              "000000000000F03F 000000000000F03F" // scales
                                              "000000000000F03F 0000000000000000 0000000000000000"
                                              "0000000000000000 000000000000F03F 0000000000000000"
                                              "0000000000000000 0000000000000000 000000000000F03F"
                                              "0000000000000000 0000000000000000" // position
                                              "FFFFFFFF FFFFFFFF" // datasource
                                              "01FFFF0000000000000000" // pen colour
                                              "0100 01000000 20000000 80000000" // pen
                                              "0000000000005940" // length
                                              "0000" // arrows
                                              "0000000000000000 0000000000000000"; // position

// The same to a stream of single precision: 20 numbers of 4 bytes less, 209 - 80 = 129 bytes.
inline constexpr char newLineSinglePrecision[] = "FFFF" // item id -1
                                                 "00000001" // flag word
                                                 "000001" // mirrors, overprint
                                                 "00000000" // z value
                                                 "0000010F" // graphics-item flags
                                                 "01" // visible
                                                 "00000000" // rotation
                                                 "42C80000 00000000" // size
                                                 "3F800000 3F800000" // scales
                                                 "3F800000 00000000 00000000"
                                                 "00000000 3F800000 00000000"
                                                 "00000000 00000000 3F800000"
                                                 "00000000 00000000" // position
                                                 "FFFFFFFF FFFFFFFF" // datasource
                                                 "01FFFF0000000000000000" // pen colour
                                                 "0001 00000001 00000020 00000080" // pen
                                                 "42C80000" // length
                                                 "0000" // arrows
                                                 "00000000 00000000"; // position

// A line that differs from a new one in every field but the vertical mirror, which a line does not have, and
// the height. Its datasource field of nine UTF-16 units makes it 18 bytes longer: 227.
inline constexpr char changedLine[] = "FED4" // item id -300
                                      "F00F0069" // flag word, with bits that nobody knows
                                      "01" // horizontal mirror
                                      "00" // vertical mirror
                                      "00" // no overprint
                                      "C004000000000000" // z value -2.5
                                      "00000107" // graphics-item flags
                                      "00" // invisible
                                      "403E800000000000" // rotation 30.5
                                      "406F480000000000" // width 250.25
                                      "0000000000000000" // height 0
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
                                      "406F480000000000" // length 250.25
                                      "0053" // arrows: chevrons to the left, filled to the right
                                      "C05EE00000000000" // x -123.5
                                      "40B0002000000000"; // y 4096.125

// Where the line's own fields start in a record with a null datasource field.
namespace Offset {
inline constexpr int length = 183;
inline constexpr int arrows = 191;
inline constexpr int x = 193;
inline constexpr int y = 201;
} // namespace Offset

inline constexpr int recordSize = 209;

} // namespace LineRecords
