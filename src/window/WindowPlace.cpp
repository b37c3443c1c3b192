// SPDX-License-Identifier: MIT
#include "window/WindowPlace.h"

#include "widgets/movedInto.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStringList>

#include <algorithm>
#include <array>

namespace tunedeck {

namespace {
/// No desktop is as large.
constexpr int farthest = 100'000;
/// The least part of the window that a hand finds and drags. The pointer can grab the window almost anywhere.
constexpr QSize leastGrip(100, 32);

qint64 squaredDistance(const QPoint &point, const QRect &area)
{
    const qint64 x = point.x() - std::clamp(point.x(), area.left(), area.right());
    const qint64 y = point.y() - std::clamp(point.y(), area.top(), area.bottom());
    return x * x + y * y;
}

const ScreenArea &nearestTo(const QPoint &point, const QList<ScreenArea> &screens)
{
    return *std::ranges::min_element(screens, std::ranges::less{},
        [&point](const ScreenArea &screen) { return squaredDistance(point, screen.geometry); });
}

bool canBeGrabbed(const QRect &frame, const QRect &available)
{
    const QSize visible = frame.intersected(available).size();
    return visible.width() >= leastGrip.width() && visible.height() >= leastGrip.height();
}
} // namespace

ScreenArea ScreenArea::of(const QScreen &screen)
{
    return {screen.name(), screen.geometry(), screen.availableGeometry()};
}

QList<ScreenArea> ScreenArea::all()
{
    QList<ScreenArea> areas;
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens) {
        areas.append(of(*screen));
    }
    return areas;
}

std::optional<WindowPlace> WindowPlace::fromText(const QString &text)
{
    std::array<int, 6> numbers{};
    for (qsizetype i = 0; i < static_cast<qsizetype>(numbers.size()); ++i) {
        bool isNumber = false;
        int &number = numbers.at(static_cast<std::size_t>(i));
        number = text.section(u' ', i, i).toInt(&isNumber);
        if (!isNumber || number < -farthest || number > farthest) {
            return std::nullopt;
        }
    }
    const auto [x, y, screenX, screenY, screenWidth, screenHeight] = numbers;
    return WindowPlace{{x, y}, text.section(u' ', static_cast<qsizetype>(numbers.size())),
        {screenX, screenY, screenWidth, screenHeight}};
}

QString WindowPlace::text() const
{
    return QStringLiteral("%1 %2 %3 %4 %5 %6 %7")
        .arg(QString::number(topLeft.x()), QString::number(topLeft.y()), QString::number(screen.x()),
            QString::number(screen.y()), QString::number(screen.width()), QString::number(screen.height()), screenName);
}

QPoint WindowPlace::topLeftOn(const QList<ScreenArea> &screens, QSize size) const
{
    const auto own = std::ranges::find(screens, screenName, &ScreenArea::name);
    if (own == screens.end()) {
        const QRect frame(topLeft, size);
        return movedInto(nearestTo(frame.center(), screens).available, frame);
    }
    const QRect frame(topLeft - screen.topLeft() + own->geometry.topLeft(), size);
    const bool isUnchanged = own->geometry.size() == screen.size();
    return isUnchanged && canBeGrabbed(frame, own->available) ? frame.topLeft() : movedInto(own->available, frame);
}

} // namespace tunedeck
