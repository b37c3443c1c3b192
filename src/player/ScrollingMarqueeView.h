// SPDX-License-Identifier: MIT
#pragma once

#include "player/MarqueeText.h"
#include "player/MarqueeTimeline.h"
#include "widgets/PictureMover.h"

#include <QHash>
#include <QImage>
#include <QLabel>
#include <QMargins>
#include <QPointer>
#include <QRect>
#include <QTimer>
#include <QWindow>

#include <functional>
#include <memory>
#include <vector>

namespace tunedeck {

/// The display's line of track information: shows several strings one after the other, as its timeline says, faded out
/// towards its edges. It wakes up only while a string moves or waits to move and can be seen. The painter's device owns
/// the scale: texts are drawn again for each new scale.
///
/// It is a QLabel whose text is all its strings, so that screen readers can read them. To screen readers it is a
/// notification, which they speak when the strings change while the window is active.
class ScrollingMarqueeView : public QLabel {
    Q_OBJECT

public:
    using Clock = std::function<MarqueeTimeline::TimePoint()>;

    explicit ScrollingMarqueeView(QWidget *parent = nullptr);
    /// `clock` never goes back.
    explicit ScrollingMarqueeView(Clock clock, QWidget *parent = nullptr);

    /// The strings as shown, each as MarqueeText::oneLine().
    [[nodiscard]] const QStringList &displayStrings() const { return m_timeline.displayStrings(); }
    /// Takes plain text. A list equal to the one on show changes nothing; an empty list clears the line.
    void setDisplayStrings(const QStringList &strings);

    [[nodiscard]] double fadeInsetInPoints() const { return m_fadeInsetInPoints; }
    /// The width of the fade at each side, in points. A negative width becomes 0.
    void setFadeInsetInPoints(double inset);
    [[nodiscard]] bool labelAdvancesOnClick() const { return m_labelAdvancesOnClick; }
    void setLabelAdvancesOnClick(bool advances);
    /// For a marquee that could be held still. Nothing pauses it yet, so it is always false.
    [[nodiscard]] bool isPaused() const { return m_timeline.isPaused(); }
    /// Whether nothing may move: a text that is too wide is elided, and strings take turns without rolling.
    void setMotionReduced(bool isReduced);
    /// Whether its ink is light, as in the dark appearance.
    void setDark(bool isDark);
    /// Whether its ink is the darkest, in either appearance.
    void setHighContrast(bool isHigh);
    /// What moves the strings from the next step on, so that a step costs no painting. Without one, or where that is
    /// impossible, the view paints each step.
    void setPictureMover(std::unique_ptr<PictureMover> mover);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QFont resolvedFont() const;
    [[nodiscard]] bool canBeSeen() const;
    void announce();
    void restart();
    void refresh();
    void forgetWhatIsNotShown();
    void scheduleRefresh(MarqueeTimeline::TimePoint now);
    [[nodiscard]] std::chrono::nanoseconds untilNextFrame(
        MarqueeTimeline::TimePoint now, MarqueeTimeline::TimePoint end) const;
    [[nodiscard]] bool wouldLookDifferent(const std::vector<MarqueeLabel> &labels, double scale) const;
    /// Shows the labels, which have changed.
    void showLabels(const QRect &before);
    /// Lets the picture mover show the labels in front of what is painted. False if the view must paint them.
    [[nodiscard]] bool placeLabels(const QRect &field, double scale);
    void takeLabelsBack();
    /// Whether `painter` paints for the window, not for a picture that somebody asked for.
    [[nodiscard]] bool isForWindow(const QPainter &painter) const;
    [[nodiscard]] std::vector<PlacedPicture> placedPictures(double scale);
    void drawLabels(QPainter &painter, double scale);
    /// Whether there is something to see in `part` of the view, in device pixels.
    [[nodiscard]] bool hasLabels(const QRect &part, double scale);
    /// The faded labels within `part` of the view, in device pixels.
    [[nodiscard]] QImage fadedLabels(const QRect &part, double scale);
    /// The widths of the fades, in device pixels.
    [[nodiscard]] QMargins fadeMargins(double scale) const;
    [[nodiscard]] MarqueeInk ink() const;
    [[nodiscard]] const MarqueeText &drawnText(const QString &text, double scale);
    /// The area that the labels on show draw on, in points.
    [[nodiscard]] QRect markedRect() const;
    [[nodiscard]] const QImage &mask(double scale);

    Clock m_clock;
    MarqueeTimeline m_timeline;
    QTimer *m_timer;
    /// Delays the announcement: a line cleared to show something else is not read out as empty.
    QTimer m_announcement;
    QPoint m_pressPosition; ///< on the desktop
    QPointer<QWindow> m_watchedWindow;
    std::vector<MarqueeLabel> m_labels;
    /// The texts on show, as they were drawn last.
    QHash<QString, MarqueeText> m_texts;
    QImage m_mask;
    std::unique_ptr<PictureMover> m_mover;
    bool m_isMoverInUse = false;
    double m_fadeInsetInPoints = 3.5;
    bool m_labelAdvancesOnClick = true;
    bool m_isDark = false;
    bool m_isHighContrast = false;
};

} // namespace tunedeck
