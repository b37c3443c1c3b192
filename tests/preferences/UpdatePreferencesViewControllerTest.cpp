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

namespace {
QStringList texts(UpdatePreferencesViewController &controller)
{
    QStringList texts;
    for (const QLabel *label : controller.view().findChildren<QLabel *>()) {
        texts.append(label->text());
    }
    return texts;
}
} // namespace

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
        QVERIFY(texts(controller).contains(QStringLiteral("Tunedeck ") + *bundleInfo(u"CFBundleShortVersionString")));
    }

    void itPromisesOnlyWhatThisCopyDoes()
    {
        CountingUpdater updater;
        const QString promise =
            QStringLiteral("Tunedeck looks for a newer version only when you ask. You choose whether to download it.");
        UpdatePreferencesViewController looking(updater);
        QVERIFY(texts(looking).contains(promise));

        updater.looks = false;
        UpdatePreferencesViewController kept(updater);
        QVERIFY(!texts(kept).contains(promise));
        QVERIFY(texts(kept).contains(QStringLiteral(
            "This copy of Tunedeck does not look for new versions itself. If it came with your system, new versions "
            "come with the system's updates. If you built it yourself, build it again from newer sources.")));
        kept.updateButton().click();
        QCOMPARE(updater.checks, 1);
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
