// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QTransform>
#include <QVarLengthArray>
#include <QXmlStreamAttributes>

/// What of an element's style matters for the time that it takes to draw. Where several values could apply,
/// the most expensive one.
struct SvgStyle
{
    /// The lengths of a dash and of the gap behind it, together; 0 for solid strokes.
    double dashLength = 0.0;
    /// Dashes in that length.
    double dashes = 1.0;
    double strokeWidth = 1.0;
    double fontSize = 16.0;
    bool isStroked = false;
    bool isFilled = true;
    bool isCosmetic = false; // of a stroke that does not grow with the drawing

    /// The style of an element within one of this style.
    [[nodiscard]] SvgStyle inside(const QXmlStreamAttributes &attributes) const;
    /// The more expensive of both in each respect.
    [[nodiscard]] SvgStyle with(const SvgStyle &other) const;
};

/// The text of a style sheet or of a style attribute, in lower case, without comments and escapes.
class SvgStyleText
{
public:
    explicit SvgStyleText(QStringView text);
    Q_DISABLE_COPY_MOVE(SvgStyleText)

    /// Each value of the property.
    template <typename See> void forEach(QLatin1StringView property, See &&see) const
    {
        for (const Declaration &declaration : m_declarations) {
            if (declaration.property == property)
                see(declaration.value);
        }
    }

    /// Adds what its rules could make of the style of any element.
    void addTo(SvgStyle &style) const;

private:
    struct Declaration
    {
        QStringView property;
        QStringView value;
    };

    QString m_text;
    QVarLengthArray<Declaration, 16> m_declarations;
};

namespace SvgValues {

/// A length in the drawing's units; percentages are of the whole.
[[nodiscard]] double length(QStringView text, double whole);
[[nodiscard]] QTransform transform(QStringView text);

} // namespace SvgValues
