// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/htmlguard.h"

#include "items/core/limits.h"

#include <QRegularExpression>
#include <QSet>
#include <QStringView>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The character of a reference such as "&amp;", and the position after it; nothing when it is none.
struct Reference
{
    QString text;
    qsizetype end;
};

Reference referenceAt(QStringView html, qsizetype at)
{
    constexpr qsizetype longest = 12;
    const qsizetype semicolon = html.sliced(at, std::min(longest, html.size() - at)).indexOf(u';');
    if (semicolon < 2)
        return { {}, at };
    const QStringView name = html.sliced(at + 1, semicolon - 1);
    const qsizetype end = at + semicolon + 1;
    if (name.startsWith(u'#')) {
        const bool hexadecimal = name.size() > 1 && name[1].toLower() == u'x';
        bool ok = false;
        const uint code = name.sliced(hexadecimal ? 2 : 1).toUInt(&ok, hexadecimal ? 16 : 10);
        if (!ok || code == 0 || code > QChar::LastValidCodePoint)
            return { {}, at };
        const char32_t character = code;
        return { QString::fromUcs4(&character, 1), end };
    }
    static const QHash<QString, QString> named { { u"amp"_s, u"&"_s }, { u"lt"_s, u"<"_s },
        { u"gt"_s, u">"_s }, { u"quot"_s, u"\""_s }, { u"apos"_s, u"'"_s }, { u"nbsp"_s, u"\u00A0"_s } };
    const QString text = named.value(name.toString());
    return text.isEmpty() ? Reference { {}, at } : Reference { text, end };
}

/// A tag: its name in lower case without the slash, and what of its attributes matters.
struct Tag
{
    QString name;
    int columns = 1;
    int rows = 1;
    bool closes = false;
    bool empty = false;
    qsizetype end = 0;
};

/// Elements that end by themselves, so that many in a row are not nested.
bool endsByItself(const QString &name)
{
    static const QSet<QString> names { u"p"_s, u"br"_s, u"hr"_s, u"img"_s, u"li"_s, u"dt"_s, u"dd"_s, u"tr"_s,
        u"td"_s, u"th"_s, u"meta"_s, u"link"_s, u"col"_s, u"input"_s, u"option"_s, u"!doctype"_s, u"!--"_s,
        u"base"_s, u"wbr"_s };
    return names.contains(name);
}

/// What Qt breaks the line for.
bool breaksLine(const QString &name)
{
    static const QSet<QString> names { u"br"_s, u"p"_s, u"div"_s, u"li"_s, u"tr"_s, u"h1"_s, u"h2"_s, u"h3"_s,
        u"h4"_s, u"h5"_s, u"h6"_s, u"table"_s, u"pre"_s, u"blockquote"_s };
    return names.contains(name);
}

bool beginsShownTag(QStringView html, qsizetype at)
{
    if (html[at] != u'<' || at + 1 >= html.size())
        return false;
    const QChar next = html[at + 1];
    return next.isLetter() || next == u'/' || next == u'!' || next == u'?';
}

/// Reads a tag in the way of Qt's reader. A reader that saw other tags than Qt could be kept from counting:
/// a quote that it takes for the beginning of a value hides everything up to the next one.
class TagReader
{
public:
    /// From a '<' on.
    TagReader(QStringView html, qsizetype at)
        : m_html(html)
        , m_at(at + 1)
    {
    }

    Tag tag()
    {
        Tag tag;
        if (begins(u"!--")) {
            const qsizetype end = m_html.indexOf(u"-->", m_at + 3);
            m_at = end < 0 ? m_html.size() : end + 2;
            tag.name = u"!--"_s;
        } else if (begins(u"!")) {
            tag.name = u"!doctype"_s;
        } else if (begins(u"/")) {
            ++m_at;
            tag.closes = true;
            tag.name = word().trimmed().toLower();
        } else {
            skipSpace();
            tag.name = word().toLower();
            readAttributes(tag);
        }
        tag.empty = restUntilEnd().contains(u'/');
        tag.end = std::min(m_at + 1, m_html.size());
        return tag;
    }

private:
    bool begins(QStringView text) const
    {
        return m_html.sliced(std::min(m_at, m_html.size())).startsWith(text);
    }

