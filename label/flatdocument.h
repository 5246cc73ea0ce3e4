// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/labeldocument.h"

#include <QStringList>

#include <optional>

/// A document whose items all lie on the page itself, each where its groups and layers show it, from bottom
/// to top. A document without containers is taken as it is.
class FlatDocument
{
public:
    /// With only the items of some layers, by their names or numbers, if any are given. The original must be
    /// without problems, and outlive it.
    FlatDocument(const LabelDocument &original, const QStringList &layers);
    ~FlatDocument();
    Q_DISABLE_COPY_MOVE(FlatDocument)

    [[nodiscard]] const LabelDocument &document() const { return m_flat ? *m_flat : m_original; }
    /// Layers that were asked for and do not exist, and items that their containers show beyond the drawable
    /// range.
    [[nodiscard]] const Problems &problems() const { return m_problems; }
    /// Layers that were asked for and are hidden, by their places in the original.
    [[nodiscard]] const Problems &warnings() const { return m_warnings; }
    /// The JSON pointer of the item in the original that has this place in the flat document.
    [[nodiscard]] QString pointerOf(std::size_t item) const;
    /// Lets problems of the flat document name the items of the original.
    void locate(Problems &problems) const;

private:
    void chooseLayers(const QStringList &layers);
    void flatten();
    void add(Item &item, const QString &pointer);

    const LabelDocument &m_original;
    std::optional<LabelDocument> m_flat;
    std::vector<std::pair<Item *, QString>> m_roots; ///< what is printed, with its pointers
    QStringList m_pointers;
    Problems m_problems;
    Problems m_warnings;
};
