// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rownames.h"

#include "label/wording.h"

#include <QCryptographicHash>
#include <QDir>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

/// Not every file system tells capital letters apart.
quint64 digestOf(const QString &name)
{
    const QString path = QDir::cleanPath(QDir::current().absoluteFilePath(name)).toCaseFolded();
    const QByteArray hash = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256);
    return qFromBigEndian<quint64>(hash.constData());
}

} // namespace

std::optional<QStringList> RowNames::namesFor(const Row &row, qint64 copy, Problem &problem)
{
    QStringList names;
    for (const QString &ink : m_inks) {
        const std::optional<QString> name = m_pattern.nameFor({ row, copy }, ink, problem);
        if (!name)
            return {};
        if (isGiven(*name)) {
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

bool RowNames::isGiven(const QString &name) const
{
    return m_given.contains(digestOf(name));
}