    void skipSpace()
    {
        while (m_at < m_html.size() && m_html[m_at].isSpace())
            ++m_at;
    }

    QStringView restUntilEnd()
    {
        const qsizetype from = std::min(m_at, m_html.size());
        const qsizetype end = m_html.indexOf(u'>', from);
        m_at = end < 0 ? m_html.size() : end;
        return m_html.sliced(from, m_at - from);
    }

    /// A name or value, with its references resolved.
    QString word()
    {
        const bool quoted = begins(u"\"") || begins(u"'");
        const QChar quote = quoted ? m_html[m_at++] : QChar();
        const auto ends = [&] { return quoted ? m_html[m_at] == quote : endsWord(); };
        QString word;
        while (m_at < m_html.size() && !ends()) {
            const Reference found = m_html[m_at] == u'&' ? referenceAt(m_html, m_at) : Reference { {}, m_at };
            const qsizetype from = m_at;
            m_at = std::max(found.end, m_at + 1);
            if (found.end > from) {
                word += found.text;
                continue;
            }
            while (m_at < m_html.size() && m_html[m_at] != u'&' && !ends())
                ++m_at;
            word += m_html.sliced(from, m_at - from);
        }
        if (quoted)
            ++m_at;
        return word;
    }

    bool endsWord() const
    {
        const QChar c = m_html[m_at];
        return c.isSpace() || c == u'>' || c == u'<' || c == u'=' || (c == u'/' && begins(u"/>"));
    }

    void readAttributes(Tag &tag)
    {
        while (m_at < m_html.size()) {
            skipSpace();
            if (begins(u">") || begins(u"/>"))
                return;
            const QString key = word().toLower();
            if (key.isEmpty())
                return;
            skipSpace();
            if (!begins(u"="))
                continue;
            ++m_at;
            skipSpace();
            const QString value = word();
            if (key == "colspan"_L1)
                widen(tag.columns, value);
            else if (key == "rowspan"_L1)
                widen(tag.rows, value);
        }
    }

    static void widen(int &span, const QString &value)
    {
        span = std::max(span, std::min(value.toInt(), Limits::MaxHtmlCells + 1));
    }

    QStringView m_html;
    qsizetype m_at;
};

/// Whether an element ends the line before it; all others may stand in thousands on one.
bool makesBlock(const QString &name)
{
    static const QSet<QString> blocks { u"html"_s, u"head"_s, u"body"_s, u"p"_s, u"div"_s, u"br"_s, u"hr"_s,
        u"ul"_s, u"ol"_s, u"li"_s, u"dl"_s, u"dt"_s, u"dd"_s, u"table"_s, u"thead"_s, u"tbody"_s, u"tfoot"_s,
        u"tr"_s, u"td"_s, u"th"_s, u"h1"_s, u"h2"_s, u"h3"_s, u"h4"_s, u"h5"_s, u"h6"_s, u"blockquote"_s,
        u"pre"_s, u"center"_s, u"address"_s };
    return blocks.contains(name);
}

