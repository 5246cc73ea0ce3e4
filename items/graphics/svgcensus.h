// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/graphics/svgpictures.h"

#include <QList>
#include <QString>
#include <QXmlStreamReader>

/// Counts what of a drawing is expensive, token by token as the renderer reads it.
class SvgCensus
{
public:
    struct Image
    {
        bool isLink;
        qint64 pixels;
    };

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
    [[nodiscard]] qint64 elements() const { return m_elements; }
    [[nodiscard]] const QList<Image> &images() const { return m_images; }
    /// Of all embedded pictures together.
    [[nodiscard]] qint64 pixels() const { return m_pictures.pixels(); }

private:
    bool exceeds(qint64 count, qint64 limit, const char *what);
    bool addDefinitions(const QXmlStreamReader &reader);
    bool beginElement(const QXmlStreamReader &reader);
    void endElement();
    bool addImage(const QXmlStreamAttributes &attributes);
    bool addStyle(QStringView text);

    SvgPictures m_pictures;
    QList<Image> m_images;
    QString m_problem;
    QString m_link;
    qsizetype m_ampersands;
    qint64 m_elements = 0;
    qint64 m_definedAttributes = 0;
    qint64 m_pathBytes = 0;
    qint64 m_stops = 0;
    qint64 m_linkedGradients = 0;
    qint64 m_styleRules = 0;
    qint64 m_styleDeclarations = 0;
    int m_depth = 0;
    int m_deepest = 0;
    int m_stylesOpen = 0;
};
