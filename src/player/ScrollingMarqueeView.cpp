// SPDX-License-Identifier: MIT
#include "player/ScrollingMarqueeView.h"

#include "skin/drawing/PixelFont.h"
#include "widgets/announce.h"
#include "widgets/canBeSeen.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QBackingStore>
#include <QMouseEvent>
#include <QPaintEngine>
#include <QPainter>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr double fontPixels = 10.5;
/// The part of the height that fades out at the top and at the bottom.
constexpr double verticalFade = 0.12;
constexpr std::chrono::nanoseconds shortestFrame = 16ms;
constexpr std::chrono::nanoseconds framePrecision = 500us;

/// The alpha at `position` of a line that is `length` long and fades over `inset` at both ends.
double fade(double position, double inset, double length)
{
    return inset > 0 ? std::clamp(std::min(position, length - position) / inset, 0.0, 1.0) : 1.0;
}

int devicePixels(double points, double scale)
{
    return static_cast<int>(std::ceil(points * scale));
}

/// The position of a label's picture: on whole device pixels, which keep its text crisp.
QPoint devicePosition(const MarqueeLabel &label, double scale)
{
    const double textX = label.frame.x() + (label.frame.width() - label.textWidth) / 2;
    return {static_cast<int>(std::lround((textX - MarqueeText::overhang) * scale)),
        static_cast<int>(std::lround(label.frame.y() * scale))};
}

/// Screen readers speak a notification by themselves, and a label only on request.
class AccessibleMarquee : public QAccessibleWidget {
public:
    explicit AccessibleMarquee(QLabel *marquee)
        : QAccessibleWidget(marquee, QAccessible::Notification)
    {
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? qobject_cast<QLabel *>(widget())->text() : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface *accessibleMarquee(const QString &, QObject *object)
{
    auto *marquee = qobject_cast<ScrollingMarqueeView *>(object);
    return marquee ? new AccessibleMarquee(marquee) : nullptr;
}
} // namespace

ScrollingMarqueeView::ScrollingMarqueeView(QWidget *parent)
    : ScrollingMarqueeView(std::chrono::steady_clock::now, parent)
{
}

ScrollingMarqueeView::ScrollingMarqueeView(Clock clock, QWidget *parent)
    : QLabel(parent)
    , m_clock(std::move(clock))
    , m_timeline([this](const QString &text) { return MarqueeText::width(text, resolvedFont()); },
          [this](const QString &text, double width) { return MarqueeText::elided(text, resolvedFont(), width); })
    , m_timer(new QTimer(this))
{
    // Qt keeps each factory once, however often it is installed.
    QAccessible::installFactory(accessibleMarquee);
    setTextFormat(Qt::PlainText);
    QFont bold = pixelFont(humanistSans(), fontPixels, *this);
    bold.setBold(true);
    setFont(bold);
    m_timer->setSingleShot(true);
    m_timer->setTimerType(Qt::PreciseTimer);
    connect(m_timer, &QTimer::timeout, this, &ScrollingMarqueeView::refresh);
    m_announcement.setSingleShot(true);
    m_announcement.setInterval(0);
    connect(&m_announcement, &QTimer::timeout, this, &ScrollingMarqueeView::announce);
    restart();
}

void ScrollingMarqueeView::setDisplayStrings(const QStringList &strings)
{
    QStringList shown;
    for (const QString &string : strings) {
        shown.append(MarqueeText::oneLine(string, resolvedFont()));
    }
    if (shown == displayStrings()) {
        return;
    }
    m_texts.clear();
    m_timeline.setDisplayStrings(shown, m_clock());
    m_announcement.start();
    refresh();
}

void ScrollingMarqueeView::announce()
{
    setText(displayStrings().join(QStringLiteral(", ")));
    // A user at work in another window must not be interrupted.
    if (isActiveWindow() && !text().isEmpty()) {
        tunedeck::announce(*this, text());
    }
}

void ScrollingMarqueeView::setFadeInsetInPoints(double inset)
{
    m_fadeInsetInPoints = std::max(0.0, inset);
    m_mask = {};
    update();
}

void ScrollingMarqueeView::setLabelAdvancesOnClick(bool advances)
{
    m_labelAdvancesOnClick = advances;
}

void ScrollingMarqueeView::setMotionReduced(bool isReduced)
{
    m_timeline.setMotionReduced(isReduced, m_clock());
    refresh();
}

void ScrollingMarqueeView::setDark(bool isDark)
{
    if (isDark == m_isDark) {
        return;
    }
    m_isDark = isDark;
    m_texts.clear();
    update();
}

void ScrollingMarqueeView::setHighContrast(bool isHigh)
{
    if (isHigh == m_isHighContrast) {
        return;
    }
    m_isHighContrast = isHigh;
    m_texts.clear();
    update();
}

MarqueeInk ScrollingMarqueeView::ink() const
{
    if (m_isHighContrast) {
        return MarqueeInk::Full;
    }
    return m_isDark ? MarqueeInk::Light : MarqueeInk::Dark;
}

void ScrollingMarqueeView::setPictureMover(std::unique_ptr<PictureMover> mover)
{
    takeLabelsBack();
    m_mover = std::move(mover);
}

bool ScrollingMarqueeView::eventFilter(QObject *watched, QEvent *event)
{
    // The window system covers and uncovers a window, as on another workspace, without hiding its widgets.
    if (watched == m_watchedWindow && event->type() == QEvent::Expose) {
        refresh();
    }
    return QLabel::eventFilter(watched, event);
}

void ScrollingMarqueeView::showEvent(QShowEvent *event)
{
    QLabel::showEvent(event);
    if (m_watchedWindow) {
        m_watchedWindow->removeEventFilter(this);
        m_watchedWindow->disconnect(this);
    }
    m_watchedWindow = window()->windowHandle();
    if (m_watchedWindow) {
        m_watchedWindow->installEventFilter(this);
        connect(m_watchedWindow, &QWindow::windowStateChanged, this, &ScrollingMarqueeView::refresh);
    }
    refresh();
}

void ScrollingMarqueeView::hideEvent(QHideEvent *event)
{
    QLabel::hideEvent(event);
    m_timer->stop();
    takeLabelsBack();
}

void ScrollingMarqueeView::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    if (event->oldSize().height() != height()) {
        m_texts.clear();
    }
    restart();
}

