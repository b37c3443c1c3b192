// SPDX-License-Identifier: MIT
#include "preferences/UpdatePreferencesViewController.h"

#include "PreferencesDesk.h"
#include "platform/BundleInfo.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

using namespace tunedeck;

class UpdatePreferencesViewControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void theButtonChecksForUpdates()
    {
        CountingUpdater updater;
        UpdatePreferencesViewController controller(updater);
        QCOMPARE(&controller.updater(), &updater);
        QCOMPARE(controller.updateButton().text(), QStringLiteral("Check for Updates…"));
        QCOMPARE(updater.checks, 0);
        controller.updateButton().click();
        controller.updateButton().click();
        QCOMPARE(updater.checks, 2);
    }

    void theHelpButtonOpensThePageAboutUpdates()
    {
        CountingUpdater updater;
        UpdatePreferencesViewController controller(updater);
        const QSignalSpy requests(&controller, &PreferencesPaneController::helpRequested);
        controller.helpButton().click();
        QCOMPARE(requests.count(), 1);
        QCOMPARE(requests.at(0).at(0).toString(), QStringLiteral("KeepingUpToDate"));
        QCOMPARE(requests.at(0).at(1).toString(), bundleInfo(u"CFBundleHelpBookName"));
        QCOMPARE(updater.checks, 0);
    }

    void itTellsTheVersionThatRuns()
    {
        CountingUpdater updater;
        UpdatePreferencesViewController controller(updater);
        QStringList texts;
        for (const QLabel *label : controller.view().findChildren<QLabel *>()) {
            texts.append(label->text());
        }
        QVERIFY(texts.contains(QStringLiteral("Tunedeck ") + *bundleInfo(u"CFBundleShortVersionString")));
    }

    void itsControlsAreAccessible()
    {
        CountingUpdater updater;
        UpdatePreferencesViewController controller(updater);
        verifyControlsAreAccessible(controller.view());
        QCOMPARE(tabOrder(controller.view()), QList<QWidget *>({&controller.updateButton(), &controller.helpButton()}));
    }
};

TUNEDECK_TEST(UpdatePreferencesViewControllerTest, QApplication)
#include "UpdatePreferencesViewControllerTest.moc"
