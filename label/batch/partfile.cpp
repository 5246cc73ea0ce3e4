// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/partfile.h"

#include "label/outputfailure.h"
#include "label/wholewrite.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Short enough for any file system, whatever the length of the name.
QString partNameOf(const QString &path)
{
    const QFileInfo info(path);
    const QByteArray hash = QCryptographicHash::hash(info.fileName().toUtf8(), QCryptographicHash::Sha256);
    return u"%1/.vxlabel-%2.part"_s.arg(info.path(), QString::fromLatin1(hash.toHex().first(32)));
}

} // namespace

PartFile::PartFile(const QString &path)
    : m_path(path)
    , m_file(partNameOf(path))
{
}

PartFile::~PartFile()
{
    if (m_file.isOpen())
        m_file.remove();
}

bool PartFile::fail(const QString &reason)
{
    m_problem = OutputFailure::ofFile(m_path, reason);
    return false;
}

bool PartFile::open()
{
    // A new one, lest a link leads the bytes elsewhere.
    QFile::remove(m_file.fileName());
    return m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)
        || fail(m_file.errorString());
}

bool PartFile::write(const QByteArray &data)
{
    return writeWhole(m_file, data) || fail(m_file.errorString());
}

bool PartFile::commit()
{
    m_file.close();
    const QByteArray from = QFile::encodeName(m_file.fileName());
    if (std::rename(from.constData(), QFile::encodeName(m_path).constData()) == 0)
        return true;
    const QString reason = qt_error_string(errno);
    m_file.remove();
    return fail(reason);
}
