// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/encoderversion.h"

#include <zint.h>

QString Zint::encoderVersion()
{
    // Two decimal digits each of the minor version and of the release.
    constexpr int base = 100;
    const int version = ZBarcode_Version();
    return QStringLiteral("%1.%2.%3")
        .arg(version / (base * base))
        .arg(version / base % base)
        .arg(version % base);
}
