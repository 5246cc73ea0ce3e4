// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"

#include <optional>
#include <utility>

/// An ODBC connection string: "DSN=prices;UID=user;Database={a;b}".
class OdbcString
{
public:
    explicit OdbcString(const QString &text);

    /// Why it cannot be used, without anything that may be a password; nothing if it can.
    [[nodiscard]] std::optional<Problem> problem() const;
    /// As the ODBC driver of Qt takes it for the name of a database. For a string without a problem only.
    [[nodiscard]] QString databaseName() const;
    /// A value in the braces that it needs if it has marks of a connection string.
    [[nodiscard]] static QString quoted(const QString &value);

private:
    /// The value of a keyword, whose case does not matter; empty if it is not there.
    [[nodiscard]] QString valueOf(QLatin1StringView keyword) const;

    QString m_text;
    QList<std::pair<QString, QString>> m_entries; ///< keywords in lower case, and values as they are written
    bool m_isWhole = false; ///< whether the entries are all of the text
};
