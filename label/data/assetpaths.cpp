// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/assetpaths.h"

#include "label/wording.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

AssetPaths::AssetPaths(const QStringList &folders, bool allowAnyPath)
    : m_allowAnyPath(allowAnyPath)
{
    for (const QString &folder : folders) {
        const QString real = QFileInfo(folder).canonicalFilePath();
        if (!real.isEmpty())
            m_folders.append(real);
    }
}

bool AssetPaths::isWithin(const QString &file) const
{
    return std::ranges::any_of(m_folders, [&file](const QString &folder) {
        return file.startsWith(folder.endsWith(u'/') ? folder : folder + u'/');
    });
}

std::optional<QString> AssetPaths::find(const QString &value, Problem &problem) const
{
    const QString quoted = Wording::quoted(value);
    bool isElsewhere = false;
    bool isNoFile = false;
    // An absolute path is the same in every folder.
    const QStringList folders = QDir::isAbsolutePath(value) ? QStringList { QString() } : m_folders;
    for (const QString &folder : folders) {
        const QFileInfo info(folder.isEmpty() ? value : folder + u'/' + value);
        const QString real = info.canonicalFilePath();
        if (real.isEmpty())
            continue;
        if (!m_allowAnyPath && !isWithin(real))
            isElsewhere = true;
        else if (!info.isFile())
            isNoFile = true;
        else
            return real;
    }
    if (isElsewhere)
        problem = { {}, {}, quoted + u" lies outside the folders for pictures"_s,
            u"name its folder with --search, or allow any with --allow-any-path"_s };
    else if (isNoFile)
        problem = { {}, {}, quoted + u" is no ordinary file"_s, {} };
    else
        problem = { {}, {}, u"there is no file "_s + quoted,
            u"looked for in "_s + (m_folders.isEmpty() ? u"no folder"_s : m_folders.join(u", "_s)) };
    return {};
}
