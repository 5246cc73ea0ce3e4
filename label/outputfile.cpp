// SPDX-License-Identifier: BSD-3-Clause
#include "label/outputfile.h"

#include "label/atomicfile.h"

bool OutputFile::write(const QString &path, const QByteArray &data, bool overwrite, Problems &problems)
{
    AtomicFile file(path);
    return file.open(overwrite, problems) && file.write(data, problems) && file.commit(problems);
}
