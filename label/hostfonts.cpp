// SPDX-License-Identifier: BSD-3-Clause
#include "label/hostfonts.h"

#include <QFont>

void HostFonts::substituteDefaultFamily()
{
    QFont::insertSubstitution(QStringLiteral("_Fen Loma"), QStringLiteral("Loma"));
}
