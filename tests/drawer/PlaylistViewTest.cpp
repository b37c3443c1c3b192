// SPDX-License-Identifier: MIT
#include "drawer/PlaylistView.h"

#include "skin/views/EngravedLabel.h"
#include "skin/views/MetalButton.h"
#include "skin/views/MetalPopupButton.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

#include <initializer_list>

using namespace tunedeck;

class PlaylistViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void itsControlsStandInOneRowAtEveryWidth()
    {
        const SkinDesk desk;
        PlaylistView view(desk.environment);
        view.show();
        for (const int width : {350, 450, 550}) {
            view.resize(width, 64);
            int right = 0;
            for (const QWidget *control : std::initializer_list<QWidget *>{&view.playlistLabel(),
                     &view.playlistPicker(), &view.doneButton(), &view.shuffleButton(), &view.repeatButton()}) {
                // The picker's margin is empty, and may lie over the caption's end.
                QVERIFY(control->geometry().left() >= right - 9);
                QVERIFY(control->width() > 30);
                right = control->geometry().right();
            }
            QVERIFY(right < width - 6);
            QVERIFY(view.playlistPicker().width() >= 100);
        }
    }

    void itsControlsHaveNames()
    {
        const SkinDesk desk;
        PlaylistView view(desk.environment);
        for (const QWidget *control :
            std::initializer_list<QWidget *>{&view.playlistPicker(), &view.shuffleButton(), &view.repeatButton()}) {
            QVERIFY(!control->accessibleName().isEmpty());
        }
        QVERIFY(!view.doneButton().text().isEmpty());
        QCOMPARE(view.playlistLabel().buddy(), &view.playlistPicker());
    }
};

TUNEDECK_TEST(PlaylistViewTest, QApplication)
#include "PlaylistViewTest.moc"
