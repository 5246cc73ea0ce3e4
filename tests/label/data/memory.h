// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QFile>

/// The memory of this process in MiB, as the kernel counts it.
namespace Memory {

#ifdef __SANITIZE_ADDRESS__
inline constexpr qint64 extra = 600; ///< shadow memory, and freed blocks that stay reserved
#else
inline constexpr qint64 extra = 0;
#endif

/// By the name that the kernel has for it: "VmRSS:" now, "VmHWM:" the most there was. -1 if it does not tell.
inline qint64 mebibytes(const QByteArray &name)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.mid(name.size()).trimmed().split(' ').first().toLongLong() / 1024;
    }
    return -1;
}

/// Lets the kernel measure the most from here on. False if it does not.
inline bool forgetPeak()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    return file.open(QIODevice::WriteOnly) && file.write("5") == 1;
}

} // namespace Memory
