// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/sqlsession.h"

/// A query through an ODBC driver. That is asked to be read-only, and few are; so the query must begin like
/// one that reads, must hold no further statement behind a ";", and what it changes nevertheless is taken
/// back, which takes a database with transactions. Drivers have no common limit of time.
class OdbcSession final : public SqlSession
{
public:
    OdbcSession(std::unique_ptr<SqlConnection> connection, const SqlSource::Options &options);
    ~OdbcSession() override;

    [[nodiscard]] bool ask(const QString &query) override;

private:
    [[nodiscard]] QVariant valueAt(int column) const override;

    QList<int> m_types; ///< of the columns, as ODBC numbers them
};
