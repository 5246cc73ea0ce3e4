// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/barcodescommand.h"
#include "apps/vxlabel/batchcommand.h"
#include "apps/vxlabel/checkcommand.h"
#include "apps/vxlabel/commandline.h"
#include "apps/vxlabel/completioncommand.h"
#include "apps/vxlabel/convertcommand.h"
#include "apps/vxlabel/headless.h"
#include "apps/vxlabel/helpcommand.h"
#include "apps/vxlabel/inspectcommand.h"
#include "apps/vxlabel/interruption.h"
#include "apps/vxlabel/mergecommand.h"
#include "apps/vxlabel/rendercommand.h"
#include "apps/vxlabel/separatecommand.h"
#include "apps/vxlabel/worker.h"

#include <new>

namespace {

ExitCode run(int argc, char **argv)
{
    CommandLine commandLine;
    addRenderCommand(commandLine);
    addSeparateCommand(commandLine);
    addBatchCommand(commandLine);
    addMergeCommand(commandLine);
    addCheckCommand(commandLine);
    addInspectCommand(commandLine);
    addConvertCommand(commandLine);
    addBarcodesCommand(commandLine);
    addCompletionCommand(commandLine);
    addHelpCommand(commandLine);
    if (const std::optional<ExitCode> answered = commandLine.parse(argc, argv))
        return *answered;

    int ownArguments = 1; // Qt would take some of the others for its own
    const auto application = createHeadlessApplication(ownArguments, argv);
    return commandLine.runJob();
}

} // namespace

int main(int argc, char **argv)
{
    return Worker::run([argc, argv] {
        Interruption::install();
        prepareHeadless();
        try {
            return int(run(argc, argv));
        } catch (const std::bad_alloc &) {
            Worker::endWithoutMemory();
        }
    });
}
