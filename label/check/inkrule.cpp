// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/inkrule.h"

#include "label/inkwarnings.h"

namespace {

Finding findingOf(const InkWarning &warning)
{
    switch (warning.kind) {
    case InkWarning::MissingPicture:
        return { Finding::Error, QLatin1String("refused-picture"), warning.problem };
    case InkWarning::OwnColors:
        return { Finding::Warning, QLatin1String("symbol-colours"), warning.problem };
    case InkWarning::UnprintableColor:
        return { Finding::Error, QLatin1String("unprintable-colour"), warning.problem };
    }
    return {};
}

} // namespace

void InkRule::check(const CheckScope &scope, Findings &findings)
{
    for (const std::size_t item : scope.items) {
        for (const InkWarning &warning : inkWarnings(scope.document, item))
            findings.append(findingOf(warning));
    }
}
