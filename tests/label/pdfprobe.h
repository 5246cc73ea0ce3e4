// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/pdf/pdfpages.h"

#include <QImage>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

/// PDF files in a temporary folder, as other programs see them.
class PdfProbe
{
public:
    /// Writes a file by a function that adds its pages, which must go without a problem.
    void write(const std::function<bool(PdfPages &, Problems &)> &addPages, const PdfInformation &about = {});
    void write(const LabelDocument &document);
    /// Takes a file as it is.
    void take(const QByteArray &pdf);

    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] const QByteArray &bytes() const { return m_bytes; }
    /// What one of Poppler's programs answers about the file, which is named
    /// between its options. It must have nothing to complain of.
    QString ask(const QString &program, const QStringList &before = {}, const QStringList &after = {}) const;
    /// What can be read in the file, line by line.
    [[nodiscard]] QString text() const;
    /// The rows of a table that such a program answers, split at spaces, without the two of its head.
    [[nodiscard]] QList<QStringList> table(const QString &program) const;
    /// The sides of the pages' boxes in points, as they are in the file.
    [[nodiscard]] QList<QSizeF> boxes() const;
    [[nodiscard]] int countPages() const;
    /// A page in smooth colours, or in dots that are black or white.
    [[nodiscard]] QImage page(int number, double dpi) const;
    [[nodiscard]] QImage dots(int number, double dpi) const;

private:
    [[nodiscard]] QImage render(int number, double dpi, const QString &option, const QString &suffix) const;

    QTemporaryDir m_folder;
    QByteArray m_bytes;
};
