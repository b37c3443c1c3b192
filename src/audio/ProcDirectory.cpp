// SPDX-License-Identifier: MIT
#include "audio/ProcDirectory.h"

#include "platform/processSandbox.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>

namespace tunedeck {

namespace {
/// A status has some 1,500 bytes; the process cannot make it longer than its list of groups.
constexpr qint64 largestStatus = 64 * 1'024;

QList<qint64> numbersIn(const QByteArray &text)
{
    QList<qint64> numbers;
    const QList<QByteArray> words = text.simplified().split(' ');
    for (const QByteArray &word : words) {
        numbers.append(word.toLongLong());
    }
    return numbers;
}

QString programOf(const QString &link)
{
    constexpr QLatin1String deleted(" (deleted)");
    const QString target = QFile::symLinkTarget(link);
    return QFileInfo(target.endsWith(deleted) ? target.chopped(deleted.size()) : target).fileName();
}
} // namespace

ProcDirectory::ProcDirectory(QString processes)
    : m_processes(std::move(processes))
{
}

std::optional<ProcessFacts> ProcDirectory::facts(qint64 process) const
{
    QFile status(folderOf(process) + QStringLiteral("/status"));
    if (process <= 0 || !status.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    ProcessFacts facts{.binary = programOf(folderOf(process) + QStringLiteral("/exe"))};
    const QList<QByteArray> lines = status.read(largestStatus).split('\n');
    for (const QByteArray &line : lines) {
        const QByteArray key = line.left(line.indexOf(':'));
        const QByteArray value = line.mid(key.size() + 1).trimmed();
        if (key == "Name") {
            facts.name = QString::fromUtf8(value);
        } else if (key == "PPid") {
            facts.parent = value.toLongLong();
        } else if (key == "NSpid") {
            facts.numbers = numbersIn(value);
        }
    }
    return facts;
}

QString ProcDirectory::sandbox(qint64 process) const
{
    const ProcessSandbox sandbox = sandboxOfProcess(process, m_processes).value_or(ProcessSandbox());
    return sandbox.kind == ProcessSandbox::Kind::Flatpak ? sandbox.application : QString();
}

QSet<qint64> ProcDirectory::numbersInside(const QString &sandbox) const
{
    QSet<qint64> numbers;
    const QStringList folders = QDir(m_processes).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &folder : folders) {
        const qint64 process = folder.toLongLong();
        const std::optional<ProcessFacts> found = facts(process);
        if (found && found->numbers.size() > 1 && this->sandbox(process) == sandbox) {
            numbers.insert(found->numbers.last());
        }
    }
    return numbers;
}

QString ProcDirectory::folderOf(qint64 process) const
{
    return m_processes + u'/' + QString::number(process);
}

} // namespace tunedeck
