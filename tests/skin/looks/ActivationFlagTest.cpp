// SPDX-License-Identifier: MIT
#include "skin/looks/ActivationFlag.h"

#include "platform/WindowActivation.h"
#include "skin/FocusedWindow.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

namespace tunedeck {

class ActivationFlagTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_panel.setFlags(Qt::Dialog); }

    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        focus(nullptr);
    }

    void itIsSetWhileAnyWindowIsMain()
    {
        QSignalSpy changed(&m_isMain, &ActivationFlag::changed);
        QVERIFY(!m_isMain.isSet());
        focus(&m_window);
        QVERIFY(m_isMain.isSet());
        QCOMPARE(changed.count(), 1);
        focus(nullptr);
        QVERIFY(!m_isMain.isSet());
        QCOMPARE(changed.count(), 2);
    }

    void fromOneWindowToAnotherItIsFalseForAMoment()
    {
        focus(&m_window);
        const auto record =
            connect(&m_isMain, &ActivationFlag::changed, this, [this] { m_told.append(m_isMain.isSet()); });
        m_told.clear();
        focus(&m_otherWindow);
        QCOMPARE(m_told, QList<bool>({false, true}));
        disconnect(record);
    }

    void aPanelIsKeyAndLeavesTheMainWindowMain()
    {
        focus(&m_window);
        QSignalSpy mainChanged(&m_isMain, &ActivationFlag::changed);
        QSignalSpy keyChanged(&m_isKey, &ActivationFlag::changed);
        focus(&m_panel);
        QVERIFY(m_isMain.isSet());
        QVERIFY(m_isKey.isSet());
        QCOMPARE(mainChanged.count(), 0);
        QCOMPARE(keyChanged.count(), 2);
    }

    void aNewOneIsNotSetUntilItIsTold()
    {
        focus(&m_window);
        const ActivationFlag late(m_activation, ActivationFlag::Status::Main);
        QVERIFY(!late.isSet());
        focus(&m_otherWindow);
        QVERIFY(late.isSet());
    }

    void aNewOneIsToldWhatItHasMissed()
    {
        focus(&m_panel);
        const ActivationFlag key(m_activation, ActivationFlag::Status::Key);
        focus(&m_window);
        const ActivationFlag late(m_activation, ActivationFlag::Status::Main);
        const ActivationFlag tooLate(m_activation, ActivationFlag::Status::Main);
        QTRY_VERIFY(late.isSet());
        QVERIFY(key.isSet());
        focus(nullptr);
        QVERIFY(!late.isSet());
        QVERIFY(!tooLate.isSet());
    }

    void aNewOneIsNotToldWhatIsNoMore()
    {
        focus(&m_window);
        const ActivationFlag late(m_activation, ActivationFlag::Status::Main);
        focus(nullptr);
        QCoreApplication::processEvents();
        QVERIFY(!late.isSet());
    }

    void whatItWasAlreadyIsNotTold()
    {
        focus(&m_window);
        ActivationFlag late(m_activation, ActivationFlag::Status::Main);
        QSignalSpy changed(&late, &ActivationFlag::changed);
        focus(nullptr);
        QCOMPARE(changed.count(), 0);
    }

private:
    QWindow m_window;
    QWindow m_otherWindow;
    QWindow m_panel;
    WindowActivation m_activation;
    ActivationFlag m_isMain{m_activation, ActivationFlag::Status::Main};
    ActivationFlag m_isKey{m_activation, ActivationFlag::Status::Key};
    QList<bool> m_told;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::ActivationFlagTest, QApplication)
#include "ActivationFlagTest.moc"
