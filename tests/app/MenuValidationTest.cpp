// SPDX-License-Identifier: MIT
#include "app/MenuValidation.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QMenu>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace tunedeck;

class MenuValidationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void anItemIsEnabledWhileAllItsValidatorsEnableIt()
    {
        bool first = true;
        bool second = true;
        MenuValidation validation;
        QAction item;
        validation.add(&item, {[&first](QAction &) { return first; }, [&second](QAction &) { return second; }});
        validation.validate();
        QVERIFY(item.isEnabled());
        first = false;
        validation.validate();
        QVERIFY(!item.isEnabled());
        first = true;
        second = false;
        validation.validate();
        QVERIFY(!item.isEnabled());
        second = true;
        validation.validate();
        QVERIFY(item.isEnabled());
    }

    void aMenuIsValidatedBeforeItShows()
    {
        bool enabled = false;
        MenuValidation validation;
        QMenu menu;
        QAction *item = menu.addAction(QStringLiteral("item"));
        validation.add(item, {[&enabled](QAction &) { return enabled; }});
        validation.validateBeforeShowing(menu);
        Q_EMIT menu.aboutToShow();
        QVERIFY(!item->isEnabled());
        enabled = true;
        Q_EMIT menu.aboutToShow();
        QVERIFY(item->isEnabled());
    }

    void anItemThatIsGoneIsPassedOver()
    {
        int asked = 0;
        MenuValidation validation;
        auto item = std::make_unique<QAction>();
        validation.add(item.get(), {[&asked](QAction &) { return ++asked > 0; }});
        validation.validate();
        item.reset();
        validation.validate();
        QCOMPARE(asked, 1);
    }
};

TUNEDECK_TEST(MenuValidationTest, QApplication)
#include "MenuValidationTest.moc"
