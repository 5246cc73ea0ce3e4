// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/datasource.h"

#include <QJsonArray>

class ProblemLog;

/// Data sources in documents.
namespace DataSourceMap {

/// With the keys that the kind of each has, without those that hold nothing, or what a new source has.
[[nodiscard]] VX_LABEL_EXPORT QJsonArray toJson(const QList<DataSource> &sources);

/// What cannot be read is a problem in the log, with its JSON pointer below the given one, and is left out.
[[nodiscard]] QList<DataSource> fromJson(const QJsonArray &json, const QString &pointer, ProblemLog &log);

} // namespace DataSourceMap
