// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/datainput.h"
#include "label/data/rowsource.h"

#include <QJsonArray>
#include <QJsonObject>

#include <memory>

class TextLines;

/// Rows from JSON: a list of objects, or an object on each line (JSON Lines), which is read line by line. The
/// keys are the columns, in alphabetical order: of a list those of all its objects, of lines those of the
/// first. A value is a text, a number, true, false, or null, which is empty, and so is one whose key is
/// missing. A row that is no object, holds a list or an object, or has a key that is no column, is broken.
class VX_LABEL_EXPORT JsonRows final : public RowSource
{
public:
    /// Takes the input. Null, with the reason in problems, if it cannot be read, is no JSON, or has no row to
    /// take the columns from.
    [[nodiscard]] static std::unique_ptr<JsonRows> open(DataInput input, Problems &problems);
    ~JsonRows() override;

    [[nodiscard]] const QStringList &columns() const override { return m_columns; }
    [[nodiscard]] std::optional<qint64> total() const override;
    [[nodiscard]] std::optional<qint64> estimate() const override;
    [[nodiscard]] RowResult next() override;

private:
    explicit JsonRows(std::unique_ptr<TextLines> lines);

    [[nodiscard]] bool begin(Problems &problems);
    [[nodiscard]] bool beginList(Problems &problems);
    [[nodiscard]] bool beginLines(Problems &problems);
    /// Skips lines without anything on them. False at the end, and where nothing more can be read.
    bool readLine();
    [[nodiscard]] RowResult nextOfList();
    [[nodiscard]] RowResult nextLine();
    [[nodiscard]] RowResult rowOf(const QJsonValue &value, const QString &where, const QString &address);
    [[nodiscard]] RowResult broken(
        const QString &where, const QString &address, const QString &what, const QString &advice) const;

    std::unique_ptr<TextLines> m_lines;
    QByteArray m_line;
    qint64 m_lineNumber = 0;
    bool m_lineIsNext = false; ///< was read for the columns, and not given
    bool m_isList = false;
    QJsonArray m_list;
    QStringList m_columns;
    qint64 m_rows = 0;
};
