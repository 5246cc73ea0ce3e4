// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>

#include <vector>

/// One picture of a bit for each dot per ink, filled row by row from the numbers of colours.
class InkPlanes
{
public:
    InkPlanes(QSize size, std::size_t inks);

    /// False if there is not enough memory for them.
    [[nodiscard]] bool isValid() const;

    /// Numbers of a row: 0 for the paper, i + 1 for ink i. Behind the last dot, 8 more numbers are read.
    void setRow(int y, const uchar *numbers);

    [[nodiscard]] std::vector<QImage> take() { return std::move(m_planes); }

private:
    std::vector<QImage> m_planes;
};
