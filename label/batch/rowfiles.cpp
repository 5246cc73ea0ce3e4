// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rowfiles.h"

#include "label/batch/filedigest.h"
#include "label/batch/partfile.h"
#include "label/outputfailure.h"
#include "label/wording.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

RowFiles::RowFiles(const BatchOptions &options)
    : m_folder(QFileInfo(options.manifest).absolutePath())
    , m_overwrite(options.start != BatchOptions::Start::New)
    , m_mostBytes(options.mostFileBytes)
{
    for (const QString &input : options.inputs)
        m_inputs.insert(QFileInfo(input).canonicalFilePath());
}

QString RowFiles::pathOf(const ManifestEntry::File &file) const
{
    return QDir(m_folder).absoluteFilePath(file.name);
}

Problems RowFiles::write(const RowLabel &label, const QStringList &names, ManifestEntry &entry)
{
    Problems problems;
    const QList<QByteArray> contents = contentsOf(label, problems);
    for (qsizetype i = 0; i < contents.size(); ++i) {
        if (const std::optional<Problem> problem = writeFile(names[i], contents[i]))
            return { *problem };
        const QString absolute = QFileInfo(names[i]).absoluteFilePath();
        entry.files.append({ QDir(m_folder).relativeFilePath(absolute), FileDigest::of(contents[i]) });
    }
    return problems;
}

std::optional<Problem> RowFiles::writeFile(const QString &name, const QByteArray &data)
{
    if (m_mostBytes > 0 && data.size() > m_mostBytes)
        return Problem { {}, {},
            u"%1 would have %2 bytes, more than the %3 that a file may have"_s.arg(Wording::quoted(name))
                .arg(data.size())
                .arg(m_mostBytes),
            u"give a lower --dpi, or --max-file"_s };
    const QFileInfo info(name);
    const bool isTaken = info.exists() || info.isSymLink();
    if (isTaken && !info.isFile())
        return Problem { {}, {}, Wording::quoted(name) + u" is no ordinary file"_s,
            u"choose another name"_s };
    if (isTaken && m_inputs.contains(info.canonicalFilePath()))
        return Problem { {}, {}, Wording::quoted(name) + u" is a file that this batch reads"_s,
            u"choose another name"_s };
    if (isTaken && !m_overwrite)
        return Problem { {}, {}, Wording::quoted(name) + u" exists already"_s,
            u"give --force to replace it"_s };
    const QString folder = info.path();
    if (!m_folders.contains(folder)) {
        if (std::optional<Problem> problem = OutputFailure::createFolder(folder)) {
            m_isBlocked = true;
            return problem;
        }
        m_folders.insert(folder);
    }
    PartFile file(name);
    if (file.open() && file.write(data) && file.commit())
        return {};
    m_isBlocked = true;
    return file.problem();
}

void RowFiles::takeBack(const ManifestEntry &entry)
{
    takeBackEarlier(entry, [](const QString &) { return false; });
}

void RowFiles::takeBackEarlier(
    const ManifestEntry &entry, const std::function<bool(const QString &)> &isGiven)
{
    for (const ManifestEntry::File &file : entry.files) {
        if (!isGiven(pathOf(file)))
            QFile::remove(pathOf(file));
    }
}

bool RowFiles::areIntact(const ManifestEntry &entry) const
{
    return std::ranges::all_of(entry.files, [this](const ManifestEntry::File &file) {
        return !file.sha256.isEmpty() && FileDigest::ofFile(pathOf(file)) == file.sha256;
    });
}
