// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/headless.h"

#include "apps/vxlabel/interruption.h"
#include "label/hostfonts.h"
#include "label/problem.h"

#include <QFile>
#include <QImageReader>
#include <QTemporaryDir>

#include <malloc.h>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

QtMessageHandler nextHandler = nullptr;

/// Drops what Qt says about the runtime folder where not even a temporary one can be made for it. Other
/// messages may quote a document, which is not to steer the terminal.
void filterMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (!message.startsWith(QLatin1String("QStandardPaths: ")))
        nextHandler(type, context, Problem::visible(message));
}

/// A stream that the caller has closed would come back as the first file that is opened, and reports would
/// end in it.
void occupyStandardStreams()
{
    int file = open("/dev/null", O_RDONLY);
    while (file >= 0 && file <= STDERR_FILENO)
        file = open("/dev/null", O_RDONLY);
    close(file);
}

/// For each page of a PDF, Qt asks twice for 16 MB of which it fills little. They would be given back to the
/// system after each label, and what was filled cleared again for the next.
void keepFreedMemory()
{
    constexpr int mebibyte = 1024 * 1024;
    mallopt(M_MMAP_THRESHOLD, 32 * mebibyte); // the largest possible
    mallopt(M_TRIM_THRESHOLD, 64 * mebibyte);
}

} // namespace

void prepareHeadless()
{
    occupyStandardStreams();
    keepFreedMemory();

    // Whatever a desktop session asks for, nothing is ever shown.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    nextHandler = qInstallMessageHandler(filterMessage);

    // Unlike Qt's own limit, this lets an A4 page at 1000 dpi pass, the largest picture that items take.
    constexpr int megabytes = 512;
    QImageReader::setAllocationLimit(megabytes);

    // A file that grows beyond its limit is then an error to report instead of the end of the process.
    std::signal(SIGXFSZ, SIG_IGN);
}

std::unique_ptr<QApplication> createHeadlessApplication(int &argc, char **argv)
{
    // At its start Qt looks into the session's runtime folder for the marker of a sandbox. It complains about
    // a folder that it does not like, and would make one that stays.
    const Interruption::Postponed untilRemoved;
    const QTemporaryDir folder;
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(folder.path()));
    auto application = std::make_unique<QApplication>(argc, argv);
    HostFonts::substituteDefaultFamily();
    return application;
}
