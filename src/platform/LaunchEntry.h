// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <optional>

class QThread;

namespace tunedeck {

/// Finds the desktop entry by which the application of a process may be launched again. A process is believed which
/// entry is its own, unless it runs in a sandbox (see sandboxOfProcess()): then it is launched by the sandbox's own
/// entry alone. A thread looks, because what it looks at may block.
class LaunchEntry : public QObject {
    Q_OBJECT

public:
    /// `processes` is the folder with a folder for each process.
    explicit LaunchEntry(const QString &processes = QStringLiteral("/proc"), QObject *parent = nullptr);
    /// Waits up to half a second for a search that is under way, then leaves its thread running.
    ~LaunchEntry() override;

    /// Looks for the entry of this process, which names `namedEntry` as its own. Returns at once. Without a process
    /// there is no entry.
    void find(std::optional<qint64> processId, const QString &namedEntry);
    /// The identifier of the entry; empty until the search is finished, and if nothing can be found out about the
    /// process.
    [[nodiscard]] const QString &entry() const { return m_entry; }

Q_SIGNALS:
    /// The search that was asked for last has ended.
    void finished();

private:
    struct Question {
        qint64 processId;
        QString namedEntry;

        bool operator==(const Question &) const = default;
    };

    void lookUp();
    void handleAnswer(const Question &question, const QString &entry);

    const QString m_processes;
    std::optional<Question> m_question; ///< none without a process
    QString m_entry;
    QPointer<QThread> m_thread; ///< null while nothing is looked up
};

} // namespace tunedeck
