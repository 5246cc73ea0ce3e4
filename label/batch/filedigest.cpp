// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/filedigest.h"

#include <QCryptographicHash>
#include <QFile>

#include <algorithm>

QByteArray FileDigest::of(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

QByteArray FileDigest::ofFile(const QString &path, qint64 most)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    constexpr qint64 piece = 64 * 1024;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (qint64 left = most; left > 0;) {
        const QByteArray bytes = file.read(std::min(left, piece));
        if (bytes.isEmpty())
            break;
        hash.addData(bytes);
        left -= bytes.size();
    }
    return file.error() == QFileDevice::NoError ? hash.result().toHex() : QByteArray();
}
