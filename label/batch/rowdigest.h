// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/rowsource.h"

#include <QByteArray>
#include <QDateTime>
#include <QHash>

/// Tells whether what is printed of a row has changed.
class RowDigest
{
public:
    /// The beginning of the SHA-256 of all values, in hexadecimal digits.
    [[nodiscard]] static QByteArray ofValues(const Row &row);
    /// The same together with the contents of files; without any, that of the values.
    [[nodiscard]] QByteArray withFiles(const QByteArray &ofValues, const QStringList &files);

private:
    struct Known
    {
        qint64 size;
        QDateTime modified;
        QByteArray digest;
    };

    /// Many rows name one file. Empty for what is no picture or drawing by its size.
    [[nodiscard]] QByteArray ofFile(const QString &path);

    QHash<QString, Known> m_known;
};
