// SPDX-License-Identifier: BSD-3-Clause
#include "label/outputfile.h"

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

/// A disk that fills up takes part of the data and reports no error; only the next write tells why.
bool writeAll(QIODevice &device, const QByteArray &data)
{
    for (qint64 done = 0; done < data.size();) {
        const qint64 written = device.write(data.constData() + done, data.size() - done);
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}

} // namespace

bool OutputFile::write(const QString &path, const QByteArray &data, bool overwrite, Problems &problems)
{
    QString advice;
    const QString reason = obstacle(path, overwrite, advice);
    if (!reason.isEmpty()) {
        problems.append({ path, {}, reason, advice });
        return false;
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(file, data) && file.commit())
        return true;
    problems.append({ path, {}, u"cannot be written: "_s + file.errorString(), {} });
    return false;
}
