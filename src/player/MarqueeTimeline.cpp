// SPDX-License-Identifier: MIT
#include "player/MarqueeTimeline.h"

#include <QEasingCurve>

#include <algorithm>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;
using Seconds = std::chrono::duration<double>;

constexpr auto dwell = 4s;
constexpr auto rollDuration = 1667ms;

double easedOut(double progress)
{
    static const QEasingCurve curve = [] {
        QEasingCurve bezier(QEasingCurve::BezierSpline);
        bezier.addCubicBezierSegment({0, 0}, {0.58, 1}, {1, 1});
        return bezier;
    }();
    return curve.valueForProgress(progress);
}

/// The spaces are the gap between the ticker's repeats.
QString padded(const QString &text)
{
    return u' ' + text + QStringLiteral("    ");
}
} // namespace

MarqueeTimeline::MarqueeTimeline(TextWidth textWidth, ElidedText elidedText)
    : m_textWidth(std::move(textWidth))
    , m_elidedText(std::move(elidedText))
{
}

void MarqueeTimeline::setDisplayStrings(const QStringList &strings, TimePoint now)
{
    if (strings == m_displayStrings) {
        return;
    }
    m_displayStrings = strings;
    m_displayStringIndex = 0;
    restart(now);
}

void MarqueeTimeline::layOut(const QSizeF &fieldSize, TimePoint now)
{
    proceedTo(now);
    m_fieldSize = fieldSize;
    restart(now);
}

void MarqueeTimeline::setMotionReduced(bool isReduced, TimePoint now)
{
    if (isReduced == m_isMotionReduced) {
        return;
    }
    proceedTo(now);
    m_isMotionReduced = isReduced;
    restart(now);
}

void MarqueeTimeline::advance(TimePoint now)
{
    proceedTo(now);
    if (m_displayStrings.isEmpty()) {
        return;
    }
    // This matters only if all strings are equal: then the rotated list changes nothing.
    if (isMoving(now)) {
        ++m_displayStringIndex;
    }
    QStringList rotated = m_displayStrings;
    if (rotated.size() == 1) {
        setDisplayStrings({}, now);
    } else {
        rotated.append(rotated.takeFirst());
    }
    setDisplayStrings(rotated, now);
}

void MarqueeTimeline::proceedTo(TimePoint now)
{
    while (m_motion != Motion::None && now >= m_end) {
        finishMotion();
    }
}

std::vector<MarqueeLabel> MarqueeTimeline::labels(TimePoint now) const
{
    std::vector<MarqueeLabel> result;
    for (const std::optional<MarqueeLabel> &label : {m_currentLabel, m_nextLabel}) {
        if (label) {
            result.push_back({label->text, label->textWidth, label->frame.translated(-travelled(*label, now))});
        }
    }
    return result;
}

bool MarqueeTimeline::isMoving(TimePoint now) const
{
    return m_motion != Motion::None && now >= m_begin && now < m_end;
}

std::optional<MarqueeTimeline::TimePoint> MarqueeTimeline::nextChange(TimePoint now) const
{
    if (m_motion == Motion::None) {
        return std::nullopt;
    }
    return now < m_begin ? m_begin : m_end;
}

bool MarqueeTimeline::isWide(const MarqueeLabel &label) const
{
    // An elided text can come out a little wider than was asked for.
    return !m_isMotionReduced && label.frame.width() > m_fieldSize.width();
}

MarqueeLabel MarqueeTimeline::makeLabel(qsizetype index) const
{
    return m_measured.at(static_cast<std::size_t>(index));
}

/// Measures once per list and size, so that a marquee which was hidden for a day catches up without measuring a day's
/// texts.
void MarqueeTimeline::measure()
{
    m_measured.clear();
    for (const QString &string : std::as_const(m_displayStrings)) {
        const QString text = fitted(string);
        const double textWidth = m_textWidth(text);
        const double width = std::max(m_fieldSize.width(), textWidth);
        m_measured.push_back({text, textWidth, QRectF(0, 0, width, m_fieldSize.height())});
    }
}

/// A string as it is shown in the field.
QString MarqueeTimeline::fitted(const QString &string) const
{
    if (m_textWidth(string) <= m_fieldSize.width()) {
        return string;
    }
    return m_isMotionReduced ? m_elidedText(string, m_fieldSize.width()) : padded(string);
}

void MarqueeTimeline::restart(TimePoint now)
{
    m_lastAnimationWasMarquee = false;
    measure();
    clear();
    startCycle(now);
}

void MarqueeTimeline::clear()
{
    m_currentLabel.reset();
    m_nextLabel.reset();
    m_motion = Motion::None;
}

void MarqueeTimeline::startCycle(TimePoint now)
{
    if (m_displayStrings.isEmpty() || m_fieldSize.isEmpty()) {
        return;
    }
    if (m_displayStrings.size() == 1) {
        startCycleOfOne(now);
    } else {
        startCycleOfSeveral(now);
    }
}

void MarqueeTimeline::startCycleOfOne(TimePoint now)
{
    m_currentLabel = makeLabel(0);
    if (isWide(*m_currentLabel) && !m_lastAnimationWasMarquee) {
        scroll(now);
    }
}

void MarqueeTimeline::startCycleOfSeveral(TimePoint now)
{
    if (m_displayStringIndex >= m_displayStrings.size()) {
        m_displayStringIndex = 0;
    }
    m_currentLabel = makeLabel(m_displayStringIndex);
    // A wide string scrolls once and then rolls away.
    m_lastAnimationWasMarquee = isWide(*m_currentLabel) && !m_lastAnimationWasMarquee;
    if (m_lastAnimationWasMarquee) {
        scroll(now);
    } else {
        roll(now);
    }
}

void MarqueeTimeline::roll(TimePoint now)
{
    m_nextLabel = makeLabel((m_displayStringIndex + 1) % m_displayStrings.size());
    m_nextLabel->frame.translate(0, m_nextLabel->frame.height());
    start(Motion::VerticalRoll, m_isMotionReduced ? Duration::zero() : Duration(rollDuration), now);
}

void MarqueeTimeline::scroll(TimePoint now)
{
    // The copy slides into exactly the place where the first began: the ticker goes round without a jump.
    m_nextLabel = m_currentLabel;
    m_nextLabel->frame.translate(m_nextLabel->frame.width(), 0);
    start(Motion::HorizontalScroll, std::chrono::round<Duration>(Seconds(m_currentLabel->frame.width() / scrollSpeed)),
        now);
}

void MarqueeTimeline::start(Motion motion, Duration duration, TimePoint now)
{
    m_isPaused = false;
    m_motion = motion;
    m_begin = now + dwell;
    m_end = m_begin + duration;
}

void MarqueeTimeline::finishMotion()
{
    // A string that has scrolled is shown again, to roll away.
    if (m_motion == Motion::VerticalRoll) {
        ++m_displayStringIndex;
    }
    clear();
    startCycle(m_end);
}

QPointF MarqueeTimeline::travelled(const MarqueeLabel &label, TimePoint now) const
{
    if (m_motion == Motion::None || now <= m_begin) {
        return {};
    }
    const double progress = std::min(1.0, Seconds(now - m_begin) / Seconds(m_end - m_begin));
    return m_motion == Motion::VerticalRoll ? QPointF(0, label.frame.height() * easedOut(progress))
                                            : QPointF(label.frame.width() * progress, 0);
}

} // namespace tunedeck
