// SPDX-License-Identifier: MIT
#include "platform/processSandbox.h"

#include <QByteArray>
#include <QFile>
#include <QRegularExpression>

#include <glib.h>

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace tunedeck {

namespace {
using Kind = ProcessSandbox::Kind;

constexpr qint64 largestFile = 64 * 1'024; // bytes

struct Reading {
    bool isMissing = false;
    std::optional<QByteArray> content; ///< none if the file is missing or cannot be read
};

/// The process may have put anything there: a pipe that nobody writes to, a link, an endless file.
Reading read(const QString &path)
{
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0) {
        return {.isMissing = errno == ENOENT, .content = {}};
    }
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return {};
    }
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        return {};
    }
    const QByteArray content = file.read(largestFile + 1);
    return {.content = content.size() > largestFile ? std::nullopt : std::optional(content)};
}

/// Empty if `information`, a file that Flatpak puts into each sandbox, names no application.
QString flatpakNamedIn(const QByteArray &information)
{
    const std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)> keys(g_key_file_new(), &g_key_file_unref);
    g_key_file_load_from_data(keys.get(), information.constData(), gsize(information.size()), G_KEY_FILE_NONE, nullptr);
    const std::unique_ptr<char, decltype(&g_free)> name(
        g_key_file_get_string(keys.get(), "Application", "name", nullptr), &g_free);
    return QString::fromUtf8(name.get());
}

/// Empty if no control group is one that systemd made for a Snap.
QString snapNamedIn(const QByteArray &controlGroups)
{
    static const QRegularExpression snap(
        QStringLiteral(R"(/snap\.([a-z0-9-]+(?:_[a-z0-9]+)?)\.[^/\n]+$)"), QRegularExpression::MultilineOption);
    return snap.match(QString::fromUtf8(controlGroups)).captured(1);
}

std::optional<ProcessSandbox> sandboxOf(Kind kind, const QString &application)
{
    return application.isEmpty() ? std::nullopt : std::optional(ProcessSandbox{kind, application});
}
} // namespace

std::optional<ProcessSandbox> sandboxOfProcess(qint64 processId, const QString &processes)
{
    const QString process = processes + u'/' + QString::number(processId);
    // The file is missing also where the process has ended. Its control groups are missing then, too.
    const Reading flatpak = read(process + QStringLiteral("/root/.flatpak-info"));
    if (flatpak.content) {
        return sandboxOf(Kind::Flatpak, flatpakNamedIn(*flatpak.content));
    }
    const Reading controlGroups = read(process + QStringLiteral("/cgroup"));
    if (!flatpak.isMissing || !controlGroups.content) {
        return std::nullopt;
    }
    return sandboxOf(Kind::Snap, snapNamedIn(*controlGroups.content)).value_or(ProcessSandbox());
}

} // namespace tunedeck
