// SPDX-License-Identifier: MIT
#include "platform/ApplicationLauncher.h"

#include "platform/BundleInfo.h"
#include "platform/desktopEntry.h"
#include "platform/gio.h"
#include "platform/isInSandbox.h"

#include <QDeadlineTimer>
#include <QThread>

#include <chrono>
#include <future>
#include <memory>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr auto farewellPatience = 500ms;

struct Unref {
    void operator()(GAppInfo *application) const { gio()->unref(application); }
};
using Application = std::unique_ptr<GAppInfo, Unref>;

/// The file is read once, to be judged and launched: it may have changed since the player named it. This program is a
/// player for the desktop, but starting it again would play nothing.
Application findApplication(const QString &identifier, ApplicationLauncher::Accepts accepts)
{
    if (withoutDesktopSuffix(identifier) == applicationId) {
        return nullptr;
    }
    DesktopEntry entry = findDesktopEntry(identifier);
    const bool isAccepted =
        entry && (accepts == ApplicationLauncher::Accepts::AnyEntry || isShownAudioApplication(entry));
    return Application(isAccepted ? asAppInfo(entry.release()) : nullptr);
}

Application findDefault(const QString &contentType)
{
    if (contentType.isEmpty() || !gio()) {
        return nullptr;
    }
    return Application(gio()->defaultForType(contentType.toUtf8().constData(), FALSE));
}

/// The identifier of the application if it started, else empty.
QString launchApplication(const Application &application)
{
    if (!application || !gio()->launch(application.get(), nullptr, nullptr, nullptr)) {
        return {};
    }
    return withoutDesktopSuffix(QString::fromUtf8(gio()->id(application.get())));
}

QString launchFirst(const QStringList &desktopEntries, const QString &contentType, ApplicationLauncher::Accepts accepts)
{
    for (const QString &desktopEntry : desktopEntries) {
        if (const QString launched = launchApplication(findApplication(desktopEntry, accepts)); !launched.isEmpty()) {
            return launched;
        }
    }
    return launchApplication(findDefault(contentType));
}
} // namespace

ApplicationLauncher::ApplicationLauncher(Accepts accepts, QObject *parent)
    : QObject(parent)
    , m_accepts(accepts)
{
}

ApplicationLauncher::~ApplicationLauncher()
{
    // The bus may hang, and a thread cannot be ended from outside.
    if (m_thread) {
        m_thread->wait(QDeadlineTimer(farewellPatience));
    }
}

bool ApplicationLauncher::canLaunch() const
{
    return !isInSandbox();
}

void ApplicationLauncher::launch(const QStringList &desktopEntries, const QString &contentType)
{
    if (m_thread) {
        return;
    }
    std::promise<QString> promise;
    const std::shared_future<QString> launchedEntry = promise.get_future().share();
    m_thread =
        QThread::create([desktopEntries, contentType, accepts = m_accepts, promise = std::move(promise)]() mutable {
            promise.set_value(launchFirst(desktopEntries, contentType, accepts));
        });
    connect(m_thread, &QThread::finished, this, [this, launchedEntry] {
        m_thread.clear();
        const QString &entry = launchedEntry.get();
        if (entry.isEmpty()) {
            Q_EMIT failed();
        } else {
            Q_EMIT launched(entry);
        }
    });
    connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
    m_thread->start();
}

} // namespace tunedeck
