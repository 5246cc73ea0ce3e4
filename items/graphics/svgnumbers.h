// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QStringView>

/// Reads the numbers of a drawing's attributes from left to right, as forgiving as the renderer.
class SvgNumbers
{
public:
    explicit SvgNumbers(QStringView text)
        : m_at(text.cbegin())
        , m_end(text.cend())
    {
    }

    /// Skips what separates numbers. True if a number begins there.
    bool hasNumber();
    /// The number that begins there.
    double number();
    /// A flag of an arc: one digit, whatever follows.
    double flag();
    /// The next character that is neither part of a number nor a separator; null at the end.
    QChar command();
    /// What is left.
    [[nodiscard]] QStringView rest() const { return QStringView(m_at, m_end); }

private:
    void skipSeparators();
    [[nodiscard]] bool isDigit() const { return m_at != m_end && *m_at >= u'0' && *m_at <= u'9'; }
    double digits(double value, double &scale);

    QStringView::const_iterator m_at;
    QStringView::const_iterator m_end;
};
