// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// By how much limits of time are longer for programs that sanitizers have slowed down.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr int slowness = 8;
#else
inline constexpr int slowness = 1;
#endif
