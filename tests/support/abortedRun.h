// SPDX-License-Identifier: MIT
#pragma once

#include "support/registerTest.h"

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>

#include <optional>

namespace tunedeck {

inline constexpr const char *fatalCaseVariable = "TUNEDECK_FATAL_CASE";

/// Runs this test class again for the case `name`, which must not survive it. What that run said on standard error;
/// nothing if it did not abort.
[[nodiscard]] inline std::optional<QString> lastWordsOfAbortedRun(const QString &name)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QLatin1String(fatalCaseVariable), name);
    QProcess run;
    run.setProcessEnvironment(environment);
    run.start(QCoreApplication::applicationFilePath(), {runningTest()});
    if (!run.waitForFinished() || run.exitStatus() != QProcess::CrashExit) {
        return std::nullopt;
    }
    return QString::fromUtf8(run.readAllStandardError());
}

} // namespace tunedeck
