// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QString>
#include <Qt>

namespace Zint {

/// How a symbol and its human-readable line are painted: what may change without encoding anew.
struct BarcodeStyle
{
    QColor foreground; ///< invalid: black
    QColor background; ///< invalid: none
    QString fontFamily;
    int fontSize = 7; ///< in points of 4/3 units
    int textAlign = Qt::AlignHCenter | Qt::AlignVCenter;
    bool hideText = false;
    bool textAbove = false;
    bool showStartStop = false;
    bool bold = false;
    bool italic = false;
    bool underline = false;
};

} // namespace Zint