void ScrollingMarqueeView::mousePressEvent(QMouseEvent *event)
{
    QLabel::mousePressEvent(event);
    m_pressPosition = event->globalPosition().toPoint();
}

void ScrollingMarqueeView::mouseReleaseEvent(QMouseEvent *event)
{
    QLabel::mouseReleaseEvent(event);
    const bool isInside = rect().contains(event->position().toPoint());
    // A user who drags the window by the display does not click on it.
    const QPoint way = event->globalPosition().toPoint() - m_pressPosition;
    const bool isDrag = way.manhattanLength() >= QApplication::startDragDistance();
    if (!m_labelAdvancesOnClick || event->button() != Qt::LeftButton || !isInside || isDrag) {
        return;
    }
    event->accept();
    m_timeline.advance(m_clock());
    refresh();
}

void ScrollingMarqueeView::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const QTransform toDevice = painter.deviceTransform();
    const double scale = toDevice.m11();
    // At a fractional scale the view's corner is between device pixels. An offset of half a pixel would blur the text.
    const QPointF corner = toDevice.map(QPointF());
    painter.translate((QPointF(corner.toPoint()) - corner) / scale);
    painter.scale(1 / scale, 1 / scale);

    const QRect whole(0, 0, devicePixels(width(), scale), devicePixels(height(), scale));
    if (m_isMoverInUse && isForWindow(painter) && placeLabels(whole.translated(corner.toPoint()), scale)) {
        return;
    }
    const QRect unfaded = whole.marginsRemoved(fadeMargins(scale));
    const QRect dirty = painter.transform().inverted().mapRect(QRectF(event->rect())).toAlignedRect();
    for (const QRect &edge : QRegion(dirty).intersected(whole).subtracted(unfaded)) {
        if (hasLabels(edge, scale)) {
            painter.drawImage(edge.topLeft(), fadedLabels(edge, scale));
        }
    }
    if (!unfaded.isEmpty()) {
        painter.setClipRect(unfaded);
        drawLabels(painter, scale);
    }
}

