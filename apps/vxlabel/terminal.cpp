// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/terminal.h"

#include <cerrno>
#include <cstdio>

namespace Terminal {

void complain(const Problem &problem)
{
    const QByteArray line = "vxlabel: " + problem.text().toUtf8() + '\n';
    std::fwrite(line.constData(), 1, size_t(line.size()), stderr);
}

void complain(const Problems &problems, const QString &file)
{
    for (Problem problem : problems) {
        if (problem.file.isEmpty())
            problem.file = file;
        complain(problem);
    }
}

bool print(const QByteArray &text)
{
    const size_t size = size_t(text.size());
    if (std::fwrite(text.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0)
        return true;
    complain({ QStringLiteral("standard output"), {}, qt_error_string(errno), {} });
    return false;
}

} // namespace Terminal
