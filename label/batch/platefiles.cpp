// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/platefiles.h"

#include "label/platewriter.h"

PlateFiles::PlateFiles(const BatchOptions &options)
    : RowFiles(options)
    , m_format(options.format)
{
}

QList<QByteArray> PlateFiles::contentsOf(const RowLabel &label, Problems & /*problems*/) const
{
    QList<QByteArray> contents;
    for (const Plate &plate : label.separation.plates)
        contents.append(m_format == BatchOptions::Format::Pbm ? PlateWriter::toPbm(plate.image)
                                                              : PlateWriter::toPng(plate.image));
    return contents;
}
