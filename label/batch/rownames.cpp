// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rownames.h"

#include "label/wording.h"

#include <QCryptographicHash>
#include <QDir>
#include <QtEndian>

using namespace Qt::StringLiterals;

namespace {

/// Not every file system tells capital letters apart.
quint64 digestOf(const QString &name)
{
    const QString path = QDir::cleanPath(QDir::current().absoluteFilePath(name)).toCaseFolded();
    const QByteArray hash = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256);
    return qFromBigEndian<quint64>(hash.constData());
}

/// What the endings of other files promise that a batch does not write.
const QStringList otherEndings { u"bmp"_s, u"gif"_s, u"jpeg"_s, u"jpg"_s, u"svg"_s, u"tif"_s, u"tiff"_s,
    u"webp"_s };

/// Why pictures of plates cannot have names of a pattern: what they are named is not what they are.
std::optional<Problem> problemOfEnding(const BatchOptions &options)
{
    const bool isPbm = options.format == BatchOptions::Format::Pbm;
    const QString ending = options.pattern.section(u'.', -1).toLower();
    const QString pattern = Wording::quoted(options.pattern);
    if (ending == (isPbm ? u"png"_s : u"pbm"_s))
        return Problem { {}, {}, pattern + u" names %1 files"_s.arg(ending.toUpper()),
            u"give --format "_s + ending };
    if (otherEndings.contains(ending))
        return Problem { {}, {}, pattern + u" names %1 files, which are not written"_s.arg(ending.toUpper()),
            u"let the names end in "_s + (isPbm ? u".pbm"_s : u".png"_s) };
    return {};
}

/// Why the inks of a label cannot go into files of a pattern.
std::optional<Problem> problemOf(const BatchOptions &options, qsizetype inks, bool hasInk)
{
    const QString pattern = Wording::quoted(options.pattern);
    const bool endsInPdf = options.pattern.endsWith(u".pdf"_s, Qt::CaseInsensitive);
    if (endsInPdf && !options.hasPdfFormat())
        return Problem { {}, {}, pattern + u" names PDFs"_s, u"give --format pdf or --format pdf-plates"_s };
    if (!endsInPdf && options.hasPdfFormat())
        return Problem { {}, {}, pattern + u" names no PDFs"_s, u"let the names end in .pdf"_s };
    if (hasInk && options.format == BatchOptions::Format::Pdf)
        return Problem { {}, {}, pattern + u" asks for the ink, but a PDF in colour has all of them"_s,
            u"leave out {ink}, or give --format pdf-plates"_s };
    if (inks > 1 && !hasInk && !options.hasPdfFormat())
        return Problem { {}, {}, pattern + u" gives all inks one name"_s, u"add {ink}"_s };
    return options.hasPdfFormat() ? std::nullopt : problemOfEnding(options);
}

} // namespace

std::unique_ptr<RowNames> RowNames::of(
    const BatchOptions &options, const QStringList &columns, const QList<Ink> &inks, Problems &problems)
{
    const std::optional<NamePattern> pattern = NamePattern::parse(options.pattern, columns, problems);
    if (!pattern)
        return {};
    if (const std::optional<Problem> problem = problemOf(options, inks.size(), pattern->hasInk())) {
        problems.append(*problem);
        return {};
    }
    QStringList names;
    for (const Ink &ink : inks)
        names.append(ink.name);
    if (options.hasPdfFormat() && !pattern->hasInk())
        names = { QString() };
    return std::make_unique<RowNames>(*pattern, names);
}

std::optional<QStringList> RowNames::namesFor(const Row &row, qint64 copy, Problem &problem)
{
    QStringList names;
    for (const QString &ink : m_inks) {
        const std::optional<QString> name = m_pattern.nameFor({ row, copy }, ink, problem);
        if (!name)
            return {};
        if (isGiven(*name)) {
            problem
                = { row.address, {}, u"another label of this batch has the name "_s + Wording::quoted(*name),
                      u"add {row} or {copy} to the names"_s };
            return {};
        }
        names.append(*name);
    }
    for (const QString &name : std::as_const(names))
        m_given.insert(digestOf(name));
    return names;
}

bool RowNames::isGiven(const QString &name) const
{
    return m_given.contains(digestOf(name));
}
