// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QList>
#include <QString>

/// Something that is wrong with a document or a run, for a person to act on.
struct VX_LABEL_EXPORT Problem
{
    QString file; ///< as the caller named it; may be empty
    QString where; ///< a JSON pointer ("/items/3/itemWidth"), "byte 1042", "line 3, column 7", or empty
    QString what; ///< what is wrong, in a few words
    QString advice; ///< what to do about it

    /// One line: "file: where: what; advice", without the parts that are empty. Control characters in names
    /// and values are shown as "\x1b".
    [[nodiscard]] QString text() const;

    /// A text whose control characters, line feeds among them, are shown like that: it cannot steer a
    /// terminal, and hides nothing.
    [[nodiscard]] static QString visible(const QString &text);
};

using Problems = QList<Problem>;
