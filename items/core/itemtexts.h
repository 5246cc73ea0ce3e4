// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// What all items with a text have in common.
namespace ItemTexts {

/// The family of the font that they start with.
inline const QString defaultFontFamily = QStringLiteral("_Fen Loma");

/// Stands in values that a function of a datasource has made. It is never shown.
inline const QString functionMarker = QStringLiteral("!!!###VXFUNCTIONDATASOURCE###!!!");

inline QString withoutMarker(const QString &text)
{
    return QString(text).remove(functionMarker);
}

} // namespace ItemTexts
