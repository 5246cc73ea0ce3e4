// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

/// The fonts of a program that shows or prints labels.
namespace HostFonts {

/// Has the family in which new texts are written shown in Loma, which Debian has. For the whole process; to
/// be called once, after the application is made.
VX_LABEL_EXPORT void substituteDefaultFamily();
/// Has the system list its fonts now, and keep what it finds for all programs: where the memory of the
/// process is then limited, that would come out incomplete, and stay so.
VX_LABEL_EXPORT void list();

} // namespace HostFonts
