// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QByteArray>
#include <QImage>

/// Plates and proofs as files.
namespace PlateWriter {

/// PNG with the physical size in pHYs: one bit for a plate, a palette for a proof. Equal images give equal
/// bytes.
[[nodiscard]] VX_LABEL_EXPORT QByteArray toPng(const QImage &image);

/// Binary PBM (P4) of a plate: 1 is black, rows padded to bytes.
[[nodiscard]] VX_LABEL_EXPORT QByteArray toPbm(const QImage &plate);

} // namespace PlateWriter
