// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace BarcodeReadings {
struct Expected;
}

/// The table of docs/barcodes.md: how the symbologies did. It begins behind a marker and reaches to the end.
class BarcodeTable
{
public:
    void addReadings(const BarcodeReadings::Expected &expected, const QString &name, qsizetype count);
    void addComparison(int symbol, qsizetype count);
    void addExplanation(int symbol, const QString &why);

    /// The names of symbologies without a row.
    [[nodiscard]] QStringList missing() const;
    [[nodiscard]] bool isOnThePage() const;
    /// Writes the table; false if that fails.
    [[nodiscard]] bool update() const;

private:
    struct Row
    {
        int symbol;
        QString text;
    };

    void addRow(int symbol, const QString &name, const QString &by, const QString &result);
    [[nodiscard]] QString table() const;
    [[nodiscard]] QString page() const;

    std::vector<Row> m_rows;
};
