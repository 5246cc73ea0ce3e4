// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgwriter.h"

using namespace Qt::StringLiterals;

void SvgWriter::add(const QXmlStreamReader &reader)
{
    switch (reader.tokenType()) {
    case QXmlStreamReader::StartElement:
        begin(reader.qualifiedName().toString(), reader.attributes(), {});
        break;
    case QXmlStreamReader::EndElement:
        end();
        break;
    case QXmlStreamReader::Characters:
        addCharacters(reader);
        break;
    case QXmlStreamReader::Comment:
    case QXmlStreamReader::ProcessingInstruction:
        // Keeps the texts around it apart: the renderer takes each for a style sheet of its own.
        m_text += "<!---->";
        break;
    default:
        break;
    }
}

void SvgWriter::addBlankImage(const QXmlStreamReader &reader)
{
    // Nothing of this is drawn, and the renderer does not warn of it as it does of an image without a
    // picture.
    begin(u"metadata"_s, reader.attributes(), u"xlink:href");
}

void SvgWriter::begin(const QString &name, const QXmlStreamAttributes &attributes, QStringView leftOut)
{
    m_open.append(name);
    m_text += '<' + name.toUtf8();
    for (const QXmlStreamAttribute &attribute : attributes) {
        if (attribute.qualifiedName() == leftOut)
            continue;
        m_text += ' ' + attribute.qualifiedName().toUtf8() + "=\"";
        addEscaped(attribute.value());
        m_text += '"';
    }
    m_text += '>';
}

void SvgWriter::end()
{
    m_text += "</" + m_open.takeLast().toUtf8() + '>';
}

void SvgWriter::addCharacters(const QXmlStreamReader &reader)
{
    if (reader.isCDATA())
        m_text += "<![CDATA[" + reader.text().toUtf8() + "]]>";
    else
        addEscaped(reader.text());
}

void SvgWriter::addEscaped(QStringView text)
{
    for (const char c : text.toUtf8()) {
        switch (c) {
        case '&':
            m_text += "&amp;";
            break;
        case '<':
            m_text += "&lt;";
            break;
        case '>':
            m_text += "&gt;";
            break;
        case '"':
            m_text += "&quot;";
            break;
        case '\t':
            m_text += "&#9;";
            break;
        case '\n':
            m_text += "&#10;";
            break;
        case '\r':
            m_text += "&#13;";
            break;
        default:
            m_text += c;
        }
    }
}
