// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QList>
#include <QString>

/// Where the items of a label that are bound to its id take their content from. A document holds no password:
/// a database asks the environment for it.
struct DataSource
{
    /// The first three deliver rows, of which an item takes the column that its field names. The others are
    /// functions: they deliver one text for each label, whatever the field.
    enum class Kind {
        Csv, ///< a file of separated values
        Json, ///< a list of objects, or an object on each line
        Sql, ///< the answer of a database
        Counter, ///< a number that grows from label to label
        Date, ///< the day, and the time, when the run began, some days later
        Concatenation ///< a text with places for the values of the row
    };

    int id = 0; ///< 0 or more, unlike that of any other source of the document
    Kind kind = Kind::Csv;
    QString location
        = {}; ///< of rows: a file, from the folder of the document on; of SQL the URL of a database
    QString query = {}; ///< of SQL
    QString encoding = {}; ///< of CSV, as QStringConverter names it; empty: found out
    QString delimiter = {}; ///< of CSV, one character; empty: found out
    QString text = {}; ///< of a concatenation, as RowTemplate takes it
    QString form = {}; ///< of a counter, a conversion of printf(); of a date, a form of QDateTime::toString()
    qint64 start = 1; ///< of a counter: its first number
    qint64 step = 1; ///< of a counter
    int days = 0; ///< of a date: so many days later, as for best-before dates

    [[nodiscard]] bool isFunction() const { return kind >= Kind::Counter; }
    friend bool operator==(const DataSource &, const DataSource &) = default;
};

namespace DataSources {

/// What is wrong with the sources of a document: ids, forms, locations that are missing or hold a password.
/// `where` is a JSON pointer below "/sources".
[[nodiscard]] VX_LABEL_EXPORT Problems problems(const QList<DataSource> &sources);

/// The source of an id; null if there is none.
[[nodiscard]] VX_LABEL_EXPORT const DataSource *find(const QList<DataSource> &sources, int id);

} // namespace DataSources
