// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/separatecommand.h"

#include "apps/vxlabel/adjustmentarguments.h"
#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/labelinput.h"
#include "apps/vxlabel/outputs.h"
#include "apps/vxlabel/terminal.h"
#include "apps/vxlabel/texttable.h"
#include "items/core/item.h"
#include "label/platewriter.h"
#include "label/proof.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

struct SeparateOptions
{
    std::string label;
    std::string folder;
    std::optional<double> dpi;
    std::optional<Dither> dither;
    QStringList layers;
    PrintAdjustment adjustment;
    bool negative = false;
    bool overprint = false;
    std::string format = "png";
    bool force = false;
};

/// The plates and the proof, named after the label: "bin-label.black.png", "bin-label.proof.png".
Outputs outputsOf(const Separation &separation, const QString &labelPath, const SeparateOptions &options)
{
    const QString folder = QFile::decodeName(options.folder.c_str());
    const QString base = QDir(folder).filePath(QFileInfo(labelPath).completeBaseName());
    const bool asPbm = options.format == "pbm";

    Outputs outputs(options.force);
    outputs.setFolder(folder);
    for (const Plate &plate : separation.plates) {
        outputs.add(u"%1.%2.%3"_s.arg(base, plate.ink.name, QString::fromStdString(options.format)),
            asPbm ? PlateWriter::toPbm(plate.image) : PlateWriter::toPng(plate.image));
    }
    outputs.add(base + u".proof.png"_s, PlateWriter::toPng(proofOf(separation)));
    return outputs;
}

/// One line for each ink: its name, and the dots, share of the page and area that it prints.
QString platesText(const Separation &separation)
{
    TextTable table({ Qt::AlignLeft, Qt::AlignRight, Qt::AlignRight, Qt::AlignRight });
    for (const Plate &plate : separation.plates) {
        table.addRow({ plate.ink.name, u"%1 dots"_s.arg(plate.dots),
            u"%1 %"_s.arg(QString::number(plate.coverage(), 'f', 2)),
            u"%1 mm²"_s.arg(QString::number(plate.area(), 'f', 2)) });
    }
    return table.text();
}

QString number(double value)
{
    return QString::number(value, 'g', 4);
}

/// "3 dots each", and "3 x 4 dots each" of square modules that are stretched.
QString dotsText(const PrintedBarcode &barcode)
{
    const QString wide = number(barcode.dots.width());
    const QString high = number(barcode.dots.height());
    const QString dots = barcode.squareModules && wide != high ? wide + u" x "_s + high : wide;
    return dots == u"1"_s ? u"1 dot each"_s : dots + u" dots each"_s;
}

/// One line for each barcode: the modules that its symbol is wide, the dots of each, and its X dimension.
QString barcodesText(const Separation &separation)
{
    TextTable table({ Qt::AlignLeft, Qt::AlignLeft, Qt::AlignRight, Qt::AlignRight, Qt::AlignRight });
    for (const PrintedBarcode &barcode : separation.barcodes) {
        if (barcode.modules.isEmpty())
            continue;
        table.addRow({ barcode.name, barcode.symbology, u"%1 modules"_s.arg(number(barcode.modules.width())),
            dotsText(barcode), u"X %1 mm"_s.arg(QString::number(barcode.moduleWidth, 'f', 3)) });
    }
    return table.text();
}

ExitCode separateIntoPlates(const SeparateOptions &options, BrokenItems broken)
{
    const std::optional<LabelInput> label = loadLabel(options.label, broken);
    if (!label)
        return ExitCode::BadDocument;
    const std::optional<PlateAdjuster> adjuster = adjusterFor(*label,
        { .dpi = options.dpi.value_or(label->document.designDpi()),
            .negative = options.negative,
            .overprint = options.overprint,
            .dither = options.dither,
            .layers = options.layers },
        options.adjustment);
    if (!adjuster)
        return ExitCode::Usage;
    const std::optional<Separation> separation = separateLabel(*label, *adjuster);
    if (!separation)
        return ExitCode::BadDocument;

    const bool done = outputsOf(*separation, label->path, options).write()
        && Terminal::print((platesText(*separation) + barcodesText(*separation)).toUtf8());
    return done ? label->outcome : ExitCode::CannotWrite;
}

} // namespace

void addSeparateCommand(CommandLine &commandLine)
{
    const auto options = std::make_shared<SeparateOptions>();
    CLI::App &command = commandLine.addCommand("separate",
        "Write one plate for each ink and the proof, and report the ink that they take",
        "vxlabel separate warning-sign.vxl -o plates --dpi 600\n"
        "vxlabel separate warning-sign.vxl -o bitmaps --format pbm --overprint",
        [options](BrokenItems broken) { return separateIntoPlates(*options, broken); });
    CommandLine::addLabel(command, options->label);
    CommandLine::addPath(
        command, "-o,--output", "DIR", "The folder for the plates, created if missing", options->folder);
    CommandLine::addResolution(command, options->dpi);
    CommandLine::addPlateFlags(command, options->negative, options->overprint);
    command.add_option("--format", options->format, "The format of the plates: png (if not given) or pbm")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({ "png", "pbm" }));
    CommandLine::addDither(command, options->dither);
    CommandLine::addLayers(command, options->layers);
    addAdjustmentArguments(command, options->adjustment);
    CommandLine::addForce(command, options->force);
}
