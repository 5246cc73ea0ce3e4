// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rowdigest.h"

#include "items/core/limits.h"
#include "label/batch/filedigest.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

/// In hexadecimal digits.
constexpr qsizetype length = 16;
/// More than labels have pictures by the row, and less than memory minds.
constexpr qsizetype mostKnown = 1'000;

/// Of so many bytes: files that the system makes up as they are read have a size of 0, and may have no end.
QByteArray digestOf(const QString &path, qint64 size)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    constexpr qint64 piece = 64 * 1024;
    while (size > 0) {
        const QByteArray bytes = file.read(std::min(size, piece));
        if (bytes.isEmpty())
            break;
        hash.addData(bytes);
        size -= bytes.size();
    }
    return hash.result().toHex();
}

} // namespace

QByteArray RowDigest::ofValues(const Row &row)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const QString &value : row.values) {
        const QByteArray bytes = value.toUtf8();
        hash.addData(QByteArray::number(bytes.size()) + ':' + bytes);
    }
    return hash.result().toHex().first(length);
}

QByteArray RowDigest::withFiles(const QByteArray &ofValues, const QStringList &files)
{
    QByteArray all = ofValues;
    for (const QString &file : files)
        all += ofFile(file);
    return files.isEmpty() ? ofValues : FileDigest::of(all).first(length);
}

QByteArray RowDigest::ofFile(const QString &path)
{
    const QFileInfo info(path);
    if (info.size() > Limits::MaxPictureBytes)
        return {};
    const auto known = m_known.constFind(path);
    if (known != m_known.cend() && known->size == info.size() && known->modified == info.lastModified())
        return known->digest;
    if (m_known.size() >= mostKnown)
        m_known.clear();
    return m_known.insert(path, { info.size(), info.lastModified(), digestOf(path, info.size()) })->digest;
}
