// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/rendercommand.h"

#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/labelinput.h"
#include "apps/vxlabel/outputs.h"
#include "label/platewriter.h"
#include "label/proof.h"

#include <QFile>

#include <memory>

namespace {

struct RenderOptions
{
    std::string label;
    std::string output;
    std::optional<double> dpi;
    bool force = false;
};

ExitCode render(const RenderOptions &options, BrokenItems broken)
{
    const std::optional<LabelInput> label = loadLabel(options.label, broken);
    if (!label)
        return ExitCode::BadDocument;
    const double dpi = options.dpi.value_or(label->document.designDpi());
    const std::optional<Separation> separation = separateLabel(*label, { .dpi = dpi });
    if (!separation)
        return ExitCode::BadDocument;

    Outputs outputs(options.force);
    outputs.add(QFile::decodeName(options.output.c_str()), PlateWriter::toPng(proofOf(*separation)));
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
    CommandLine::addPath(command, "-o,--output", "FILE", "The image", options->output);
    CommandLine::addResolution(command, options->dpi);
    CommandLine::addForce(command, options->force);
}
