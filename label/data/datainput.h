// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"

#include <QIODevice>

#include <memory>

/// Bytes of a data source, and what to call them.
struct DataInput
{
    QString name; ///< for people: as the user named the file
    std::unique_ptr<QIODevice> device; ///< open for reading; null where there is nothing to read

    /// Opens a file of at most LabelLimits::MaxDataBytes, or the standard input if the path is "-". Without a
    /// device, and with the reason in problems, if it cannot be read or is no ordinary file.
    [[nodiscard]] VX_LABEL_EXPORT static DataInput open(const QString &path, Problems &problems);
};
