// SPDX-License-Identifier: MIT
#include "platform/bus/PortalSettings.h"

#include "platform/bus/isSmallMessage.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QLatin1String>
#include <QVariantList>

#include <algorithm>
#include <mutex>
#include <utility>

namespace tunedeck {

namespace {
constexpr QLatin1String portal("org.freedesktop.portal.Desktop");
constexpr QLatin1String portalPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String portalInterface("org.freedesktop.portal.Settings");
constexpr QLatin1String settingChanged("SettingChanged");
constexpr QLatin1String readOneMethod("ReadOne");
constexpr QLatin1String readMethod("Read");
const char *const handler = SLOT(handleChange(QDBusMessage));

/// In milliseconds. The bus may have to start the portal and its backends first.
constexpr int deadline = 10'000;
constexpr qsizetype longestText = 1'000;
constexpr qsizetype longestReason = 200;

QStringList groupsOf(const QList<PortalKey> &keys)
{
    QStringList groups;
    for (const PortalKey &key : keys) {
        groups.append(key.group);
    }
    groups.removeDuplicates();
    return groups;
}

/// Read wraps a value twice, ReadOne once.
QVariant unwrapped(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

QVariant colorOf(const QDBusArgument &argument)
{
    if (argument.currentSignature() != u"(ddd)") {
        return {};
    }
    double red = 0;
    double green = 0;
    double blue = 0;
    argument.beginStructure();
    argument >> red >> green >> blue;
    argument.endStructure();
    return QVariantList{red, green, blue};
}

/// The value without what is large.
QVariant plain(const QVariant &value)
{
    const QVariant bare = unwrapped(value);
    if (bare.metaType() == QMetaType::fromType<QDBusArgument>()) {
        return colorOf(bare.value<QDBusArgument>());
    }
    switch (bare.typeId()) {
    case QMetaType::Bool:
    case QMetaType::UInt:
    case QMetaType::Double:
        return bare;
    case QMetaType::QString:
        return bare.toString().size() <= longestText ? bare : QVariant();
    default:
        return {};
    }
}
} // namespace

/// Receives the portal's settings on the thread that reads the bus.
class PortalReader : public QObject {
    Q_OBJECT

public:
    struct Setting {
        PortalKey key;
        QVariant value;
    };

    PortalReader(QString busName, QList<PortalKey> keys)
        : m_busName(std::move(busName))
        , m_keys(std::move(keys))
    {
    }

    void askForAll()
    {
        for (const PortalKey &key : m_keys) {
            ask(key, readOneMethod);
        }
    }

    /// The settings that have come since the last call. May be called on any thread.
    [[nodiscard]] QList<Setting> take()
    {
        const std::lock_guard lock(m_mutex);
        return std::exchange(m_settings, {});
    }

public Q_SLOTS:
    void handleChange(const QDBusMessage &signal)
    {
        if (signal.signature() != u"ssv" || !isSmallMessage(signal)) {
            return;
        }
        const QVariantList arguments = signal.arguments();
        const PortalKey key{arguments[0].toString(), arguments[1].toString()};
        if (m_keys.contains(key)) {
            keep({key, plain(arguments[2])});
        }
    }

Q_SIGNALS:
    /// The first setting since the last call of take() has come.
    void hasSettings();
    void failed(const tunedeck::PortalKey &key, const QString &reason);

private:
    void ask(const PortalKey &key, QLatin1String method)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(portal, portalPath, portalInterface, method);
        call << key.group << key.key;
        auto *watcher = new QDBusPendingCallWatcher(QDBusConnection(m_busName).asyncCall(call, deadline), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, key, method, watcher] {
            watcher->deleteLater();
            handleAnswer(key, method, watcher->reply());
        });
    }

    void handleAnswer(const PortalKey &key, QLatin1String method, const QDBusMessage &answer)
    {
        const QDBusError error(answer);
        if (error.type() == QDBusError::UnknownMethod && method == readOneMethod) {
            ask(key, readMethod);
        } else if (error.isValid() || answer.signature() != u"v" || !isSmallMessage(answer)) {
            Q_EMIT failed(key, error.message().left(longestReason));
        } else {
            keep({key, plain(answer.arguments().constFirst())});
        }
    }

    void keep(const Setting &setting)
    {
        const auto add = [this, &setting] {
            const std::lock_guard lock(m_mutex);
            const bool isFirst = m_settings.isEmpty();
            m_settings.removeIf([&setting](const Setting &other) { return other.key == setting.key; });
            m_settings.append(setting);
            return isFirst;
        };
        if (add()) {
            Q_EMIT hasSettings();
        }
    }

    const QString m_busName;
    const QList<PortalKey> m_keys;
    std::mutex m_mutex;
    QList<Setting> m_settings;
};

PortalSettings::PortalSettings(const QDBusConnection &bus, const QList<PortalKey> &keys, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_groups(groupsOf(keys))
    , m_reader(new PortalReader(bus.name(), keys))
{
    connect(m_reader.get(), &PortalReader::hasSettings, this, &PortalSettings::reportAll, Qt::QueuedConnection);
    connect(m_reader.get(), &PortalReader::failed, this, &PortalSettings::failed, Qt::QueuedConnection);
    moveToReadingThread(*m_reader, m_bus);
    // Given a service name, the connection would ask the bus for its owner and wait for the answer.
    for (const QString &group : m_groups) {
        m_bus.connect(
            QString(), portalPath, portalInterface, settingChanged, {group}, QString(), m_reader.get(), handler);
    }
    QMetaObject::invokeMethod(m_reader.get(), &PortalReader::askForAll, Qt::QueuedConnection);
}

PortalSettings::~PortalSettings()
{
    for (const QString &group : m_groups) {
        m_bus.disconnect(
            QString(), portalPath, portalInterface, settingChanged, {group}, QString(), m_reader.get(), handler);
    }
}

void PortalSettings::reportAll()
{
    const QList<PortalReader::Setting> settings = m_reader->take();
    for (const PortalReader::Setting &setting : settings) {
        Q_EMIT read(setting.key, setting.value);
    }
}

} // namespace tunedeck

#include "PortalSettings.moc"
