// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

class LabelDocument;
class QPainter;

/// The items of a document without a scene.
namespace ItemPainter {

/// Paints the visible items, those of groups and layers included, from bottom to top where they lie on the
/// page, as a scene of them would without selections. The painter's units are those of the document and its
/// origin the page's top left; it is left as it was. The document must be without problems().
VX_LABEL_EXPORT void paint(QPainter &painter, const LabelDocument &document);

} // namespace ItemPainter
