// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/sqllocation.h"

#include <QSqlDatabase>

/// A connection of its own to a database, which ends with it. It is used by the thread that made it.
class SqlConnection
{
public:
    /// Not open yet.
    explicit SqlConnection(const SqlLocation &location);
    ~SqlConnection();
    Q_DISABLE_COPY_MOVE(SqlConnection)

    /// Why there is no connection; nothing once it is open. An empty password leaves that to the environment.
    [[nodiscard]] std::optional<Problem> open(const QString &password);

    [[nodiscard]] const QSqlDatabase &database() const { return m_database; }
    /// Of the location, for people.
    [[nodiscard]] const QString &display() const { return m_location.display; }

private:
    void configure(const QString &password);

    SqlLocation m_location;
    QSqlDatabase m_database;
};
