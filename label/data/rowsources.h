// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/datasource.h"
#include "label/data/rowsource.h"

#include <memory>

/// Data sources as rows.
namespace RowSources {

/// Where rows of a source are looked for.
struct Place
{
    QString folder; ///< that a relative location begins in
    bool mayLeaveFolder = false; ///< as one may that an operator has typed, and none of a document
    QString passwordFile = {}; ///< see SqlSource::Options
};

/// The kind of source that a location suggests: that of an URL of a database, of a file the one of its
/// ending; separated values if none is known.
[[nodiscard]] VX_LABEL_EXPORT DataSource::Kind kindOf(const QString &location);

/// Opens a source that is no function. Whether a database is asked at all that a document names is for the
/// caller to decide. Null, with the reason in problems, if it cannot be read. Of a file the location "-" is
/// the standard input, where the folder may be left.
[[nodiscard]] VX_LABEL_EXPORT std::unique_ptr<RowSource> open(
    const DataSource &source, const Place &place, Problems &problems);

} // namespace RowSources