bool ScrollingMarqueeView::placeLabels(const QRect &field, double scale)
{
    if (!m_mover->place(*this, field, mask(scale), placedPictures(scale))) {
        setPictureMover({});
    }
    return m_isMoverInUse;
}

void ScrollingMarqueeView::takeLabelsBack()
{
    if (std::exchange(m_isMoverInUse, false)) {
        m_mover->remove();
        update();
    }
}

bool ScrollingMarqueeView::isForWindow(const QPainter &painter) const
{
    QBackingStore *const store = window()->backingStore();
    return store && painter.paintEngine()->paintDevice() == store->paintDevice();
}

std::vector<PlacedPicture> ScrollingMarqueeView::placedPictures(double scale)
{
    std::vector<PlacedPicture> pictures;
    for (const MarqueeLabel &label : m_labels) {
        const MarqueeText &text = drawnText(label.text, scale);
        pictures.push_back({text.picture(), text.inkedRows(), devicePosition(label, scale)});
    }
    return pictures;
}

void ScrollingMarqueeView::drawLabels(QPainter &painter, double scale)
{
    for (const MarqueeLabel &label : m_labels) {
        const QPixmap &picture = drawnText(label.text, scale).picture();
        painter.drawPixmap(QRect(devicePosition(label, scale), picture.size()), picture);
    }
}

bool ScrollingMarqueeView::hasLabels(const QRect &part, double scale)
{
    return std::any_of(m_labels.begin(), m_labels.end(), [this, &part, scale](const MarqueeLabel &label) {
        return drawnText(label.text, scale).inkedRows().translated(devicePosition(label, scale)).intersects(part);
    });
}

