// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QByteArray>
#include <QJsonObject>

/// JSON in the one form that equal contents have.
namespace CanonicalJson {

/// UTF-8, keys in alphabetical order, two spaces of indent, a final line feed.
[[nodiscard]] VX_LABEL_EXPORT QByteArray write(const QJsonObject &object);

} // namespace CanonicalJson
