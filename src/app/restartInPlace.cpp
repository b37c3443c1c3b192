// SPDX-License-Identifier: MIT
#include "app/restartInPlace.h"

#include <QByteArray>
#include <QFile>

#include <unistd.h>

namespace tunedeck {

namespace {
/// Linux marks the path of a program whose file was replaced, as an upgrade does. The new file has the path without
/// the mark.
QString withoutMark(const QString &target)
{
    const QString mark = QStringLiteral(" (deleted)");
    return target.endsWith(mark) ? target.chopped(mark.size()) : target;
}
} // namespace

void restartInPlace()
{
    const QString self = QStringLiteral("/proc/self/exe");
    const QString target = QFile::symLinkTarget(self);
    // The link works even if the file is gone. It comes last because Linux names the process after it.
    for (const QString &path : {target, withoutMark(target), self}) {
        QByteArray program = QFile::encodeName(path);
        char *const arguments[] = {program.data(), nullptr};
        execv(program.constData(), arguments);
    }
}

} // namespace tunedeck
