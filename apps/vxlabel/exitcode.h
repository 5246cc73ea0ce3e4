// SPDX-License-Identifier: BSD-3-Clause
#pragma once

/// What the program answers to its caller. The help text lists them.
enum class ExitCode {
    Ok = 0,
    SomeFailed = 1, ///< finished, but left something out
    Usage = 2,
    BadDocument = 3,
    DataSource = 4,
    CannotWrite = 5,
    Interrupted = 130 ///< as a shell reports SIGINT
};
