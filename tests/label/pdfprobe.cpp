// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/pdfprobe.h"

#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QProcess>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 120'000; // milliseconds

void mustBe(bool fact, const QString &otherwise)
{
    if (!fact)
        qFatal("%s", qPrintable(otherwise));
}

} // namespace

void PdfProbe::write(const std::function<bool(PdfPages &, Problems &)> &addPages, const PdfInformation &about)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    PdfPages pages(buffer, about);
    Problems problems;
    const bool done = addPages(pages, problems) && pages.finish(problems) && problems.isEmpty();
    mustBe(done, u"no PDF: "_s + problems.value(0).text());
    take(buffer.data());
}

void PdfProbe::write(const LabelDocument &document)
{
    write([&](PdfPages &pages, Problems &problems) { return pages.addPage(document, problems); });
}

void PdfProbe::take(const QByteArray &pdf)
{
    m_bytes = pdf;
    QFile file(path(u"file.pdf"_s));
    mustBe(file.open(QIODevice::WriteOnly) && file.write(pdf) == pdf.size(), file.errorString());
}

QString PdfProbe::ask(const QString &program, const QStringList &before, const QStringList &after) const
{
    QProcess process;
    process.start(program, before + QStringList(path(u"file.pdf"_s)) + after);
    mustBe(process.waitForFinished(patience) && process.exitCode() == 0,
        program + u": "_s + process.errorString());
    const QByteArray complaints = process.readAllStandardError();
    mustBe(complaints.isEmpty(), program + u": "_s + QString::fromUtf8(complaints));
    return QString::fromUtf8(process.readAllStandardOutput());
}

QString PdfProbe::text() const
{
    return ask(u"pdftotext"_s, { u"-layout"_s }, { u"-"_s });
}

QList<QStringList> PdfProbe::table(const QString &program) const
{
    const QStringList options = program == "pdfimages"_L1 ? QStringList(u"-list"_s) : QStringList();
    QList<QStringList> rows;
    for (const QString &line : ask(program, options).split(u'\n', Qt::SkipEmptyParts).mid(2))
        rows.append(line.simplified().split(u' '));
    return rows;
}

QList<QSizeF> PdfProbe::boxes() const
{
    static const QRegularExpression box(uR"(/MediaBox \[0 0 ([0-9.]+) ([0-9.]+)\])"_s);
    QList<QSizeF> sizes;
    for (const QRegularExpressionMatch &match : box.globalMatch(QString::fromLatin1(m_bytes)))
        sizes.append({ match.captured(1).toDouble(), match.captured(2).toDouble() });
    return sizes;
}

int PdfProbe::countPages() const
{
    static const QRegularExpression pages(uR"(Pages: +(\d+))"_s);
    return pages.match(ask(u"pdfinfo"_s)).captured(1).toInt();
}

QImage PdfProbe::page(int number, double dpi) const
{
    return render(number, dpi, u"-png"_s, u"png"_s);
}

QImage PdfProbe::dots(int number, double dpi) const
{
    return render(number, dpi, u"-mono"_s, u"pbm"_s);
}

QImage PdfProbe::render(int number, double dpi, const QString &option, const QString &suffix) const
{
    const QString page = QString::number(number);
    ask(u"pdftoppm"_s,
        { option, u"-r"_s, QString::number(dpi), u"-f"_s, page, u"-l"_s, page, u"-singlefile"_s },
        { path(u"page"_s) });
    QImageReader::setAllocationLimit(0); // pages of many dots
    return QImage(path(u"page."_s + suffix));
}
