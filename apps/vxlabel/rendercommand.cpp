// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/rendercommand.h"

#include "apps/vxlabel/adjustmentarguments.h"
#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/labelinput.h"
#include "apps/vxlabel/outputs.h"
#include "apps/vxlabel/terminal.h"
#include "label/platewriter.h"
#include "label/proof.h"

#include <QFile>
#include <QFileInfo>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

struct RenderOptions
{
    std::string label;
    std::string output;
    std::optional<double> dpi;
    std::optional<Dither> dither;
    QStringList layers;
    PrintAdjustment adjustment;
    bool force = false;
};

/// An ending that promises something else, if only the label's own in front of the wrong option.
bool promisesOtherThanPng(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix();
    return !suffix.isEmpty() && suffix.compare("png"_L1, Qt::CaseInsensitive) != 0;
}

bool isSameFile(const QString &left, const QString &right)
{
    const QString path = QFileInfo(left).canonicalFilePath();
    return !path.isEmpty() && path == QFileInfo(right).canonicalFilePath();
}

ExitCode render(const RenderOptions &options, BrokenItems broken)
{
    const QString target = QFile::decodeName(options.output.c_str());
    if (promisesOtherThanPng(target)) {
        Terminal::complain({ target, {}, u"the image is a PNG"_s, u"let the name end in .png"_s });
        return ExitCode::Usage;
    }
    if (isSameFile(target, QFile::decodeName(options.label.c_str()))) {
        Terminal::complain({ target, {}, u"is the label itself"_s, u"choose another name"_s });
        return ExitCode::Usage;
    }
    const std::optional<LabelInput> label = loadLabel(options.label, broken);
    if (!label)
        return ExitCode::BadDocument;
    const double dpi = options.dpi.value_or(label->document.designDpi());
    const std::optional<PlateAdjuster> adjuster = adjusterFor(
        *label, { .dpi = dpi, .dither = options.dither, .layers = options.layers }, options.adjustment);
    if (!adjuster)
        return ExitCode::Usage;
    const std::optional<Separation> separation = separateLabel(*label, *adjuster);
    if (!separation)
        return ExitCode::BadDocument;

    Outputs outputs(options.force);
    outputs.add(target, PlateWriter::toPng(proofOf(*separation)));
    return outputs.write() ? label->outcome : ExitCode::CannotWrite;
}

} // namespace

void addRenderCommand(CommandLine &commandLine)
{
    const auto options = std::make_shared<RenderOptions>();
    CLI::App &command = commandLine.addCommand("render", "Write the proof of a label as a PNG image",
        "vxlabel render warning-sign.vxl -o warning-sign.png --dpi 600",
        [options](BrokenItems broken) { return render(*options, broken); });
    CommandLine::addLabel(command, options->label);
    CommandLine::addPath(command, "-o,--output", "FILE", "The image, a .png file", options->output);
    CommandLine::addResolution(command, options->dpi);
    CommandLine::addDither(command, options->dither);
    CommandLine::addLayers(command, options->layers);
    addAdjustmentArguments(command, options->adjustment);
    CommandLine::addForce(command, options->force);
}