/// Counts what is expensive.
class Census
{
public:
    /// False when a limit is exceeded.
    bool add(const Tag &tag)
    {
        if (!tag.closes && !makesBlock(tag.name))
            ++m_inlineTags;
        if (tag.name == "img"_L1)
            ++m_pictures;
        if (++m_tags > Limits::MaxHtmlTags || m_inlineTags > Limits::MaxHtmlInlineTags
            || m_pictures > Limits::MaxHtmlPictures)
            return false;
        noteStray(tag);
        noteParagraph(tag);
        if (tag.closes)
            close(tag.name);
        else if (!endsByItself(tag.name) && !tag.empty)
            open(tag.name);
        if (!tag.closes && tag.name == "tr"_L1)
            beginRow();
        if (!tag.closes && (tag.name == "td"_L1 || tag.name == "th"_L1))
            addCell(tag);
        if (!tag.closes && tag.name == "li"_L1)
            ++m_listItems;
        return m_open.size() <= Limits::MaxHtmlDepth
            && m_open.count(u"table"_s) + m_unendingTables <= Limits::MaxHtmlTableDepth
            && m_cells <= Limits::MaxHtmlCells && m_listItems <= Limits::MaxHtmlListItems;
    }

private:
    /// After a part of a table outside of any, Qt may take no end of a table for one.
    void noteStray(const Tag &tag)
    {
        const bool ofTable = tag.name == "tr"_L1 || tag.name == "td"_L1 || tag.name == "th"_L1
            || (tag.closes && tag.name == "table"_L1);
        m_strayed = m_strayed || (ofTable && !m_open.contains(u"table"_s));
    }

    /// The end of a paragraph that did not begin in the cell ends the row as well; between cells, any block
    /// ends a paragraph.
    void noteParagraph(const Tag &tag)
    {
        const bool paragraph = tag.name == "p"_L1;
        const bool cell = tag.name == "td"_L1 || tag.name == "th"_L1;
        const bool ends = paragraph && tag.closes && !m_inParagraph;
        const bool between = !m_inCell && !tag.closes && !cell && tag.name != "tr"_L1 && makesBlock(tag.name);
        if (ends || between)
            m_inRow = false;
        if (cell)
            m_inCell = !tag.closes;
        if (paragraph)
            m_inParagraph = !tag.closes;
        else if (cell)
            m_inParagraph = false;
    }

    void open(const QString &name)
    {
        m_open.append(name);
        if (name != "table"_L1)
            return;
        m_rowsAround.append(m_inRow);
        m_inRow = false;
    }

    /// For a cell in no row Qt begins a table, which it does not reliably end.
    void addCell(const Tag &cell)
    {
        // Qt lays a table out twice for each table around it.
        const auto around = std::max<qsizetype>(m_rowsAround.size() - 1, 0);
        m_cells += (qint64(cell.columns) * cell.rows)
            << std::min<qsizetype>(around, Limits::MaxHtmlTableDepth);
        if (m_inRow)
            return;
        ++m_unendingTables;
        beginRow();
    }

    void beginRow()
    {
        m_inRow = true;
        m_rowBegin = m_open.size();
    }

    /// An end without a beginning ends nothing, and what is around a table does not end within it.
    void close(const QString &name)
    {
        if (name == "tr"_L1 || name == "table"_L1)
            m_inRow = false;
        if (m_strayed && name == "table"_L1)
            return;
        const qsizetype opened = m_open.lastIndexOf(name);
        m_inRow = m_inRow && (opened < 0 || opened >= m_rowBegin);
        if (opened < 0 || opened < m_open.lastIndexOf(u"table"_s))
            return;
        m_open.resize(opened);
        if (name == "table"_L1)
            m_inRow = m_rowsAround.takeLast();
    }

    QStringList m_open;
    QList<bool> m_rowsAround;
    bool m_inRow = false;
    qsizetype m_rowBegin = 0;
    bool m_inParagraph = false;
    bool m_inCell = false;
    bool m_strayed = false;
    int m_unendingTables = 0;
    int m_tags = 0;
    int m_inlineTags = 0;
    int m_pictures = 0;
    qint64 m_cells = 0;
    int m_listItems = 0;
};

bool structureIsPlain(QStringView html)
{
    Census census;
    for (qsizetype i = 0; i < html.size();) {
        if (html[i] != u'<') {
            ++i;
            continue;
        }
        const Tag tag = TagReader(html, i).tag();
        if (!census.add(tag))
            return false;
        i = tag.end;
    }
    return true;
}

