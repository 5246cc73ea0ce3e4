// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// How often libzint was called. The source of this header stands between the program, its libraries and
/// libzint; a test that asks compiles it in.
namespace EncoderCalls {

/// Symbols encoded, in vain or not, since the program started.
[[nodiscard]] int encodings();
/// Symbols that libzint made a drawing of.
[[nodiscard]] int drawings();

} // namespace EncoderCalls
