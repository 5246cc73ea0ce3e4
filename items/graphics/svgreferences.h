// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringView>

#include <optional>

/// Follows the references by which a drawing draws parts of itself again, and counts what is drawn then.
class SvgReferences
{
public:
    /// What a part of a drawing comes to, with all that it refers to. Numbers that no drawing reaches in
    /// earnest; doubles do not overflow where parts refer to each other in powers.
    struct Total
    {
        double elements = 0.0;
        double levels = 0.0;
        double effort = 0.0;
        double effortAtScaleOne = 0.0; ///< of what is referred to
    };

    SvgReferences() { m_parts.append(Part { .begin = 1 }); }

    /// An element that stands in a transform of this scale.
    void beginElement(const QString &id, double scale);
    /// What it takes to draw the element that has just begun, without what is in it.
    void addEffort(double effort) { m_parts[m_open.last()].effort += effort; }
    /// The element that has just begun draws the one of that id, at this scale.
    void refer(const QString &id, double scale);
    void endElement();

    [[nodiscard]] bool hasReferences() const { return m_hasReferences; }
    /// Of the whole drawing; nothing when a part refers to itself.
    [[nodiscard]] std::optional<Total> total() const;

private:
    /// Within a part, what is drawn from elsewhere.
    struct Reference
    {
        int name;
        int level;
        double scale;
    };

    /// An element with an id, and what it holds besides other parts.
    struct Part
    {
        int begin = 0; // the level of the element in the drawing
        int elements = 0;
        int levels = 0;
        double scale = 1.0;
        double effort = 0.0;
        QList<int> parts {};
        QList<Reference> references {};
    };

    class Walk;

    int nameOf(const QString &id);

    QList<Part> m_parts;
    QList<int> m_open { 0 };
    QList<bool> m_isPart;
    QHash<QString, int> m_names;
    QList<QList<int>> m_named; // of each name, the parts that have it
    bool m_hasReferences = false;
};
