// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

#include <optional>

namespace tunedeck {

inline const QString fatalCaseVariable = QStringLiteral("TUNEDECK_FATAL_CASE");

/// In a run that lastWordsOfAbortedRun() started: the case to go through instead of the tests. Else empty.
[[nodiscard]] inline QString fatalCase()
{
    return QProcessEnvironment::systemEnvironment().value(fatalCaseVariable);
}

/// Runs this test program again for `name`, which must not survive it. What that run said on standard error; none if
/// it did not abort.
[[nodiscard]] inline std::optional<QString> lastWordsOfAbortedRun(const QString &name)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(fatalCaseVariable, name);
    QProcess run;
    run.setProcessEnvironment(environment);
    run.start(QCoreApplication::applicationFilePath(), QStringList());
    if (!run.waitForFinished() || run.exitStatus() != QProcess::CrashExit) {
        return std::nullopt;
    }
    return QString::fromUtf8(run.readAllStandardError());
}

} // namespace tunedeck
