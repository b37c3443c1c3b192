// SPDX-License-Identifier: MIT
#include "platform/WindowActivation.h"
#include "support/registerTest.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QTest>
#include <QWindow>

#include <memory>

namespace tunedeck {

namespace {
std::unique_ptr<QWindow> makeWindow(const QString &name, Qt::WindowFlags type = Qt::Window)
{
    auto window = std::make_unique<QWindow>();
    window->setObjectName(name);
    window->setFlags(type);
    window->resize(100, 50);
    window->show();
    return window;
}

/// Moves the keyboard focus as the window system does. Null stands for another program.
void focus(QWindow *window)
{
    Q_EMIT qGuiApp->focusWindowChanged(window);
}
} // namespace

class WindowActivationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        m_player = makeWindow(QStringLiteral("player"));
        m_preferences = makeWindow(QStringLiteral("preferences"));
        m_about = makeWindow(QStringLiteral("about"), Qt::Dialog);
        QCoreApplication::processEvents();
        focus(nullptr);
        m_activation = std::make_unique<WindowActivation>();
        focus(nullptr);
        m_told.clear();
        const auto tell = [this](const QString &what) {
            return [this, what](QWindow *window) { m_told.append(window->objectName() + what); };
        };
        connect(m_activation.get(), &WindowActivation::windowDidBecomeKey, this, tell(QStringLiteral(" became key")));
        connect(m_activation.get(), &WindowActivation::windowDidResignKey, this, tell(QStringLiteral(" resigned key")));
        connect(m_activation.get(), &WindowActivation::windowDidBecomeMain, this, tell(QStringLiteral(" became main")));
        connect(
            m_activation.get(), &WindowActivation::windowDidResignMain, this, tell(QStringLiteral(" resigned main")));
    }

    void cleanup()
    {
        m_activation.reset();
        m_about.reset();
        m_preferences.reset();
        m_player.reset();
    }

    void aFocusedWindowBecomesKeyThenMain()
    {
        focus(m_player.get());
        QCOMPARE(m_told, QStringList({QStringLiteral("player became key"), QStringLiteral("player became main")}));
        QCOMPARE(m_activation->keyWindow(), m_player.get());
        QCOMPARE(m_activation->mainWindow(), m_player.get());
    }

    void theOldWindowResignsBeforeTheNewOneBecomes()
    {
        focus(m_player.get());
        m_told.clear();
        focus(m_preferences.get());
        QCOMPARE(m_told,
            QStringList({QStringLiteral("player resigned key"), QStringLiteral("player resigned main"),
                QStringLiteral("preferences became key"), QStringLiteral("preferences became main")}));
    }

    void theNewStateIsThereWhenTheOldWindowResigns()
    {
        focus(m_player.get());
        QWindow *keyWindow = nullptr;
        connect(m_activation.get(), &WindowActivation::windowDidResignKey, this,
            [this, &keyWindow] { keyWindow = m_activation->keyWindow(); });
        focus(m_preferences.get());
        QCOMPARE(keyWindow, m_preferences.get());
    }

    void aPanelIsKeyWhileTheMainWindowStaysMain_data()
    {
        QTest::addColumn<Qt::WindowType>("type");
        QTest::newRow("dialog") << Qt::Dialog;
        QTest::newRow("tool") << Qt::Tool;
    }

    void aPanelIsKeyWhileTheMainWindowStaysMain()
    {
        QFETCH(const Qt::WindowType, type);
        m_about->setFlags(type);
        focus(m_player.get());
        m_told.clear();
        focus(m_about.get());
        QCOMPARE(m_told, QStringList({QStringLiteral("player resigned key"), QStringLiteral("about became key")}));
        QCOMPARE(m_activation->mainWindow(), m_player.get());
    }

    void aPanelAloneIsNotMain()
    {
        focus(m_about.get());
        QCOMPARE(m_told, QStringList({QStringLiteral("about became key")}));
        QCOMPARE(m_activation->mainWindow(), nullptr);
    }

    void keyAndMainResignWhenAnotherProgramGetsTheKeyboard()
    {
        focus(m_player.get());
        focus(m_about.get());
        m_told.clear();
        focus(nullptr);
        QCOMPARE(m_told, QStringList({QStringLiteral("about resigned key"), QStringLiteral("player resigned main")}));
        QCOMPARE(m_activation->keyWindow(), nullptr);
        QCOMPARE(m_activation->mainWindow(), nullptr);
    }

    void comingBackByAPanelMakesTheMainWindowMainAgain()
    {
        focus(m_player.get());
        focus(nullptr);
        m_told.clear();
        focus(m_about.get());
        QCOMPARE(m_told, QStringList({QStringLiteral("about became key"), QStringLiteral("player became main")}));
    }

    void aMenuOrTooltipChangesNothing_data()
    {
        QTest::addColumn<Qt::WindowType>("type");
        QTest::newRow("menu") << Qt::Popup;
        QTest::newRow("tooltip") << Qt::ToolTip;
    }

    void aMenuOrTooltipChangesNothing()
    {
        QFETCH(const Qt::WindowType, type);
        focus(m_player.get());
        m_told.clear();
        const auto popup = makeWindow(QStringLiteral("popup"), type);
        focus(popup.get());
        focus(m_player.get());
        QCOMPARE(m_told, QStringList());
        QCOMPARE(m_activation->keyWindow(), m_player.get());
        QCOMPARE(m_activation->mainWindow(), m_player.get());
    }

    void theSameFocusTwiceIsToldOnce()
    {
        focus(m_player.get());
        m_told.clear();
        focus(m_player.get());
        QCOMPARE(m_told, QStringList());
    }

    void aWindowMayBeDestroyedWhileKey()
    {
        focus(m_preferences.get());
        m_told.clear();
        m_preferences.reset();
        QCOMPARE(m_activation->keyWindow(), nullptr);
        QCOMPARE(m_activation->mainWindow(), nullptr);
        focus(m_player.get());
        QCOMPARE(m_told, QStringList({QStringLiteral("player became key"), QStringLiteral("player became main")}));
    }

    void aWindowMayBeDestroyedByWhoeverHearsThatItResigned()
    {
        focus(m_preferences.get());
        m_told.clear();
        connect(m_activation.get(), &WindowActivation::windowDidResignKey, this, [this] { m_preferences.reset(); });
        focus(m_player.get());
        QCOMPARE(m_told,
            QStringList({QStringLiteral("preferences resigned key"), QStringLiteral("player became key"),
                QStringLiteral("player became main")}));
    }

    void followsTheWindowSystem()
    {
        m_preferences->requestActivate();
        QTRY_COMPARE(QGuiApplication::focusWindow(), m_preferences.get());
        QTRY_COMPARE(m_activation->keyWindow(), m_preferences.get());
        const WindowActivation late;
        QCOMPARE(late.keyWindow(), m_preferences.get());
        QCOMPARE(late.mainWindow(), m_preferences.get());
    }

private:
    std::unique_ptr<QWindow> m_player;
    std::unique_ptr<QWindow> m_preferences;
    std::unique_ptr<QWindow> m_about;
    std::unique_ptr<WindowActivation> m_activation;
    QStringList m_told;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::WindowActivationTest, QGuiApplication)
#include "WindowActivationTest.moc"
