// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/graphics/svgcensus.h"
#include "items/graphics/svgreferences.h"
#include "items/graphics/svgstyle.h"

#include <QList>
#include <QRectF>
#include <QTransform>
#include <QXmlStreamReader>

class SvgOutline;

/// Estimates how long the renderer takes to draw. Its rasteriser seeks each crossing of an outline with a row
/// of pixels among all others of that row: a thousand lines across the page keep it busy for seconds.
class SvgEffort
{
public:
    /// What must be known before anything can be estimated, and is found out while a drawing is read once.
    struct Knowledge
    {
        SvgStyle anywhere; // the style that elements may get from rules, or where they are referred to
        double scale = 1.0; // by which rules may enlarge elements
    };

    /// For a drawing in which elements may or may not refer to others.
    explicit SvgEffort(bool mayRefer);
    /// For the second time that a drawing is read, in which elements refer to others.
    explicit SvgEffort(const Knowledge &knowledge);

    /// Adds what the reader is at. The census has had it before.
    void add(const QXmlStreamReader &reader, const SvgCensus &census);

    /// Whether the drawing has to be read again.
    [[nodiscard]] bool isIncomplete() const { return m_isFirst && m_references.hasReferences(); }
    [[nodiscard]] Knowledge knowledge() const { return m_knowledge; }
    /// Of the whole drawing; nothing when a part refers to itself.
    [[nodiscard]] std::optional<SvgReferences::Total> total() const { return m_references.total(); }

private:
    /// An element that is open.
    struct Element
    {
        SvgStyle style {};
        QTransform transform {};
        bool isText = false;
        bool isStyle = false;
    };

    void beginElement(const QXmlStreamReader &reader);
    void addCharacters(QStringView text);
    void addStyleSheet(QStringView text);
    void refer(const QXmlStreamAttributes &attributes);
    void addShape(QStringView name, const QXmlStreamAttributes &attributes);
    void addOutline(const SvgOutline &outline);
    [[nodiscard]] QTransform toPage() const;
    [[nodiscard]] double pagesOf(double length) const;
    [[nodiscard]] double scaleOf(const QTransform &transform) const;

    QList<Element> m_open;
    SvgReferences m_references;
    Knowledge m_knowledge;
    QRectF m_page; // empty when that is what is drawn
    qsizetype m_images = 0;
    double m_glyphBytes = 0.0;
    bool m_mayRefer;
    bool m_isFirst;
};
