// SPDX-License-Identifier: MIT
#pragma once

#include "above/AboveRoad.h"
#include "above/CompositorSocket.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tunedeck {

/// Floats the window in Sway and shows it on every workspace. That is above all tiled windows; Sway has no order among
/// those that float. A window that was tiled before is tiled again when the wish is taken back.
class SwayRoad : public AboveRoad {
    Q_OBJECT

public:
    /// A window in Sway's tree.
    struct Node {
        qint64 number = 0;
        bool isFloating = false;
        bool isSticky = false;
    };

    /// Sway answers at `path`. The window is the one with the title `title` of the process `processId`.
    SwayRoad(QString path, qint64 processId, QString title, QObject *parent = nullptr);

    [[nodiscard]] AboveWay way() const override { return AboveWay::Sway; }
    void ask(bool isAbove) override;
    void abandon() override;

private:
    enum class Stage { LooksForWindow, Changes, Checks };

    void send(Stage stage, const QByteArray &message);
    void handle(const QByteArray &answer);
    void handleTree(const std::optional<Node> &node);
    [[nodiscard]] QByteArray command(const Node &node);
    [[nodiscard]] bool isAsWanted(const Node &node) const;
    /// Whether this object has floated the window, which the user no longer wants above.
    [[nodiscard]] bool isToBeTiled(const Node &node) const;

    const QString m_path;
    const qint64 m_processId;
    const QString m_title;
    Stage m_stage = Stage::LooksForWindow;
    bool m_isAbove = false;
    std::optional<Node> m_before; ///< as the user had it before it was kept above
    CompositorSocket m_socket;
};

} // namespace tunedeck
