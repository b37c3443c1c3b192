// SPDX-License-Identifier: MIT
#include "startAnew.h"

#include <QByteArray>
#include <QFile>

#include <unistd.h>

namespace tunedeck {

void startAnew()
{
    const QString self = QStringLiteral("/proc/self/exe");
    // The link is the last resort, for a program whose file has been replaced: a process is named after what it was
    // begun with.
    for (const QString &path : {QFile::symLinkTarget(self), self}) {
        QByteArray program = QFile::encodeName(path);
        char *const arguments[] = {program.data(), nullptr};
        execv(program.constData(), arguments);
    }
}

} // namespace tunedeck
