// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QIODevice>

/// Writes all of the data or tells that it could not: a disk that fills up takes part of them and reports no
/// error; only the next write tells why.
[[nodiscard]] inline bool writeWhole(QIODevice &device, const QByteArray &data)
{
    for (qint64 done = 0; done < data.size();) {
        const qint64 written = device.write(data.constData() + done, data.size() - done);
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}
