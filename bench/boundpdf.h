// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "bench/boundlabel.h"

#include <QPageSize>
#include <QPdfWriter>

/// The bound of what a PDF of labels can cost with Qt and libzint.
class BoundPdf
{
public:
    explicit BoundPdf(const QString &path)
        : m_writer(path)
    {
        m_writer.setResolution(int(BatchLabel::dpi));
        m_writer.setPageLayout(
            { QPageSize(BatchLabel::millimetres, QPageSize::Millimeter, {}, QPageSize::ExactMatch),
                QPageLayout::Portrait, QMarginsF() });
        m_painter.begin(&m_writer);
        m_painter.setRenderHint(QPainter::LosslessImageRendering);
    }

    void addPage(const BatchLabel::Row &row)
    {
        if (m_pages++ > 0)
            m_writer.newPage();
        m_label.paint(m_painter, row);
    }

    void finish() { m_painter.end(); }

private:
    QPdfWriter m_writer;
    BoundLabel m_label;
    QPainter m_painter;
    int m_pages = 0;
};
