// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>
#include <QString>

#include <memory>

namespace tunedeck {

/// Asks a compositor one question at a time over its Unix socket, each over a connection of its own. Nothing blocks.
/// Only a socket of the same user is asked, and an answer has a limit. There is no deadline.
class CompositorSocket : public QObject {
    Q_OBJECT

public:
    enum class Reading { Unfinished, Finished, Invalid };
    /// Judges the bytes that have come so far. `isClosed`: no more will come.
    using Judge = Reading (*)(const QByteArray &bytes, bool isClosed);

    /// The most that an answer may have, in bytes. A tree of a thousand windows has less.
    static constexpr qsizetype mostBytes = 2'097'152;

    /// Whether a program of the same user listens at `path`, as far as can be seen without waiting: one that is too
    /// busy to be connected to counts.
    [[nodiscard]] static bool isListening(const QString &path);

    explicit CompositorSocket(Judge judge, QObject *parent = nullptr);
    ~CompositorSocket() override;

    /// Emits answered() or failed(), perhaps before it returns, unless close() comes first. A question that is still
    /// open is given up. `question` has at most some hundred bytes.
    void ask(const QString &path, const QByteArray &question);
    void close();

Q_SIGNALS:
    void answered(const QByteArray &answer);
    /// The socket is missing, another user's, or busy, or the answer is not one.
    void failed();

private:
    [[nodiscard]] bool open(const QString &path);
    [[nodiscard]] bool send(const QByteArray &question) const;
    void read();
    void handle(bool isClosed);

    const Judge m_judge;
    int m_socket = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_answer;
};

} // namespace tunedeck
