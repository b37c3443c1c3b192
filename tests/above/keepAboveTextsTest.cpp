// SPDX-License-Identifier: MIT
#include "above/keepAboveTexts.h"

#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QSet>
#include <QTest>

#include <array>

using namespace tunedeck;

namespace {
constexpr std::array ways{AboveWay::Window, AboveWay::KWin, AboveWay::Sway, AboveWay::Hyprland, AboveWay::Restart,
    AboveWay::Refused, AboveWay::Sandbox, AboveWay::None};
} // namespace

class keepAboveTextsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void theTitleIsPlainWhereTheWindowIsReallyAbove()
    {
        QCOMPARE(keepAboveTitle(AboveWay::Window), QStringLiteral("Keep Above All Other Windows"));
        QCOMPARE(keepAboveTitle(AboveWay::KWin), QStringLiteral("Keep Above All Other Windows"));
    }

    void everyOtherTitleSaysWhatIsDifferent()
    {
        QSet<QString> titles;
        for (const AboveWay way : ways) {
            QVERIFY(keepAboveTitle(way).startsWith(QStringLiteral("Keep Above All Other Windows")));
            titles.insert(keepAboveTitle(way));
        }
        QCOMPARE(titles.size(), 7);
        QCOMPARE(keepAboveTitle(AboveWay::Sway),
            QStringLiteral("Keep Above All Other Windows (Floating, on Every Workspace)"));
    }

    void theToolTipSaysWhoDoesIt()
    {
        QCOMPARE(keepAboveToolTip(AboveWay::Window), QString());
        QCOMPARE(keepAboveToolTip(AboveWay::KWin), QStringLiteral("KWin does this for Tunedeck."));
        QVERIFY(keepAboveToolTip(AboveWay::Restart).contains(QStringLiteral("XWayland")));
    }

    void onTheCommandLineWhatTakesARestartIsRefused()
    {
        for (const AboveWay way : ways) {
            const bool isRefused = way == AboveWay::Restart || !isPossible(way);
            QCOMPARE(keepAboveObstacle(way).isEmpty(), !isRefused);
        }
    }
};

TUNEDECK_TEST(keepAboveTextsTest, QCoreApplication)
#include "keepAboveTextsTest.moc"
