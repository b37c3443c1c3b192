// SPDX-License-Identifier: MIT
#include "app/restartInPlace.h"

#include <QByteArray>
#include <QFile>

#include <unistd.h>

namespace tunedeck {

namespace {
/// Where the program was replaced, as an upgrade does, the new one is at the path that the old one had.
QString withoutMark(const QString &target)
{
    const QString mark = QStringLiteral(" (deleted)");
    return target.endsWith(mark) ? target.chopped(mark.size()) : target;
}
} // namespace

void startAnew()
{
    const QString self = QStringLiteral("/proc/self/exe");
    const QString target = QFile::symLinkTarget(self);
    // The link is the last resort, for a program whose file is gone: a process is named after what it was begun with.
    for (const QString &path : {target, withoutMark(target), self}) {
        QByteArray program = QFile::encodeName(path);
        char *const arguments[] = {program.data(), nullptr};
        execv(program.constData(), arguments);
    }
}

} // namespace tunedeck
