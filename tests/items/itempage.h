// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// A page of the documentation: a title, paragraphs, and tables below headings.
class ItemPage
{
public:
    /// Empty if there is no such file.
    explicit ItemPage(const QString &path);

    [[nodiscard]] bool isEmpty() const { return m_lines.isEmpty(); }
    [[nodiscard]] QString text() const { return m_lines.join(u'\n'); }
    [[nodiscard]] QString title() const;
    /// The cells of the table below a heading, or below the title, without its header.
    [[nodiscard]] QList<QStringList> table(const QString &heading = {}) const;
    /// Where the page's links and pictures lead.
    [[nodiscard]] QStringList links() const;
    /// The names by which links lead to its headings.
    [[nodiscard]] QStringList anchors() const;

private:
    QStringList m_lines;
};
