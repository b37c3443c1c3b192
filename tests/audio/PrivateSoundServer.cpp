// SPDX-License-Identifier: MIT
#include "PrivateSoundServer.h"

#include "support/endWithParent.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
constexpr int patience = 15'000; // ms

bool areInstalled(const QStringList &programs)
{
    return std::ranges::none_of(
        programs, [](const QString &program) { return QStandardPaths::findExecutable(program).isEmpty(); });
}

/// Whether the socket takes a connection. Its file is there a little before it does.
bool accepts(const QString &server)
{
    QLocalSocket client;
    client.connectToServer(server);
    return client.waitForConnected();
}
} // namespace

PrivateSoundServer::PrivateSoundServer(Kind kind)
    : m_kind(kind)
{
    const QByteArray folder = QFile::encodeName(m_folder.path());
    for (const char *name : {"XDG_RUNTIME_DIR", "HOME", "XDG_STATE_HOME", "XDG_CONFIG_HOME", "PULSE_RUNTIME_PATH"}) {
        qunsetenv(name);
    }
    for (const char *name : {"XDG_RUNTIME_DIR", "HOME", "XDG_STATE_HOME", "XDG_CONFIG_HOME"}) {
        qputenv(name, folder);
    }
    qunsetenv("PULSE_SERVER");
    qunsetenv("PIPEWIRE_REMOTE");
    qunsetenv("DISPLAY");
}

PrivateSoundServer::~PrivateSoundServer()
{
    kill();
}

bool PrivateSoundServer::isInstalled(Kind kind)
{
    return areInstalled(kind == Kind::PulseAudio
            ? QStringList{u"pulseaudio"_s, u"pactl"_s}
            : QStringList{u"pipewire"_s, u"wireplumber"_s, u"pipewire-pulse"_s, u"pactl"_s});
}

bool PrivateSoundServer::start()
{
    const bool isLaunched = m_kind == Kind::PulseAudio ? startPulseAudio() : startPipeWire();
    return isLaunched && QTest::qWaitFor([this] { return isReady(); }, patience)
        && addOutput(u"first"_s, u"First"_s) != 0 && addOutput(u"second"_s, u"Second"_s) != 0
        && !control({u"set-default-sink"_s, u"first"_s}).isNull();
}

bool PrivateSoundServer::startPulseAudio()
{
    // It would lower its limit of descriptors to 256, which is enough for 60 outputs.
    QFile configuration(m_folder.filePath(u"daemon.conf"_s));
    if (!configuration.open(QIODevice::WriteOnly) || configuration.write("rlimit-nofile = -1\n") < 0) {
        return false;
    }
    configuration.close();
    return launch(u"pulseaudio"_s,
        {u"-n"_s, u"--daemonize=no"_s, u"--exit-idle-time=-1"_s, u"--use-pid-file=no"_s, u"-L"_s,
            u"module-native-protocol-unix socket=%1/pulse/native"_s.arg(m_folder.path())});
}

bool PrivateSoundServer::startPipeWire()
{
    m_bus = std::make_unique<PrivateBus>();
    const QString socket = m_folder.filePath(u"pipewire-0"_s);
    return launch(u"pipewire"_s, {}) && QTest::qWaitFor([&] { return accepts(socket); }, patience)
        && launch(u"wireplumber"_s, {}) && launch(u"pipewire-pulse"_s, {});
}

bool PrivateSoundServer::launch(const QString &program, const QStringList &arguments)
{
    QProcess &process = *m_processes.emplace_back(std::make_unique<QProcess>());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // PulseAudio starts a bus if it has no address of one.
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus ? m_bus->address() : u"disabled:"_s);
    environment.insert(u"PULSE_CONFIG"_s, m_folder.filePath(u"daemon.conf"_s));
    process.setProcessEnvironment(environment);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    endWithParent(process);
    const auto endIt = process.childProcessModifier();
    // PipeWire needs 1,200 descriptors for 200 streams, PulseAudio some for each output.
    process.setChildProcessModifier([endIt] {
        endIt();
        rlimit descriptors = {};
        ::getrlimit(RLIMIT_NOFILE, &descriptors);
        descriptors.rlim_cur = descriptors.rlim_max;
        ::setrlimit(RLIMIT_NOFILE, &descriptors);
    });
    process.start(program, arguments);
    return process.waitForStarted(patience);
}

bool PrivateSoundServer::isReady() const
{
    const QByteArray info = control({u"info"_s});
    // Without WirePlumber, PipeWire has no default output but by this name.
    return !info.isEmpty() && (m_kind == Kind::PulseAudio || !info.contains("@DEFAULT_SINK@"));
}

void PrivateSoundServer::kill()
{
    for (auto process = m_processes.rbegin(); process != m_processes.rend(); ++process) {
        (*process)->kill();
        (*process)->waitForFinished(patience);
    }
    m_processes.clear();
    m_bus.reset();
    QDir(m_folder.filePath(u"pulse"_s)).removeRecursively();
    QFile::remove(m_folder.filePath(u"pipewire-0"_s));
}

void PrivateSoundServer::killCore() const
{
    m_processes.front()->kill();
    m_processes.front()->waitForFinished(patience);
}

void PrivateSoundServer::freeze() const
{
    ::kill(pid_t(m_processes.back()->processId()), SIGSTOP);
}

void PrivateSoundServer::thaw() const
{
    ::kill(pid_t(m_processes.back()->processId()), SIGCONT);
}

int PrivateSoundServer::addOutput(const QString &id, const QString &name) const
{
    return control({u"load-module"_s, u"module-null-sink"_s, u"sink_name=%1"_s.arg(id),
                       u"sink_properties=device.description=\"%1\""_s.arg(name)})
        .trimmed()
        .toInt();
}

bool PrivateSoundServer::removeOutput(int number) const
{
    return !control({u"unload-module"_s, QString::number(number)}).isNull();
}

QByteArray PrivateSoundServer::control(const QStringList &arguments) const
{
    QProcess pactl;
    pactl.start(u"pactl"_s, arguments);
    if (!pactl.waitForFinished(patience) || pactl.exitCode() != 0) {
        return {};
    }
    return pactl.readAllStandardOutput() + '\n';
}

QJsonObject PrivateSoundServer::stream(quint32 index) const
{
    const QByteArray list = control({u"--format=json"_s, u"list"_s, u"sink-inputs"_s});
    const QJsonArray streams = QJsonDocument::fromJson(list).array();
    for (const auto &entry : streams) {
        if (entry[u"index"].toInt() == int(index)) {
            return entry.toObject();
        }
    }
    return {};
}

QList<int> PrivateSoundServer::volumes(quint32 index) const
{
    const QJsonObject channels = stream(index).value(u"volume"_s).toObject();
    QList<int> volumes;
    for (const auto &channel : channels) {
        volumes.append(channel[u"value"].toInt());
    }
    return volumes;
}

void addServerKinds()
{
    using Kind = PrivateSoundServer::Kind;
    QTest::addColumn<Kind>("kind");
    QTest::newRow("PulseAudio") << Kind::PulseAudio;
    QTest::newRow("PipeWire") << Kind::PipeWire;
}

} // namespace tunedeck
