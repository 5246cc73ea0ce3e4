// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/datainput.h"
#include "label/data/rowsource.h"

#include <QByteArray>

#include <memory>

/// How a file of separated values is written.
struct CsvDialect
{
    QByteArray encoding; ///< as QStringConverter names it; empty: the byte order mark, or else UTF-8
    char delimiter = 0; ///< between two values; 0: what the first lines suggest
};

/// Rows from a file of comma-, semicolon- or tab-separated values (RFC 4180), whose first row names the
/// columns. Values in quotes may hold delimiters, quotes (doubled) and line ends. Blanks are part of a value.
/// Empty lines are skipped. A row of too few or too many values is broken; a quote in the middle of a value,
/// one that is not closed, and bytes that are none of the encoding end the source.
class VX_LABEL_EXPORT CsvSource final : public RowSource
{
public:
    /// Takes the input. Null, with the reason in problems, if it cannot be read or has no usable first row.
    [[nodiscard]] static std::unique_ptr<CsvSource> open(
        DataInput input, const CsvDialect &dialect, Problems &problems);
    ~CsvSource() override;

    [[nodiscard]] const QStringList &columns() const override { return m_columns; }
    [[nodiscard]] std::optional<qint64> estimate() const override;
    [[nodiscard]] RowResult next() override;

private:
    class Reader;

    explicit CsvSource(std::unique_ptr<Reader> reader);

    std::unique_ptr<Reader> m_reader;
    QStringList m_columns;
    qint64 m_rows = 0;
};
