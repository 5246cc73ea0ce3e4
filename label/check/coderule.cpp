// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/coderule.h"

#include "items/core/item.h"
#include "label/printedbarcodes.h"

using namespace Qt::StringLiterals;

namespace {

using PrintedBarcodes::Fault;

// The warnings of the encoder that matter to a person; that a character set was chosen is none.
constexpr int optionReplaced = 2;
constexpr int beyondStandard = 4;

Finding findingOf(const Fault &fault)
{
    const auto made = [&](Finding::Severity severity, const char *rule) {
        return Finding { severity, QLatin1String(rule), fault.problem };
    };
    switch (fault.kind) {
    case Fault::Refused:
    case Fault::NoBars:
        return made(Finding::Error, "code-data");
    case Fault::Coloured:
        return made(Finding::Error, "code-colours");
    case Fault::NoRoom:
        return made(Finding::Error, "code-room");
    case Fault::TooSmall:
    case Fault::TooLow:
        return made(Finding::Error, "module-size");
    case Fault::Stretched:
        return made(Finding::Warning, "code-stretched");
    case Fault::Turned:
        return made(Finding::Warning, "code-turned");
    }
    return {};
}

} // namespace

void CodeRule::check(const CheckScope &scope, Findings &findings)
{
    for (const CheckedCode &code : scope.codes) {
        if (!scope.isDue(code.item))
            continue;
        const PrintedBarcode &printed = code.printed;
        if (const std::optional<Fault> fault = PrintedBarcodes::faultOf(scope.document, printed, scope.dpi)) {
            findings.append(findingOf(*fault));
            if (printed.isRefused() && !printed.message.isEmpty())
                findings.last().problem.what += u" (%1)"_s.arg(printed.message);
        }
        if (printed.error == optionReplaced || printed.error == beyondStandard)
            findings.append(scope.finding(Finding::Warning, "code-option", code.item, printed.message,
                u"change the text or the options of the symbology"_s));
    }
}
