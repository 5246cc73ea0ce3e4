// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rowdigest.h"

#include "items/core/limits.h"
#include "label/batch/filedigest.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace {

/// In hexadecimal digits.
constexpr qsizetype length = 16;
/// More than labels have pictures by the row, and less than memory minds.
constexpr qsizetype mostKnown = 1'000;

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
    // Files that the system makes up as they are read have a size of 0, and may have no end.
    const QByteArray digest = FileDigest::ofFile(path, info.size());
    return m_known.insert(path, { info.size(), info.lastModified(), digest })->digest;
}
