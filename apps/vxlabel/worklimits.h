// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

/// What the program takes of the machine at most. A label, its data and the pictures they name may come from
/// anybody: nothing of them is to take all memory, or to keep a batch of the night busy until the morning.
struct WorkLimits
{
    // 0: no limit
    int megabytes = 2048; ///< of memory, without that of programs it starts
    int seconds = 60; ///< of processor time for one label, or one row of a batch
    int fileMegabytes = 4096; ///< of a file that is written

    [[nodiscard]] qint64 fileBytes() const { return qint64(fileMegabytes) * 1024 * 1024; }
    /// Whether less than a quarter of the memory that may be taken is left.
    [[nodiscard]] bool memoryIsScarce() const;
    /// For this process, from now on. Memory is not limited where sanitizers need all addresses.
    void apply() const;
    /// Gives the process its processor time anew.
    void renewTime() const;
};
