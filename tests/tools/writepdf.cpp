// SPDX-License-Identifier: BSD-3-Clause
// Writes a document as a PDF of one page: writepdf DOCUMENT FILE.pdf. A program of its own because hash
// tables have another order in each process.
#include "label/atomicfile.h"
#include "label/documentfile.h"
#include "label/hostfonts.h"
#include "label/labeldocument.h"
#include "label/pdf/pdfpages.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    HostFonts::substituteDefaultFamily();
    const QStringList arguments = QApplication::arguments();
    const LoadResult loaded = DocumentFile::load(arguments.value(1));
    Problems problems = loaded.problems;
    AtomicFile file(arguments.value(2));
    if (loaded.document && file.open(true, problems)) {
        PdfPages pages(file.device());
        if (pages.addPage(*loaded.document, problems) && pages.finish(problems) && file.commit(problems))
            return 0;
    }
    for (const Problem &problem : std::as_const(problems))
        std::fprintf(stderr, "%s\n", qPrintable(problem.text()));
    return 1;
}
