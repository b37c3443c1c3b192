// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace tunedeck {

/// One visible string of the marquee.
struct MarqueeLabel {
    QString text;
    /// In points; the text is centred in the frame, which is no narrower.
    double textWidth = 0;
    /// In points from the field's upper left corner.
    QRectF frame;

    bool operator==(const MarqueeLabel &) const = default;
};

/// The position of each string of a marquee at any time. A string that fits rests for a dwell and then rolls away
/// before the next one. A wider one rests, scrolls sideways once as a ticker, rests again and then rolls. A single
/// string that fits never moves. The timeline has no clock: callers pass the time, which must never go back.
class MarqueeTimeline {
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    /// A text's width in points, trailing spaces included.
    using TextWidth = std::function<double(const QString &text)>;
    /// A text cut to a width in points. A cut text ends with an ellipsis.
    using ElidedText = std::function<QString(const QString &text, double width)>;

    /// In points per second.
    static constexpr double scrollSpeed = 30;

    MarqueeTimeline(TextWidth textWidth, ElidedText elidedText);

    [[nodiscard]] const QStringList &displayStrings() const { return m_displayStrings; }
    /// Starts at the first string. The list it already has changes nothing; an empty list shows nothing.
    void setDisplayStrings(const QStringList &strings, TimePoint now);
    /// Gives the field its size, in points, and starts the string on show again.
    void layOut(const QSizeF &fieldSize, TimePoint now);
    /// Whether nothing may move: a string that is too wide is elided, and strings take turns without rolling. A change
    /// starts the string on show again.
    void setMotionReduced(bool isReduced, TimePoint now);
    /// Rotates the list by one and starts at its first string; one string alone starts again. The rotation counts from
    /// the list's first entry, not from the string on show.
    void advance(TimePoint now);

    /// Catches up with everything that is due by `now`, however long ago it was.
    void proceedTo(TimePoint now);
    /// One label alone, or two of which the second follows the first. `now` must be before the next change.
    [[nodiscard]] std::vector<MarqueeLabel> labels(TimePoint now) const;
    /// Always false: nothing pauses a marquee.
    [[nodiscard]] bool isPaused() const { return m_isPaused; }
    [[nodiscard]] bool isMoving(TimePoint now) const;
    /// The next time the labels begin or cease to move; no value if they never will.
    [[nodiscard]] std::optional<TimePoint> nextChange(TimePoint now) const;

private:
    using Duration = std::chrono::steady_clock::duration;
    enum class Motion { None, VerticalRoll, HorizontalScroll };

    [[nodiscard]] bool isWide(const MarqueeLabel &label) const;
    [[nodiscard]] MarqueeLabel makeLabel(qsizetype index) const;
    void measure();
    [[nodiscard]] QString fitted(const QString &string) const;
    void restart(TimePoint now);
    void clear();
    void startCycle(TimePoint now);
    void startCycleOfOne(TimePoint now);
    void startCycleOfSeveral(TimePoint now);
    void start(Motion motion, Duration duration, TimePoint now);
    void roll(TimePoint now);
    void scroll(TimePoint now);
    void finishMotion();
    [[nodiscard]] QPointF travelled(const MarqueeLabel &label, TimePoint now) const;

    TextWidth m_textWidth;
    ElidedText m_elidedText;
    bool m_isMotionReduced = false;
    QSizeF m_fieldSize;
    QStringList m_displayStrings;
    /// Each string as it is shown, from the field's left edge on.
    std::vector<MarqueeLabel> m_measured;
    qsizetype m_displayStringIndex = 0;
    bool m_lastAnimationWasMarquee = false;
    bool m_isPaused = false;

    std::optional<MarqueeLabel> m_currentLabel;
    std::optional<MarqueeLabel> m_nextLabel;
    Motion m_motion = Motion::None;
    TimePoint m_begin;
    TimePoint m_end;
};

} // namespace tunedeck
