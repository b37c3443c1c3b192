// SPDX-License-Identifier: MIT
#include "platform/LaunchEntry.h"

#include "platform/processSandbox.h"

#include <QDeadlineTimer>
#include <QThread>

#include <chrono>
#include <future>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr auto farewellPatience = 500ms;

QString entryOf(const ProcessSandbox &sandbox, const QString &namedEntry)
{
    switch (sandbox.kind) {
    case ProcessSandbox::Kind::None:
        return namedEntry;
    case ProcessSandbox::Kind::Flatpak:
        return sandbox.application;
    case ProcessSandbox::Kind::Snap: {
        // A Snap may have several entries. The first is mostly that of the program with the Snap's own name.
        const QString prefix = sandbox.application + u'_';
        return namedEntry.startsWith(prefix) ? namedEntry : prefix + sandbox.application;
    }
    }
    return {};
}

QString findEntry(qint64 processId, const QString &namedEntry, const QString &processes)
{
    const std::optional<ProcessSandbox> sandbox = sandboxOfProcess(processId, processes);
    return sandbox ? entryOf(*sandbox, namedEntry) : QString();
}
} // namespace

LaunchEntry::LaunchEntry(const QString &processes, QObject *parent)
    : QObject(parent)
    , m_processes(processes)
{
}

LaunchEntry::~LaunchEntry()
{
    // The process may let a file system of its own hang, and a thread cannot be ended from outside.
    if (m_thread) {
        m_thread->wait(QDeadlineTimer(farewellPatience));
    }
}

void LaunchEntry::find(std::optional<qint64> processId, const QString &namedEntry)
{
    const std::optional<Question> question = processId ? std::optional(Question{*processId, namedEntry}) : std::nullopt;
    if (question == m_question) {
        return;
    }
    m_question = question;
    m_entry.clear();
    lookUp();
}

void LaunchEntry::lookUp()
{
    if (m_thread || !m_question) {
        return;
    }
    std::promise<QString> promise;
    const std::shared_future<QString> entry = promise.get_future().share();
    m_thread =
        QThread::create([question = *m_question, processes = m_processes, promise = std::move(promise)]() mutable {
            promise.set_value(findEntry(question.processId, question.namedEntry, processes));
        });
    connect(m_thread, &QThread::finished, this,
        [this, question = *m_question, entry] { handleAnswer(question, entry.get()); });
    connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
    m_thread->start();
}

void LaunchEntry::handleAnswer(const Question &question, const QString &entry)
{
    m_thread.clear();
    if (question != m_question) {
        lookUp();
        return;
    }
    m_entry = entry;
    Q_EMIT finished();
}

} // namespace tunedeck
