// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/graphics/svgpictures.h"
#include "items/graphics/svgreferences.h"

#include <QList>
#include <QString>
#include <QXmlStreamReader>

/// Counts what of a drawing is expensive, token by token as the renderer reads it.
class SvgCensus
{
public:
    /// A census of a text with so many '&'.
    explicit SvgCensus(qsizetype ampersands)
        : m_ampersands(ampersands)
    {
    }

    /// Adds what the reader is at. False when a limit is exceeded.
    [[nodiscard]] bool add(const QXmlStreamReader &reader);
    /// After the last token: what is known of the whole only.
    [[nodiscard]] bool finish();

    /// The limit that is exceeded, for people.
    [[nodiscard]] QString problem() const { return m_problem; }
    /// What first refers to a file, for people; empty when nothing does.
    [[nodiscard]] QString link() const { return m_link; }
    /// Of each image in turn, whether it refers to a file.
    [[nodiscard]] const QList<bool> &imagesAreLinks() const { return m_imagesAreLinks; }

private:
    bool exceeds(qint64 count, qint64 limit, const char *what);
    bool addDefinitions(const QXmlStreamReader &reader);
    bool beginElement(const QXmlStreamReader &reader);
    void endElement();
    bool addImage(const QXmlStreamAttributes &attributes);
    bool addStyle(QStringView text);
    void refer(const QXmlStreamAttributes &attributes);

    SvgPictures m_pictures;
    SvgReferences m_references;
    QList<bool> m_imagesAreLinks;
    QString m_problem;
    QString m_link;
    qsizetype m_ampersands;
    qint64 m_elements = 0;
    qint64 m_definedAttributes = 0;
    qint64 m_pathBytes = 0;
    qint64 m_styleRules = 0;
    qint64 m_styleDeclarations = 0;
    int m_depth = 0;
    int m_deepest = 0;
    int m_stylesOpen = 0;
};
