// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgnumbers.h"

#include <algorithm>
#include <cmath>

void SvgNumbers::skipSeparators()
{
    while (m_at != m_end && (*m_at == u',' || m_at->isSpace()))
        ++m_at;
}

bool SvgNumbers::hasNumber()
{
    skipSeparators();
    return isDigit() || (m_at != m_end && (*m_at == u'-' || *m_at == u'+' || *m_at == u'.'));
}

double SvgNumbers::digits(double value, double &scale)
{
    for (; isDigit(); ++m_at) {
        value = value * 10.0 + (m_at->unicode() - u'0');
        scale *= 10.0;
    }
    return value;
}

double SvgNumbers::number()
{
    const bool negative = *m_at == u'-';
    if (negative || *m_at == u'+')
        ++m_at;
    double scale = 1.0;
    double value = digits(0.0, scale);
    scale = 1.0;
    if (m_at != m_end && *m_at == u'.') {
        ++m_at;
        value = digits(value, scale);
    }
    // Not the unit "em".
    const bool hasExponent = m_end - m_at > 1 && (*m_at == u'e' || *m_at == u'E')
        && (m_at[1].isDigit() || m_at[1] == u'-' || m_at[1] == u'+');
    if (hasExponent) {
        ++m_at;
        const bool shrinks = *m_at == u'-';
        if (shrinks || *m_at == u'+')
            ++m_at;
        double unused = 1.0;
        const double exponent = std::min(digits(0.0, unused), 400.0);
        value *= std::pow(10.0, shrinks ? -exponent : exponent);
    }
    value /= scale;
    return std::isfinite(value) ? (negative ? -value : value) : 0.0;
}

double SvgNumbers::flag()
{
    skipSeparators();
    return isDigit() ? double((m_at++)->unicode() - u'0') : 0.0;
}

QChar SvgNumbers::command()
{
    skipSeparators();
    return m_at == m_end ? QChar() : *m_at++;
}
