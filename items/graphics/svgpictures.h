// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QStringView>
#include <QtGlobal>

/// What the images of a drawing refer to.
class SvgPictures
{
public:
    enum class Kind {
        None, ///< no reference
        Embedded,
        Link, ///< a file, or what the renderer would look for as a file
        TooLarge,
    };

    /// Looks at one more reference.
    [[nodiscard]] Kind add(QStringView reference);
    /// Of all embedded pictures together.
    [[nodiscard]] qint64 pixels() const { return m_pixels; }

private:
    qint64 m_pixels = 0;
};
