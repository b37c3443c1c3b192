// SPDX-License-Identifier: MIT
// Prints, in milliseconds, the medians of what it takes to paint the player: the whole of it for the first time, the
// whole of it again, one frame of its marquee, and the first frame of the longest title it can have, in the dark. The
// scale is the platform's (QT_SCALE_FACTOR).
#include "platform/Appearance.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "player/LcdView.h"
#include "player/PlayerView.h"
#include "player/ScrollingMarqueeView.h"
#include "skin/looks/SkinEnvironment.h"

#include <QApplication>
#include <QDBusConnection>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

using namespace tunedeck;

namespace {
constexpr int firstPaints = 15;
constexpr int repaints = 300;

template <typename Paint> double median(int rounds, Paint paint)
{
    std::vector<double> milliseconds(static_cast<std::size_t>(rounds));
    std::generate(milliseconds.begin(), milliseconds.end(), paint);
    const auto middle = milliseconds.begin() + rounds / 2;
    std::nth_element(milliseconds.begin(), middle, milliseconds.end());
    return *middle;
}

template <typename Paint> double timed(Paint paint)
{
    QElapsedTimer timer;
    timer.start();
    paint();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

constexpr int longestTitle = 1000; // characters, of the widest

std::unique_ptr<PlayerView> shownPlayer(const SkinEnvironment &environment, const QString &title = QString(200, u'm'))
{
    auto view = std::make_unique<PlayerView>(environment);
    view->setAttribute(Qt::WA_TranslucentBackground);
    view->resize(450, 64);
    view->lcd().trackInfoLabel().setDisplayStrings({title});
    view->show();
    return view;
}
} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    const QTemporaryDir folder;
    UserDefaults defaults(folder.filePath(QStringLiteral("settings")));
    Appearance appearance(defaults, QDBusConnection(QStringLiteral("none")));
    appearance.setApplicationAppearance(AppearanceName::Aqua);
    const WindowActivation activation;
    const SkinEnvironment environment{defaults, appearance, activation};

    const double first = median(firstPaints, [&environment] {
        const std::unique_ptr<PlayerView> view = shownPlayer(environment);
        return timed([&view] { (void)view->grab(); });
    });
    const std::unique_ptr<PlayerView> view = shownPlayer(environment);
    QApplication::processEvents();
    const double again = median(repaints, [&view] { return timed([&view] { view->repaint(); }); });
    QWidget &marquee = view->lcd().trackInfoLabel();
    const double frame = median(repaints, [&marquee] { return timed([&marquee] { marquee.repaint(); }); });
    appearance.setApplicationAppearance(AppearanceName::DarkAqua);
    const double longTitle = median(firstPaints, [&environment] {
        const std::unique_ptr<PlayerView> player = shownPlayer(environment, QString(longestTitle, u'W'));
        QWidget &label = player->lcd().trackInfoLabel();
        return timed([&label] { (void)label.grab(); });
    });
    std::printf("%f %f %f %f\n", first, again, frame, longTitle);
    return 0;
}
