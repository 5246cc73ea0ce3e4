// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/outputs.h"

#include "apps/vxlabel/interruption.h"
#include "apps/vxlabel/terminal.h"
#include "label/outputfailure.h"
#include "label/outputfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QStringList>

namespace {

/// Whether the name is taken, if only by a link that leads nowhere.
bool isTaken(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

/// The folders that have to be created for a path to be one, innermost first.
QStringList missingFolders(const QString &path)
{
    QStringList folders;
    if (path.isEmpty())
        return folders;
    QString folder = QDir::cleanPath(QDir().absoluteFilePath(path));
    for (; !isTaken(folder) && !QDir(folder).isRoot(); folder = QFileInfo(folder).path())
        folders.append(folder);
    return folders;
}

} // namespace

bool Outputs::write() const
{
    const Problems found = conflicts();
    Terminal::complain(found, {});
    if (!found.isEmpty())
        return false;

    const Interruption::Postponed untilWritten;
    const QStringList created = missingFolders(m_folder);
    if (createFolder() && writeAll())
        return true;
    for (const QString &folder : created)
        QDir().rmdir(folder);
    return false;
}

Problems Outputs::conflicts() const
{
    Problems problems;
    QSet<QString> names;
    for (const File &file : m_files) {
        // Not every file system tells capital letters apart.
        const QString name = file.path.toCaseFolded();
        if (names.contains(name))
            problems.append({ file.path, {}, QStringLiteral("two outputs have this name"),
                QStringLiteral("rename an ink") });
        names.insert(name);
        // No option replaces a folder; writing tells.
        if (!m_overwrite && isTaken(file.path) && !QFileInfo(file.path).isDir())
            problems.append({ file.path, {}, QStringLiteral("exists already"),
                QStringLiteral("give --force to replace it") });
    }
    return problems;
}

bool Outputs::createFolder() const
{
    const std::optional<Problem> problem = OutputFailure::createFolder(m_folder);
    if (problem)
        Terminal::complain(*problem);
    return !problem;
}

bool Outputs::writeAll() const
{
    QStringList created;
    for (const File &file : m_files) {
        const bool isNew = !isTaken(file.path);
        Problems problems;
        if (!OutputFile::write(file.path, file.content, m_overwrite, problems)) {
            Terminal::complain(problems, file.path);
            for (const QString &path : created)
                QFile::remove(path);
            return false;
        }
        if (isNew)
            created.append(file.path);
    }
    return true;
}
