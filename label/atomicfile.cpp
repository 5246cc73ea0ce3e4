// SPDX-License-Identifier: BSD-3-Clause
#include "label/atomicfile.h"

#include "label/outputfailure.h"
#include "label/wholewrite.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace {

/// What keeps the name from being written to; nothing if it is free to use.
QString obstacle(const QString &path, bool overwrite, QString &advice)
{
    const QFileInfo info(path);
    if (info.isDir()) {
        advice = u"choose a file's name"_s;
        return u"is a folder"_s;
    }
    // A link to nothing does not exist, and yet the name is taken.
    if ((info.exists() || info.isSymLink()) && !info.isFile()) {
        advice = u"choose another name"_s;
        return u"is no ordinary file"_s;
    }
    if (!info.dir().exists()) {
        advice = u"create it first"_s;
        return u"its folder does not exist"_s;
    }
    if (!info.exists() || overwrite)
        return {};
    advice = u"choose another name or allow overwriting"_s;
    return u"exists already"_s;
}

} // namespace

AtomicFile::AtomicFile(const QString &path)
    : m_file(std::make_unique<QSaveFile>(path))
{
}

AtomicFile::~AtomicFile() = default;

bool AtomicFile::open(bool overwrite, Problems &problems)
{
    QString advice;
    const QString reason = obstacle(m_file->fileName(), overwrite, advice);
    if (!reason.isEmpty()) {
        problems.append({ m_file->fileName(), {}, reason, advice });
        return false;
    }
    return m_file->open(QIODevice::WriteOnly | QIODevice::Unbuffered)
        || refuse(m_file->errorString(), problems);
}

bool AtomicFile::write(const QByteArray &data, Problems &problems)
{
    return writeWhole(*m_file, data) || refuse(m_file->errorString(), problems);
}

QIODevice &AtomicFile::device()
{
    return *m_file;
}

bool AtomicFile::commit(Problems &problems)
{
    // Closing a file that could not be written forgets why.
    const bool isWhole = m_file->error() == QFileDevice::NoError;
    const QString reason = m_file->errorString();
    return m_file->commit() || refuse(isWhole ? m_file->errorString() : reason, problems);
}

bool AtomicFile::refuse(const QString &reason, Problems &problems) const
{
    problems.append(OutputFailure::ofFile(m_file->fileName(), reason));
    return false;
}
