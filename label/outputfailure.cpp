// SPDX-License-Identifier: BSD-3-Clause
#include "label/outputfailure.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>

using namespace Qt::StringLiterals;

namespace {

struct Remedy
{
    int error; ///< of the system
    QLatin1StringView advice;
};

constexpr auto makeRoom = "make room there"_L1;
constexpr auto otherPlace = "choose a place where you may write"_L1;
constexpr auto lookForFolder = "is its folder still there?"_L1;

constexpr std::array remedies {
    Remedy { ENOSPC, makeRoom },
    Remedy { EDQUOT, makeRoom },
    Remedy { EACCES, otherPlace },
    Remedy { EPERM, otherPlace },
    Remedy { EROFS, otherPlace },
    Remedy { ENOENT, lookForFolder },
    Remedy { ENOTDIR, lookForFolder },
    Remedy { ESTALE, lookForFolder },
    Remedy { EFBIG, "allow larger files, with --max-file or ulimit -f"_L1 },
    Remedy { EIO, "look after the disk"_L1 },
};

/// Qt keeps the words of the system, and not its number.
QString adviceFor(const QString &reason)
{
    const auto found = std::ranges::find_if(
        remedies, [&](const Remedy &remedy) { return reason == qt_error_string(remedy.error); });
    return found == remedies.end() ? QString() : QString(found->advice);
}

/// What is no folder where one is needed; empty if there is nothing like that.
QString fileOnTheWay(const QString &path)
{
    QFileInfo info(path);
    while (!info.exists() && !info.isSymLink())
        info.setFile(info.path()); // at last "." or "/"
    return info.isDir() ? QString() : info.filePath();
}

} // namespace

Problem OutputFailure::ofFile(const QString &path, const QString &reason)
{
    return { path, {}, u"cannot be written: "_s + reason, adviceFor(reason) };
}

std::optional<Problem> OutputFailure::createFolder(const QString &path)
{
    if (path.isEmpty() || QFileInfo(path).isDir())
        return {};
    if (const QString file = fileOnTheWay(path); !file.isEmpty())
        return Problem { file, {}, u"is no folder"_s, u"choose a folder's name"_s };
    std::error_code error;
    std::filesystem::create_directories(QFile::encodeName(path).toStdString(), error);
    if (QFileInfo(path).isDir())
        return {};
    return Problem { path, {}, u"the folder cannot be created: "_s + qt_error_string(error.value()),
        QString(otherPlace) };
}
