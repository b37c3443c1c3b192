// SPDX-License-Identifier: MIT
#pragma once

#include "support/PrivateBus.h"

#include <QByteArray>
#include <QJsonObject>
#include <QMetaType>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <vector>

namespace tunedeck {

/// A sound server of the test's own, without a sound card. Its folders become those of this process, so that libpulse
/// finds this server and no other.
class PrivateSoundServer {
public:
    enum class Kind {
        PulseAudio,
        PipeWire ///< with WirePlumber and pipewire-pulse
    };

    explicit PrivateSoundServer(Kind kind);
    ~PrivateSoundServer();
    PrivateSoundServer(const PrivateSoundServer &) = delete;
    PrivateSoundServer &operator=(const PrivateSoundServer &) = delete;

    /// Whether the programs that the server needs are installed.
    [[nodiscard]] static bool isInstalled(Kind kind);

    /// Returns when the server has the outputs "first" (the default) and "second", named "First" and "Second".
    [[nodiscard]] bool start();
    /// Kills it at once.
    void kill();
    /// Kills only what stands behind the process that answers clients, which then refuses new ones. PipeWire alone has
    /// such a process.
    void killCore() const;
    /// Stops the process that answers clients, as a machine does that has no time for it, and lets it go on.
    void freeze() const;
    void thaw() const;

    /// Adds an output and returns the number by which it can be removed; 0 if that fails.
    [[nodiscard]] int addOutput(const QString &id, const QString &name) const;
    bool removeOutput(int number) const;
    /// The output of pactl; empty if it fails.
    [[nodiscard]] QByteArray control(const QStringList &arguments) const;
    /// The stream's entry in the server's list; empty if there is none.
    [[nodiscard]] QJsonObject stream(quint32 index) const;
    /// The volumes of the stream's channels, as the server counts them.
    [[nodiscard]] QList<int> volumes(quint32 index) const;

private:
    bool launch(const QString &program, const QStringList &arguments);
    bool startPulseAudio();
    bool startPipeWire();
    [[nodiscard]] bool isReady() const;

    Kind m_kind;
    QTemporaryDir m_folder;
    std::unique_ptr<PrivateBus> m_bus;
    std::vector<std::unique_ptr<QProcess>> m_processes; ///< the one that answers clients is the last
};

/// A row for each kind of server in the column "kind", for initTestCase_data().
void addServerKinds();

} // namespace tunedeck

Q_DECLARE_METATYPE(tunedeck::PrivateSoundServer::Kind)
