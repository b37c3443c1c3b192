// SPDX-License-Identifier: MIT
#include "widgets/ActivationAfterPopups.h"

#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QWindow>

#include <memory>

using namespace tunedeck;

class ActivationAfterPopupsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnWarning();
        m_activation = std::make_unique<ActivationAfterPopups>();
        m_first = std::make_unique<QLineEdit>();
        m_second = std::make_unique<QLineEdit>();
        show(*m_first);
        show(*m_second);
        activate(m_first.get());
    }

    void cleanup()
    {
        m_second.reset();
        m_first.reset();
        m_activation.reset();
    }

    void aWindowThatBecomesActiveUnderAMenuHasTheFocusOnceTheMenuCloses()
    {
        QMenu menu;
        menu.popup({});
        activate(m_second.get());
        menu.close();
        QCOMPARE(QApplication::activeWindow(), m_second.get());
        QCOMPARE(QApplication::focusWidget(), m_second.get());
    }

    void aWindowThatBecomesInactiveUnderAMenuHasNoFocusOnceTheMenuCloses()
    {
        QMenu menu;
        menu.popup({});
        QWindow other;
        other.show();
        activate(other);
        menu.close();
        QCOMPARE(QApplication::activeWindow(), nullptr);
        QCOMPARE(QApplication::focusWidget(), nullptr);
    }

    void theWindowThatTheMenuBelongsToKeepsTheFocus()
    {
        QMenu menu;
        menu.popup({});
        menu.close();
        QCOMPARE(QApplication::activeWindow(), m_first.get());
        QCOMPARE(QApplication::focusWidget(), m_first.get());
    }

    void nothingChangesBeforeTheLastMenuCloses()
    {
        QMenu menu;
        QMenu *submenu = menu.addMenu(QString());
        menu.popup({});
        submenu->popup({});
        activate(m_second.get());
        submenu->hide();
        QCOMPARE(QApplication::activeWindow(), m_first.get());
        menu.close();
        QCOMPARE(QApplication::activeWindow(), m_second.get());
    }

private:
    static void show(QWidget &window)
    {
        window.setFocus();
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }

    static void activate(QWidget *window) { activate(*window->windowHandle()); }

    static void activate(QWindow &window)
    {
        window.requestActivate();
        QTRY_COMPARE(QGuiApplication::focusWindow(), &window);
    }

    std::unique_ptr<ActivationAfterPopups> m_activation;
    std::unique_ptr<QLineEdit> m_first;
    std::unique_ptr<QLineEdit> m_second;
};

TUNEDECK_TEST(ActivationAfterPopupsTest, QApplication)
#include "ActivationAfterPopupsTest.moc"
