// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/pdfdocument.h"

#include "label/outputfailure.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

PdfDocument::PdfDocument(
    const QString &path, std::unique_ptr<PdfLayout> layout, const QString &title, bool overwrite)
    : m_path(path)
    , m_layout(std::move(layout))
    , m_title(title)
    , m_overwrite(overwrite)
    , m_file(path)
{
}

PdfDocument::~PdfDocument() = default;

bool PdfDocument::open(Problems &problems)
{
    if (const std::optional<Problem> problem = OutputFailure::createFolder(QFileInfo(m_path).path())) {
        problems.append(*problem);
        return false;
    }
    if (!m_overwrite && QFileInfo(m_path).isFile()) {
        problems.append({ m_path, {}, u"exists already"_s, u"give --force to replace it"_s });
        return false;
    }
    if (!m_file.open(m_overwrite, problems))
        return false;
    m_pages
        = std::make_unique<PdfPages>(m_file.device(), PdfInformation { m_title }, PdfPages::Documents::Sound);
    return true;
}

Problems PdfDocument::write(const RowLabel &label, const QStringList & /*names*/, ManifestEntry &entry)
{
    Problems problems;
    m_isBlocked = !m_layout->add(*m_pages, label, entry, problems);
    return problems;
}

/// A page that is begun stays in the file.
void PdfDocument::takeBack(const ManifestEntry &entry)
{
    m_isBlocked = m_isBlocked || entry.pages;
}

bool PdfDocument::finish(bool isComplete, Problems &problems)
{
    if (!isComplete)
        return true;
    if (!m_layout->end(*m_pages, problems))
        return false;
    if (m_pages->count() == 0)
        return finishWithoutPages(problems);
    return m_pages->finish(problems) && m_file.commit(problems);
}

/// There is no PDF without pages. One that an earlier batch has left would be taken for that of this batch.
bool PdfDocument::finishWithoutPages(Problems &problems)
{
    problems.append({ m_path, {}, u"is not written, for no label is printed"_s, {} });
    return !QFileInfo(m_path).isFile() || QFile::remove(m_path);
}
