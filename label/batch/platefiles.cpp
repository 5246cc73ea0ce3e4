// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/platefiles.h"

#include "label/batch/filedigest.h"
#include "label/batch/partfile.h"
#include "label/platewriter.h"
#include "label/wording.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

PlateFiles::PlateFiles(const QString &manifest, BatchOptions::Format format, bool overwrite, qint64 mostBytes)
    : m_folder(QFileInfo(manifest).absolutePath())
    , m_format(format)
    , m_overwrite(overwrite)
    , m_mostBytes(mostBytes)
{
}

QString PlateFiles::pathOf(const ManifestEntry::File &file) const
{
    return QDir(m_folder).absoluteFilePath(file.name);
}

Problems PlateFiles::write(const Separation &separation, const QStringList &names, ManifestEntry &entry)
{
    const bool isFirstCopy = entry.inks.isEmpty();
    for (std::size_t i = 0; i < separation.plates.size(); ++i) {
        const Plate &plate = separation.plates[i];
        const QString &name = names[qsizetype(i)];
        const QByteArray data = m_format == BatchOptions::Format::Png ? PlateWriter::toPng(plate.image)
                                                                      : PlateWriter::toPbm(plate.image);
        if (const std::optional<Problem> problem = writeFile(name, data))
            return { *problem };
        const QString absolute = QFileInfo(name).absoluteFilePath();
        entry.files.append({ QDir(m_folder).relativeFilePath(absolute), FileDigest::of(data) });
        if (isFirstCopy)
            entry.inks.append({ plate.ink.name, plate.dots, plate.coverage() });
    }
    return {};
}

std::optional<Problem> PlateFiles::writeFile(const QString &name, const QByteArray &data)
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
    if (isTaken && !m_overwrite)
        return Problem { {}, {}, Wording::quoted(name) + u" exists already"_s,
            u"give --force to replace it"_s };
    const QString folder = info.path();
    if (!m_folders.contains(folder) && !QDir().mkpath(folder)) {
        m_isBlocked = true;
        return Problem { folder, {}, u"the folder cannot be created"_s,
            u"choose a place where you may write"_s };
    }
    m_folders.insert(folder);
    PartFile file(name);
    if (file.open() && file.write(data) && file.commit())
        return {};
    m_isBlocked = true;
    return file.problem();
}

void PlateFiles::takeBack(const ManifestEntry &entry) const
{
    takeBack(entry, [](const QString &) { return false; });
}

void PlateFiles::takeBack(
    const ManifestEntry &entry, const std::function<bool(const QString &)> &isGiven) const
{
    for (const ManifestEntry::File &file : entry.files) {
        if (!isGiven(pathOf(file)))
            QFile::remove(pathOf(file));
    }
}

bool PlateFiles::areIntact(const ManifestEntry &entry) const
{
    return std::ranges::all_of(entry.files, [this](const ManifestEntry::File &file) {
        return !file.sha256.isEmpty() && FileDigest::ofFile(pathOf(file)) == file.sha256;
    });
}
