// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QSet>
#include <QString>

#include <optional>

namespace tunedeck {

/// A process, as the system reports it.
struct ProcessFacts {
    qint64 parent = 0;
    QString name = {}; ///< at most 15 characters
    QString binary = {}; ///< file name of the program; empty if the system does not tell
    /// Its numbers, from this machine's PID namespace to its own.
    QList<qint64> numbers = {};
};

/// The processes that run. It reads files, so call it on a worker thread.
class ProcessTable {
public:
    virtual ~ProcessTable() = default;
    /// None if there is no such process, or it is another user's and hidden.
    [[nodiscard]] virtual std::optional<ProcessFacts> facts(qint64 process) const = 0;
    /// Identifier of the Flatpak that the process runs in; empty if it runs in none.
    [[nodiscard]] virtual QString sandbox(qint64 process) const = 0;
    /// The numbers that the processes of this Flatpak have inside it. It looks at all processes.
    [[nodiscard]] virtual QSet<qint64> numbersInside(const QString &sandbox) const = 0;
};

} // namespace tunedeck
