// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/barcodescommand.h"

#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/terminal.h"
#include "apps/vxlabel/texttable.h"
#include "label/canonicaljson.h"
#include "platform/zint/symbologies.h"

#include <QJsonArray>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

QString kindName(Zint::Symbology::Kind kind)
{
    switch (kind) {
    case Zint::Symbology::Kind::Linear:
        return u"linear"_s;
    case Zint::Symbology::Kind::Stacked:
        return u"stacked"_s;
    case Zint::Symbology::Kind::Matrix:
        return u"matrix"_s;
    case Zint::Symbology::Kind::Postal:
        return u"postal"_s;
    case Zint::Symbology::Kind::Composite:
        return u"composite"_s;
    }
    return {};
}

QByteArray asTable()
{
    constexpr auto left = Qt::AlignLeft;
    TextTable table({ Qt::AlignRight, left, left, left, left, left });
    table.addRow({ u"number"_s, u"name"_s, u"kind"_s, u"GS1"_s, u"text"_s, u"ECI"_s });
    const auto mark = [](bool yes) { return yes ? u"yes"_s : u"-"_s; };
    for (const Zint::Symbology &symbology : Zint::symbologies())
        table.addRow({ QString::number(symbology.number), symbology.name, kindName(symbology.kind),
            mark(symbology.takesGs1), mark(symbology.hasText), mark(symbology.takesEci) });
    return table.text().toUtf8();
}

QByteArray asJson()
{
    QJsonArray symbologies;
    for (const Zint::Symbology &symbology : Zint::symbologies())
        symbologies.append(QJsonObject { { u"number"_s, symbology.number }, { u"name"_s, symbology.name },
            { u"kind"_s, kindName(symbology.kind) }, { u"gs1"_s, symbology.takesGs1 },
            { u"text"_s, symbology.hasText }, { u"eci"_s, symbology.takesEci } });
    return CanonicalJson::write({ { u"barcodes"_s, symbologies } });
}

} // namespace

void addBarcodesCommand(CommandLine &commandLine)
{
    const auto json = std::make_shared<bool>(false);
    CLI::App &command = commandLine.addCommand("barcodes",
        "List the symbologies of barcodes: number (for \"barcodeSymbol\"), name, kind, and whether each "
        "takes "
        "GS1 application identifiers and any script (ECI), and shows a text that people can read",
        "vxlabel barcodes\nvxlabel barcodes --json", [json](BrokenItems) {
            return Terminal::print(*json ? asJson() : asTable()) ? ExitCode::Ok : ExitCode::CannotWrite;
        });
    command.add_flag("--json", *json, "Write JSON for programs instead of a table");
}
