// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/emptysvg.h"

#include <QString>

QByteArray EmptySvg::createEmptySvg()
{
    // The rectangle gives the drawing its extent. Symbols know it as a background by its id.
    const QString head
        = QStringLiteral("<!DOCTYPE html>\n"
                         "<svg fill=\"#000000\" stroke=\"#000000\" width=\"100\" height=\"100\">\n"
                         "<rect id=\"background_fix\" fill=\"#fffffe\" stroke-width=\"0\" "
                         "fill-opacity=\"0\" x=\"0\" y=\"0\" width=\"100\" height=\"100\" />\n");
    return (head + QStringLiteral("\n\n</svg>")).toLocal8Bit();
}

QByteArray EmptySvg::getEmptySvg()
{
    static const QByteArray svg = createEmptySvg();
    return svg;
}
