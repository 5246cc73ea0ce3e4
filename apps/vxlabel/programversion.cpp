// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/programversion.h"

#include "platform/zint/encoderversion.h"

#include <QtGlobal>

std::string programVersion()
{
    return std::string("vxlabel " VX_VERSION "\nQt ") + qVersion() + "\nlibzint "
        + Zint::encoderVersion().toStdString() + "\n\nCopyright (c) 2026 The VXCanvasItem authors\n"
        + "BSD 3-Clause License: free to use, change and pass on, without any warranty";
}
