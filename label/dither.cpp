// SPDX-License-Identifier: BSD-3-Clause
#include "label/dither.h"

QString DitherNames::of(Dither dither)
{
    return all().value(int(dither));
}

std::optional<Dither> DitherNames::find(const QString &name)
{
    const qsizetype index = all().indexOf(name);
    return index < 0 ? std::nullopt : std::optional(static_cast<Dither>(index));
}

QStringList DitherNames::all()
{
    return { QStringLiteral("diffusion"), QStringLiteral("ordered"), QStringLiteral("threshold") };
}
