// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QList>
#include <QString>

#include <optional>

/// That what is in one ink is printed with another one; both by their names.
struct VX_LABEL_EXPORT InkReplacement
{
    QString ink;
    QString with;

    /// Of "red=black", or of several: "red=black,blue=red". Nothing, with the reason in problem, for any
    /// other text.
    [[nodiscard]] static std::optional<QList<InkReplacement>> parse(const QString &text, Problem &problem);
    /// A text that parse() takes.
    [[nodiscard]] static QString text(const QList<InkReplacement> &replacements);

    friend bool operator==(const InkReplacement &, const InkReplacement &) = default;
};
