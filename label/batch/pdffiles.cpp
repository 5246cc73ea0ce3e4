// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/pdffiles.h"

#include <QBuffer>

PdfFiles::PdfFiles(const BatchOptions &options, const LabelPages &pages, bool filePerInk)
    : RowFiles(options)
    , m_pages(pages)
    , m_filePerInk(filePerInk)
    , m_title(options.title)
{
}

QList<QByteArray> PdfFiles::contentsOf(const RowLabel &label, Problems &problems) const
{
    QList<QByteArray> contents;
    bool isComplete = true;
    if (m_filePerInk) {
        for (std::size_t i = 0; i < label.separation.plates.size() && isComplete; ++i) {
            Separation one { { label.separation.plates[i] }, label.separation.paper, {}, {} };
            isComplete = append({ label.document, one }, contents, problems);
        }
    } else {
        isComplete = append(label, contents, problems);
    }
    return isComplete ? contents : QList<QByteArray>();
}

bool PdfFiles::append(const RowLabel &label, QList<QByteArray> &contents, Problems &problems) const
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    PdfPages pages(buffer, { m_title }, PdfPages::Documents::Sound);
    if (!m_pages.add(pages, label, problems) || !pages.finish(problems))
        return false;
    contents.append(buffer.data());
    return true;
}
