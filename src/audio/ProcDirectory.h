// SPDX-License-Identifier: MIT
#pragma once

#include "audio/ProcessTable.h"

#include <QString>

namespace tunedeck {

/// The processes in a folder that is made like /proc.
class ProcDirectory : public ProcessTable {
public:
    explicit ProcDirectory(QString processes = QStringLiteral("/proc"));

    [[nodiscard]] std::optional<ProcessFacts> facts(qint64 process) const override;
    [[nodiscard]] QString sandbox(qint64 process) const override;
    [[nodiscard]] QSet<qint64> numbersInside(const QString &sandbox) const override;

private:
    [[nodiscard]] QString folderOf(qint64 process) const;

    QString m_processes;
};

} // namespace tunedeck
