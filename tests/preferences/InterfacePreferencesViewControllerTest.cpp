// SPDX-License-Identifier: MIT
#include "preferences/InterfacePreferencesViewController.h"

#include "PreferencesDesk.h"
#include "preferences/ExplanationLabel.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QCheckBox>
#include <QSignalSpy>

using namespace tunedeck;

namespace {
using BoxOf = QCheckBox &(InterfacePreferencesViewController::*)();

void addSettings()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<BoxOf>("boxOf");
    QTest::newRow("classic") << QStringLiteral("AppearanceClassic")
                             << BoxOf(&InterfacePreferencesViewController::appearanceClassicBox);
    QTest::newRow("dock icon") << QStringLiteral("AppearanceUpdatesDockIcon")
                               << BoxOf(&InterfacePreferencesViewController::appearanceUpdatesDockIconBox);
    QTest::newRow("volume buttons") << QStringLiteral("VolumeButtonsHidden")
                                    << BoxOf(&InterfacePreferencesViewController::volumeButtonsHiddenBox);
}
} // namespace

Q_DECLARE_METATYPE(BoxOf)

class InterfacePreferencesViewControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void aClickWritesTheSetting_data() { addSettings(); }
    void aClickWritesTheSetting()
    {
        QFETCH(const QString, key);
        QFETCH(const BoxOf, boxOf);
        PreferencesDesk desk;
        desk.defaults.setBool(SettingsKey::appearanceClassic, false);
        InterfacePreferencesViewController controller(desk.defaults, true);
        QCheckBox &box = (controller.*boxOf)();
        const bool before = desk.defaults.boolForKey(key);
        QCOMPARE(box.isChecked(), before);
        const QSignalSpy writes(&desk.defaults, &UserDefaults::valueChanged);
        box.click();
        QCOMPARE(desk.defaults.boolForKey(key), !before);
        QCOMPARE(box.isChecked(), !before);
        QCOMPARE(writes.count(), 1);
        QCOMPARE(writes.at(0).at(0).toString(), key);
    }

    void aChangeElsewhereChecksAndUnchecks_data() { addSettings(); }
    void aChangeElsewhereChecksAndUnchecks()
    {
        QFETCH(const QString, key);
        QFETCH(const BoxOf, boxOf);
        PreferencesDesk desk;
        InterfacePreferencesViewController controller(desk.defaults, true);
        for (const bool value : {true, false, true}) {
            desk.defaults.setBool(key, value);
            QCOMPARE((controller.*boxOf)().isChecked(), value);
        }
    }

    void aChangeInAnotherProcessChecksAndUnchecks_data() { addSettings(); }
    void aChangeInAnotherProcessChecksAndUnchecks()
    {
        QFETCH(const QString, key);
        QFETCH(const BoxOf, boxOf);
        PreferencesDesk desk;
        InterfacePreferencesViewController controller(desk.defaults, true);
        const QCheckBox &box = (controller.*boxOf)();
        const bool before = box.isChecked();
        const auto other = desk.otherDefaults();
        other->setBool(key, !before);
        QTRY_COMPARE(box.isChecked(), !before);
        other->setBool(key, before);
        QTRY_COMPARE(box.isChecked(), before);
    }

    void theDockIconIsOnlyChosenWhereTheAppearanceIsNotClassic()
    {
        PreferencesDesk desk;
        InterfacePreferencesViewController controller(desk.defaults, true);
        QVERIFY(!controller.appearanceUpdatesDockIconBox().isEnabled());
        QVERIFY(controller.appearanceUpdatesDockIconBox().isChecked());
        controller.appearanceClassicBox().click();
        QVERIFY(controller.appearanceUpdatesDockIconBox().isEnabled());
        desk.defaults.setBool(SettingsKey::appearanceClassic, true);
        QVERIFY(!controller.appearanceUpdatesDockIconBox().isEnabled());
        QVERIFY(controller.volumeButtonsHiddenBox().isEnabled());
    }

    void theDockIconIsNotOfferedWhereTheDesktopShowsAnother()
    {
        PreferencesDesk desk;
        desk.defaults.setBool(SettingsKey::appearanceClassic, false);
        InterfacePreferencesViewController controller(desk.defaults, false);
        const QCheckBox &box = controller.appearanceUpdatesDockIconBox();
        QVERIFY(!box.isEnabled());
        QCOMPARE(box.accessibleDescription(), QStringLiteral("This desktop always shows the same icon."));
        desk.defaults.setBool(SettingsKey::appearanceClassic, true);
        desk.defaults.setBool(SettingsKey::appearanceClassic, false);
        QVERIFY(!box.isEnabled());
    }

    void explanationsAreSeenAndHeard()
    {
        PreferencesDesk desk;
        InterfacePreferencesViewController controller(desk.defaults, true);
        const QList<ExplanationLabel *> labels = controller.view().findChildren<ExplanationLabel *>();
        QCOMPARE(labels.size(), 3);
        for (const ExplanationLabel *label : labels) {
            const auto *box = label->parentWidget()->findChild<QCheckBox *>();
            QVERIFY(!label->text().isEmpty());
            QCOMPARE(box->accessibleDescription(), label->text());
        }
    }

    void anExplanationIsWeakerThanTheTextOfItsControlInEveryPalette_data()
    {
        QTest::addColumn<QColor>("ground");
        QTest::newRow("light") << QColor(Qt::white);
        QTest::newRow("dark") << QColor(Qt::black);
    }
    void anExplanationIsWeakerThanTheTextOfItsControlInEveryPalette()
    {
        QFETCH(const QColor, ground);
        QWidget window;
        QCheckBox box(&window);
        ExplanationLabel label(QStringLiteral("\u2588\u2588\u2588\u2588\u2588\u2588"), box);
        window.setPalette(QPalette(ground, ground));
        label.adjustSize();
        const QColor full = window.palette().color(QPalette::WindowText);
        const QImage picture = label.grab().toImage();
        const int drawn = picture.pixelColor(picture.rect().center()).value();
        QVERIFY2(drawn > 40 && drawn < 215, qPrintable(QString::number(drawn)));
        QVERIFY(std::abs(drawn - full.value()) < std::abs(drawn - ground.value()));
    }

    void itsControlsAreAccessible()
    {
        PreferencesDesk desk;
        InterfacePreferencesViewController controller(desk.defaults, true);
        verifyControlsAreAccessible(controller.view());
        QCOMPARE(tabOrder(controller.view()),
            QList<QWidget *>({&controller.appearanceClassicBox(), &controller.appearanceUpdatesDockIconBox(),
                &controller.volumeButtonsHiddenBox()}));
    }
};

TUNEDECK_TEST(InterfacePreferencesViewControllerTest, QApplication)
#include "InterfacePreferencesViewControllerTest.moc"