QRegularExpression caseless(const QString &pattern)
{
    return QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption);
}

qsizetype countOf(const QString &html, const QRegularExpression &expression)
{
    qsizetype count = 0;
    for (auto matches = expression.globalMatch(html); matches.hasNext(); matches.next())
        ++count;
    return count;
}

bool stylesAreFew(const QString &html)
{
    static const QRegularExpression floating = caseless(u"\\bfloat\\s*(:|/\\*)"_s);
    static const QRegularExpression aligned = caseless(u"align\\s*=\\s*[\"']?\\s*(left|right)"_s);
    static const QRegularExpression size = caseless(u"\\bfont(-size)?\\s*:\\s*([^;\"'}]*)"_s);
    const qsizetype floats = countOf(html, floating) + countOf(html, aligned);
    // A rule of a style sheet can apply to every element.
    const bool sheet = html.contains("<style"_L1, Qt::CaseInsensitive);
    if (sheet && floats > 0 && html.count(u'<') > Limits::MaxHtmlFloats)
        return false;
    QSet<QString> sizes;
    for (const QRegularExpressionMatch &match : size.globalMatch(html))
        sizes.insert(match.captured(2));
    const qint64 styleWork = sheet ? qint64(html.count(u'{')) * html.count(u'<') : 0;
    return floats <= Limits::MaxHtmlFloats && sizes.size() <= Limits::MaxHtmlFontSizes
        && styleWork <= Limits::MaxHtmlStyleWork;
}

char32_t characterAt(QStringView text, qsizetype at)
{
    const bool pair = at + 1 < text.size() && text[at].isHighSurrogate() && text[at + 1].isLowSurrogate();
    return pair ? QChar::surrogateToUcs4(text[at], text[at + 1]) : text[at].unicode();
}

bool isCombining(char32_t character)
{
    const QChar::Category category = QChar::category(character);
    return category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing;
}

bool marksAreFew(QStringView html)
{
    int marks = 0;
    for (qsizetype i = 0; i < html.size() && marks <= Limits::MaxCombiningMarks;) {
        const Reference found = html[i] == u'&' ? referenceAt(html, i) : Reference { {}, i };
        const bool written = found.end == i;
        const char32_t character = written ? characterAt(html, i) : characterAt(found.text, 0);
        marks = isCombining(character) ? marks + 1 : 0;
        i = written ? i + (QChar::requiresSurrogates(character) ? 2 : 1) : found.end;
    }
    return marks <= Limits::MaxCombiningMarks;
}

/// The position after a style sheet, script or head whose contents are not shown.
qsizetype afterHidden(const QString &html, const Tag &tag, qsizetype from)
{
    const bool hidden
        = !tag.closes && (tag.name == "style"_L1 || tag.name == "script"_L1 || tag.name == "title"_L1);
    if (!hidden)
        return from;
    const qsizetype end = html.indexOf(u"</"_s + tag.name, from, Qt::CaseInsensitive);
    return end < 0 ? html.size() : end;
}

} // namespace

bool HtmlGuard::accepts(const QString &html)
{
    return html.size() <= Limits::MaxHtmlLength && structureIsPlain(html) && stylesAreFew(html)
        && marksAreFew(html);
}

QString HtmlGuard::plainTextOf(const QString &html)
{
    QString text;
    for (qsizetype i = 0; i < html.size() && text.size() < Limits::MaxTextLength;) {
        if (beginsShownTag(html, i)) {
            const Tag tag = TagReader(html, i).tag();
            if (breaksLine(tag.name) && !text.isEmpty() && !text.endsWith(u'\n'))
                text += u'\n';
            i = afterHidden(html, tag, tag.end);
            continue;
        }
        const Reference found = html[i] == u'&' ? referenceAt(html, i) : Reference { {}, i };
        if (found.end == i)
            text += html[i];
        else
            text += found.text;
        i = std::max(found.end, i + 1);
    }
    return text.trimmed();
}
