// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rownames.h"

#include "label/wording.h"

#include <QCryptographicHash>

using namespace Qt::StringLiterals;

namespace {

/// Not every file system tells capital letters apart.
QByteArray digestOf(const QString &name)
{
    return QCryptographicHash::hash(name.toCaseFolded().toUtf8(), QCryptographicHash::Sha256).first(16);
}

} // namespace

std::optional<QStringList> RowNames::namesFor(const Row &row, qint64 copy, Problem &problem)
{
    QStringList names;
    for (const QString &ink : m_inks) {
        const std::optional<QString> name = m_pattern.nameFor({ row, copy }, ink, problem);
        if (!name)
            return {};
        const QByteArray digest = digestOf(*name);
        if (m_given.contains(digest)) {
            problem
                = { row.address, {}, u"another label of this batch has the name "_s + Wording::quoted(*name),
                      u"add {row} or {copy} to the names"_s };
            return {};
        }
        names.append(*name);
    }
    for (const QString &name : std::as_const(names))
        m_given.insert(digestOf(name));
    return names;
}
