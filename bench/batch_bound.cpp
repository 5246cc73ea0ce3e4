// SPDX-License-Identifier: BSD-3-Clause
#include "bench/boundpdf.h"

#include <QGuiApplication>

#include <cstdio>
#include <ctime>
#include <sys/resource.h>

// What a PDF of many labels can cost at best, as a program to measure others against: labels per second of
// processor time, and the most memory it took.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const int labels = argc == 3 ? QByteArray(argv[1]).toInt() : 0;
    if (labels < 1) {
        std::fputs("usage: batch_bound LABELS FILE.pdf\n", stderr);
        return 1;
    }
    const std::clock_t start = std::clock();
    BoundPdf pdf(QString::fromLocal8Bit(argv[2]));
    for (int i = 0; i < labels; ++i)
        pdf.addPage(BatchLabel::rowOf(i));
    pdf.finish();
    const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%.0f labels/s, %ld KiB\n", labels / seconds, usage.ru_maxrss);
    return 0;
}
