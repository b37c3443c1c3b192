// SPDX-License-Identifier: MIT
#pragma once

#include "updates/feed/FileStatement.h"

#include <QFutureWatcher>
#include <QObject>
#include <QString>

#include <atomic>
#include <memory>

namespace tunedeck {

class NamelessFile;

/// Compares a file with what its makers state, on a thread of its own. Emits finished() once, or not if it is deleted
/// before.
class FileVerification : public QObject {
    Q_OBJECT

public:
    explicit FileVerification(const FileStatement &statement, QObject *parent = nullptr);
    /// Stops it within some milliseconds.
    ~FileVerification() override;

    /// Call one of these once. The file is on disk when it has been verified.
    void start(const std::shared_ptr<const NamelessFile> &file);
    void start(const QString &path);

Q_SIGNALS:
    /// Whether the file's length and SHA-512 are as stated. False for a file that cannot be read.
    void finished(bool isGenuine);

private:
    const FileStatement m_statement;
    const std::shared_ptr<std::atomic_bool> m_isStopped = std::make_shared<std::atomic_bool>(false);
    QFutureWatcher<bool> m_result;
};

} // namespace tunedeck
