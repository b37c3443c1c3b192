// SPDX-License-Identifier: MIT
#include "player/TimeLabelMenu.h"

#include "music/MenuItemIdentifier.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

namespace tunedeck {

class TimeLabelMenuTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { tunedeck::failOnWarning(); }

    void itOffersTheRemainingAndTheTotalTime()
    {
        QLabel label;
        const TimeLabelMenu menu(label, [](QAction &) { return true; });
        const QList<QAction *> items = menu.actions();
        QCOMPARE(items.size(), 2);
        QCOMPARE(items[0]->text(), QStringLiteral("Remaining Time"));
        QCOMPARE(items[0]->objectName(), MenuItemIdentifier::remainingTime);
        QCOMPARE(items[1]->text(), QStringLiteral("Duration"));
        QCOMPARE(items[1]->objectName(), MenuItemIdentifier::totalTime);
        for (const QAction *item : items) {
            QVERIFY(item->isCheckable());
        }
    }

    void eachItemIsValidatedBeforeItShows()
    {
        QLabel label;
        TimeLabelMenu menu(label, [](QAction &item) {
            item.setChecked(true);
            return item.objectName() == MenuItemIdentifier::totalTime;
        });
        Q_EMIT menu.aboutToShow();
        const QList<QAction *> items = menu.actions();
        QVERIFY(items[0]->isChecked());
        QVERIFY(items[1]->isChecked());
        QVERIFY(!items[0]->isEnabled());
        QVERIFY(items[1]->isEnabled());
    }

    void theItemThatTheUserChoosesIsReported()
    {
        QLabel label;
        TimeLabelMenu menu(label, [](QAction &) { return true; });
        QStringList chosen;
        connect(&menu, &QMenu::triggered, this, [&](const QAction *item) { chosen.append(item->objectName()); });
        menu.actions().at(1)->trigger();
        menu.actions().at(0)->trigger();
        QCOMPARE(chosen, (QStringList{MenuItemIdentifier::totalTime, MenuItemIdentifier::remainingTime}));
    }

    void itPopsUpWhereTheLabelIsAskedForAMenu()
    {
        QLabel label;
        label.resize(40, 12);
        label.show();
        TimeLabelMenu menu(label, [](QAction &) { return true; });
        QVERIFY(!menu.isVisible());
        Q_EMIT label.customContextMenuRequested(QPoint(5, 5));
        QVERIFY(menu.isVisible());
        QCOMPARE(menu.pos(), label.mapToGlobal(QPoint(5, 5)));
        menu.close();
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::TimeLabelMenuTest, QApplication)
#include "TimeLabelMenuTest.moc"
