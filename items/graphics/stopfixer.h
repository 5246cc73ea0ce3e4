// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

/// Makes the gradient stops of a drawing valid whose colour is "none", in one pass over its text.
///
/// It works in a copy of the text. What has been dealt with goes to the result; the rest stays where it is,
/// also when a stop grows: the bytes that come in addition are written over those already dealt with.
class StopFixer
{
public:
    explicit StopFixer(const QByteArray &svg);

    /// Whether the end of a gradient occurs after the first byte. Without it there is nothing to fix.
    static bool hasGradients(const QByteArray &svg);

    QByteArray fixed();

private:
    /// One way of writing a colour and an opacity.
    struct Form
    {
        QByteArrayView noColor;
        QByteArrayView white;
        QByteArrayView clear;
        QByteArrayView whiteAndClear;
    };
    static const Form attributes;
    static const Form style;

    /// Where text occurs as a whole between two indices, or -1.
    qsizetype find(QByteArrayView text, qsizetype from, qsizetype to) const;
    /// Makes the stop white and clear whose colour lies at an index. Returns by how much it has grown.
    qsizetype fix(const Form &form, qsizetype color, qsizetype from, qsizetype to);
    void overwrite(qsizetype at, QByteArrayView text);

    QByteArray m_text;
    QByteArray m_result;
    qsizetype m_dealtWith;
};
