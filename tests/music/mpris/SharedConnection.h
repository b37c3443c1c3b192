// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <memory>

namespace tunedeck {

/// Players whose names all belong to one connection to the bus, as a bridge to other devices may have them. A call is
/// told apart by the name that it was sent to; a signal carries no name but the connection's. It answers on a thread of
/// its own.
class SharedConnection {
public:
    /// A player's words about itself.
    struct Report {
        QString title;
        bool isPlaying = false;
    };

    /// Connects to the bus at `address`; isConnected() tells whether it could.
    explicit SharedConnection(const QString &address);
    ~SharedConnection();
    SharedConnection(const SharedConnection &) = delete;
    SharedConnection &operator=(const SharedConnection &) = delete;

    [[nodiscard]] bool isConnected() const;
    /// Takes "org.mpris.MediaPlayer2." with `name` appended. The player calls itself `name`.
    [[nodiscard]] bool take(const QString &name, const Report &report);
    [[nodiscard]] bool giveUp(const QString &name);
    /// The player's answers from now on. Nothing is announced.
    void set(const QString &name, const Report &report);
    /// Announces what the player answers.
    void announce(const QString &name);

    /// The calls that were sent to this name since the last takeCalls(), such as "PlayPause", "Set Volume" or
    /// "GetAll org.mpris.MediaPlayer2.Player". For an empty name, the calls that were sent to the connection while it
    /// had several names.
    QStringList takeCalls(const QString &name);

private:
    struct State;
    struct Link;

    std::shared_ptr<State> m_state;
    std::unique_ptr<Link> m_link;
};

} // namespace tunedeck
