// SPDX-License-Identifier: MIT
#pragma once

#include "above/AboveRoad.h"
#include "above/CompositorSocket.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tunedeck {

/// Pins the window in Hyprland, which shows it on every workspace above the others. Only a floating window can be
/// pinned. Hyprland's command turns the pin over, so the window's state is read first, and again afterwards.
class HyprlandRoad : public AboveRoad {
    Q_OBJECT

public:
    /// A window that Hyprland shows.
    struct Client {
        QByteArray address; ///< such as 0x55d0c0ffee00
        bool isFloating = false;
        bool isPinned = false;
    };

    /// Hyprland answers at `path`. The window is the one with the title `title` of the process `processId`.
    HyprlandRoad(QString path, qint64 processId, QString title, QObject *parent = nullptr);

    [[nodiscard]] AboveWay way() const override { return AboveWay::Hyprland; }
    void ask(bool isAbove) override;
    void abandon() override;

private:
    enum class Stage { LooksForWindow, Changes, Checks };

    void send(Stage stage, const QByteArray &message);
    void handle(const QByteArray &answer);
    void handleClients(const std::optional<Client> &client);
    /// The commands that are still missing, in their order.
    [[nodiscard]] QList<QByteArray> commands(const Client &client);
    [[nodiscard]] bool isAsWanted(const Client &client) const;
    /// Whether this object has floated the window, which the user no longer wants above.
    [[nodiscard]] bool isToBeTiled(const Client &client) const;
    void sendNextCommand();

    const QString m_path;
    const qint64 m_processId;
    const QString m_title;
    Stage m_stage = Stage::LooksForWindow;
    bool m_isAbove = false;
    QList<QByteArray> m_commands;
    QByteArray m_floated; ///< the address of the window that this object has floated
    CompositorSocket m_socket;
};

} // namespace tunedeck
