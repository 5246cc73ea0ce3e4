// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/filedigest.h"

#include <QCryptographicHash>
#include <QFile>

QByteArray FileDigest::of(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

QByteArray FileDigest::ofFile(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result().toHex() : QByteArray();
}
