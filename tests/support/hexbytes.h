// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

/// The bytes of a hex text; blanks between the digits are allowed.
[[nodiscard]] inline QByteArray fromHexText(const char *text)
{
    return QByteArray::fromHex(text);
}

/// Bytes as a hex text with blanks, for readable failures.
[[nodiscard]] inline QByteArray toHexText(const QByteArray &bytes)
{
    return bytes.toHex(' ');
}
