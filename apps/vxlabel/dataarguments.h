// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/rowsource.h"
#include "label/labeldocument.h"

#include <QString>

#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
}

/// What the arguments tell about the data.
struct DataArguments
{
    std::string location; ///< a file, the URL of a database, or "@2" for that source of the label; empty: its
                          ///< only one
    std::string query;
    std::string passwordFile;
    std::string kind; ///< "csv" or "json"; empty: as the ending tells
    std::string encoding;
    std::string delimiter;
};

/// Rows for a label.
struct DataRows
{
    std::unique_ptr<RowSource> rows; ///< null, with the reasons in the problems, if there are none
    std::optional<int> source; ///< the one of the label that they are of
    QStringList files = {}; ///< that are read for them
};

/// Adds the arguments.
void addDataArguments(CLI::App &command, DataArguments &arguments);

/// Opens the rows that the arguments ask for, or else those of the label, whose file has this path.
[[nodiscard]] DataRows openData(
    const DataArguments &arguments, const LabelDocument &label, const QString &labelPath, Problems &problems);
