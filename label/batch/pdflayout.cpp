// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/pdflayout.h"

PdfLayout::~PdfLayout() = default;