QImage ScrollingMarqueeView::fadedLabels(const QRect &part, double scale)
{
    QImage image(part.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.translate(-part.topLeft());
    drawLabels(painter, scale);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(part, mask(scale), part);
    return image;
}

QMargins ScrollingMarqueeView::fadeMargins(double scale) const
{
    const int side = devicePixels(m_fadeInsetInPoints, scale);
    const int edge = devicePixels(verticalFade * height(), scale);
    return {side, edge, side, edge};
}

/// MarqueeText measures without a widget, so the font must carry the view's resolution.
QFont ScrollingMarqueeView::resolvedFont() const
{
    return {font(), this};
}

bool ScrollingMarqueeView::canBeSeen() const
{
    return isVisible() && m_watchedWindow && tunedeck::canBeSeen(*m_watchedWindow);
}

void ScrollingMarqueeView::restart()
{
    m_mask = {};
    m_timeline.layOut(size(), m_clock());
    refresh();
}

void ScrollingMarqueeView::refresh()
{
    const MarqueeTimeline::TimePoint now = m_clock();
    m_timeline.proceedTo(now);
    std::vector<MarqueeLabel> labels = m_timeline.labels(now);
    if (wouldLookDifferent(labels, devicePixelRatioF())) {
        const QRect before = markedRect();
        m_labels = std::move(labels);
        showLabels(before);
        forgetWhatIsNotShown();
    }
    if (canBeSeen()) {
        scheduleRefresh(now);
    } else {
        m_timer->stop();
    }
}

void ScrollingMarqueeView::showLabels(const QRect &before)
{
    if (m_isMoverInUse) {
        if (!m_mover->move(placedPictures(devicePixelRatioF()))) {
            setPictureMover({});
        }
    } else if (m_mover && canBeSeen() && m_timeline.isMoving(m_clock())) {
        // The window still shows the labels: it is painted again without them, and they lie in front of it.
        m_isMoverInUse = true;
        update();
    } else {
        update(before | markedRect());
    }
}

/// Frees memory: a text from a player can be as wide as many windows.
void ScrollingMarqueeView::forgetWhatIsNotShown()
{
    m_texts.removeIf([this](QHash<QString, MarqueeText>::iterator entry) {
        return std::none_of(m_labels.begin(), m_labels.end(),
            [&entry](const MarqueeLabel &label) { return label.text == entry.key(); });
    });
}

void ScrollingMarqueeView::scheduleRefresh(MarqueeTimeline::TimePoint now)
{
    const std::optional<MarqueeTimeline::TimePoint> change = m_timeline.nextChange(now);
    if (!change) {
        m_timer->stop();
        return;
    }
    const std::chrono::nanoseconds wait =
        m_timeline.isMoving(now) ? untilNextFrame(now, *change) : std::chrono::nanoseconds(*change - now);
    m_timer->start(std::chrono::ceil<std::chrono::milliseconds>(wait));
}

/// The time until the labels, which move until `end`, are on other device pixels. They move one way, so a picture that
/// has changed stays different. Most pictures last a few frames only, so the search begins near.
std::chrono::nanoseconds ScrollingMarqueeView::untilNextFrame(
    MarqueeTimeline::TimePoint now, MarqueeTimeline::TimePoint end) const
{
    const double scale = devicePixelRatioF();
    const auto isDifferent = [this, scale](MarqueeTimeline::TimePoint then) {
        return wouldLookDifferent(m_timeline.labels(then), scale);
    };
    MarqueeTimeline::TimePoint same = now;
    MarqueeTimeline::TimePoint different = now + shortestFrame;
    while (different < end && !isDifferent(different)) {
        same = different;
        different += different - now;
    }
    different = std::min(different, end);
    while (same > now && different - same > framePrecision) {
        const MarqueeTimeline::TimePoint between = same + (different - same) / 2;
        (isDifferent(between) ? different : same) = between;
    }
    return std::max(shortestFrame, std::chrono::nanoseconds(different - now));
}

bool ScrollingMarqueeView::wouldLookDifferent(const std::vector<MarqueeLabel> &labels, double scale) const
{
    const QRectF field(rect());
    return !std::equal(labels.begin(), labels.end(), m_labels.begin(), m_labels.end(),
        [scale, &field](const MarqueeLabel &a, const MarqueeLabel &b) {
            const bool isUnseen = !a.frame.intersects(field) && !b.frame.intersects(field);
            return a.text == b.text && (isUnseen || devicePosition(a, scale) == devicePosition(b, scale));
        });
}

const MarqueeText &ScrollingMarqueeView::drawnText(const QString &text, double scale)
{
    MarqueeText &drawn = m_texts[text];
    if (drawn.scale() != scale) {
        drawn = MarqueeText(text, resolvedFont(), height(), scale, ink());
    }
    return drawn;
}

QRect ScrollingMarqueeView::markedRect() const
{
    const double scale = devicePixelRatioF();
    QRect marked;
    for (const MarqueeLabel &label : m_labels) {
        const auto known = m_texts.constFind(label.text);
        if (known == m_texts.cend() || known->scale() != scale) {
            return rect();
        }
        const QRect ink = known->inkedRows().translated(devicePosition(label, scale));
        // At a fractional scale the view's corner may be within a pixel; painting moves it to the pixel's edge.
        const QRectF points(QPointF(ink.topLeft() - QPoint(1, 1)) / scale, QSizeF(ink.size() + QSize(2, 2)) / scale);
        marked |= points.toAlignedRect();
    }
    return marked & rect();
}

const QImage &ScrollingMarqueeView::mask(double scale)
{
    const QSize size(devicePixels(width(), scale), devicePixels(height(), scale));
    if (m_mask.size() == size) {
        return m_mask;
    }
    m_mask = QImage(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y) {
        const double vertical = fade((y + 0.5) / scale, verticalFade * height(), height());
        auto *line = reinterpret_cast<QRgb *>(m_mask.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const double alpha = vertical * fade((x + 0.5) / scale, m_fadeInsetInPoints, width());
            line[x] = qRgba(0, 0, 0, static_cast<int>(std::lround(255 * alpha)));
        }
    }
    return m_mask;
}

} // namespace tunedeck
