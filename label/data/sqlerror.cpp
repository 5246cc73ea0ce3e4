// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/sqlerror.h"

#include <QRegularExpression>
#include <QSqlError>

using namespace Qt::StringLiterals;

QString SqlError::text(const QSqlError &error)
{
    // PostgreSQL: "ERROR:  ", in the language of the server.
    static const QRegularExpression severity(u"\\A\\p{Lu}+:\\s+"_s);
    const QString told = error.databaseText().isEmpty() ? error.driverText() : error.databaseText();
    return told.trimmed().section(u'\n', 0, 0).remove(severity).trimmed();
}
