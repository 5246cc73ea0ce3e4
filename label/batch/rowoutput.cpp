// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rowoutput.h"

RowOutput::~RowOutput() = default;
