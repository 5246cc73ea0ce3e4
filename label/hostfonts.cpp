// SPDX-License-Identifier: BSD-3-Clause
#include "label/hostfonts.h"

#include <QFont>
#include <QFontDatabase>
#include <QStringList>

void HostFonts::substituteDefaultFamily()
{
    QFont::insertSubstitution(QStringLiteral("_Fen Loma"), QStringLiteral("Loma"));
}

void HostFonts::list()
{
    static_cast<void>(QFontDatabase::families());
}
