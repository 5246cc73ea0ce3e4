// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/junitreport.h"

#include "apps/vxlabel/terminal.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 piece = 65'536;

/// XML 1.0 takes no half of a surrogate pair, and two characters less than Unicode. Problem::text() leaves no
/// control characters.
QString forXml(const QString &text)
{
    QString safe;
    safe.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        const bool isPair = c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (isPair)
            safe += text.mid(i++, 2);
        else
            safe += c.isSurrogate() || c.unicode() >= 0xFFFE ? QChar(QChar::ReplacementCharacter) : c;
    }
    return safe;
}

QString lineOf(const Finding &finding)
{
    return forXml(u'[' + finding.rule + u"] "_s + finding.problem.text());
}

QString linesOf(const Findings &findings, Finding::Severity severity)
{
    QStringList lines;
    for (const Finding &finding : findings) {
        if (finding.severity == severity)
            lines.append(lineOf(finding));
    }
    return lines.join(u'\n');
}

const Finding *firstError(const Findings &findings)
{
    for (const Finding &finding : findings) {
        if (finding.severity == Finding::Error)
            return &finding;
    }
    return nullptr;
}

} // namespace

JunitReport::JunitReport(const Options &options)
    : CheckReport(options)
    , m_writer(&m_cases)
{
    static_cast<void>(m_cases.open()); // what is not written is missed in the end
    m_writer.setAutoFormatting(true);
}

void JunitReport::tellLabel(const Findings &findings)
{
    m_ofLabel += findings;
}

void JunitReport::tellRow(const CheckedRow &row)
{
    const QString name = u"row %1"_s.arg(row.row.number);
    writeCase(row.key.isEmpty() ? name : name + u": "_s + row.key, located(row));
}

void JunitReport::writeCase(const QString &name, const Findings &findings)
{
    m_writer.writeStartElement(u"testcase"_s);
    m_writer.writeAttribute(u"classname"_s, forXml(QFileInfo(labelPath()).fileName()));
    m_writer.writeAttribute(u"name"_s, forXml(Problem { {}, {}, name, {} }.text()));
    if (const Finding *error = firstError(findings)) {
        ++m_failures;
        m_writer.writeStartElement(u"failure"_s);
        m_writer.writeAttribute(u"type"_s, error->rule);
        m_writer.writeAttribute(u"message"_s, lineOf(*error));
        m_writer.writeCharacters(linesOf(findings, Finding::Error));
        m_writer.writeEndElement();
    }
    if (const QString warnings = linesOf(findings, Finding::Warning); !warnings.isEmpty())
        m_writer.writeTextElement(u"system-out"_s, warnings);
    m_writer.writeEndElement();
}

void JunitReport::copyCases()
{
    const bool isWhole = !m_writer.hasError() && m_cases.flush() && m_cases.seek(0);
    if (!isWhole) {
        Terminal::complain({ m_cases.fileName(), {}, m_cases.errorString(), u"make room for it"_s });
        breakOff();
    }
    while (isPrinted() && !m_cases.atEnd())
        print(m_cases.read(piece));
}

void JunitReport::tellRest()
{
    writeCase(u"label"_s, m_ofLabel);
    const QString name = forXml(Problem { {}, {}, labelPath(), {} }.text());
    print(u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites tests=\"%1\" failures=\"%2\">\n"
          "<testsuite name=\"%3\" tests=\"%1\" failures=\"%2\" errors=\"0\" skipped=\"0\">"_s
              .arg(count().rows + 1)
              .arg(m_failures)
              .arg(name.toHtmlEscaped())
              .toUtf8());
    copyCases();
    print("\n</testsuite>\n</testsuites>\n");
}
