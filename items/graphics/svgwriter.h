// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QStringList>
#include <QXmlStreamReader>

/// Writes a drawing again as its reader has understood it, without definitions, entities and processing
/// instructions, so that nobody can understand it otherwise.
class SvgWriter
{
public:
    /// Writes what the reader is at.
    void add(const QXmlStreamReader &reader);
    /// The same for an image whose reference must not be followed: it becomes something invisible.
    void addBlankImage(const QXmlStreamReader &reader);

    [[nodiscard]] QByteArray text() const { return m_text; }

private:
    void begin(const QString &name, const QXmlStreamAttributes &attributes, QStringView leftOut);
    void end();
    void addEscaped(QStringView text);
    void addCharacters(const QXmlStreamReader &reader);

    QByteArray m_text;
    QStringList m_open;
};
