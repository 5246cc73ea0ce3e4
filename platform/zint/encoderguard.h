// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace Zint {

struct BarcodeSettings;

/// The longest text in bytes of UTF-8, which is what libzint itself takes.
inline constexpr qsizetype MaxTextBytes = 17'400;
/// The largest number of entries that a text may need in the tables of PDF417. libzint has room for 2,710 and
/// writes past them; no symbol holds more than 1,850.
inline constexpr qsizetype MaxPdf417Entries = 2'700;
/// The longest text of an Aztec code: its digits. libzint writes past its tables for longer ones.
inline constexpr qsizetype MaxAztecBytes = 3'832;
/// The longest text of an Aztec code whose size is given.
inline constexpr qsizetype MaxSizedAztecBytes = 1'500;

/// How many entries libzint needs at most for a text in the tables of PDF417: one for each byte, and two for
/// each switch to another of the sub-modes for capitals, small letters, figures with signs, and punctuation.
[[nodiscard]] qsizetype pdf417Entries(QByteArrayView utf8);

/// The text in UTF-8; nothing if it is no Unicode text, that is, has half a surrogate pair.
[[nodiscard]] std::optional<QByteArray> encoderText(const QString &text);

/// Whether the text is too long for the symbol, without asking libzint, which damages its stack by some texts
/// that are.
[[nodiscard]] bool isTooLong(const BarcodeSettings &settings, QByteArrayView utf8);

} // namespace Zint
