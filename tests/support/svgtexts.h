// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

/// SVG texts for tests.
namespace SvgTexts {

/// A drawing of a size with the given elements.
inline QByteArray drawing(int width, int height, const QByteArray &elements)
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\""
        + QByteArray::number(width) + "\" height=\"" + QByteArray::number(height) + "\">" + elements
        + "</svg>";
}

/// 40 × 20: the left half red, the right half blue.
inline const QByteArray redAndBlue = drawing(40, 20,
    "<rect width=\"20\" height=\"20\" fill=\"#ff0000\"/>"
    "<rect x=\"20\" width=\"20\" height=\"20\" fill=\"#0000ff\"/>");

/// 40 × 20: the left half red, the right half open.
inline const QByteArray halfRed = drawing(40, 20, "<rect width=\"20\" height=\"20\" fill=\"#ff0000\"/>");

/// 30 × 10 with a link to a picture.
inline const QByteArray linked = drawing(30, 10, "<image xlink:href=\"logo.png\" width=\"9\" height=\"9\"/>");

} // namespace SvgTexts
