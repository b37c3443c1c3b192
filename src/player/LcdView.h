// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QLabel;

namespace tunedeck {

class GlyphButton;
class PercentSlider;
class ScrollingMarqueeView;

/// The display: the track above, below it the elapsed time, the progress and the remaining or total time, or in their
/// place the live marker. It lays them out and draws what is behind them.
class LcdView : public QWidget {
    Q_OBJECT

public:
    explicit LcdView(QWidget *parent = nullptr);

    [[nodiscard]] ScrollingMarqueeView &trackInfoLabel();
    [[nodiscard]] QLabel &primaryTimeLabel();
    [[nodiscard]] PercentSlider &trackProgressSlider();
    [[nodiscard]] QLabel &secondaryTimeLabel();
    [[nodiscard]] QLabel &isLiveLabel();
    [[nodiscard]] GlyphButton &infoButton();

    void setDark(bool dark);
    /// Gives both times the room that `time` takes, so that nothing moves while they grow towards it.
    void setLongestTime(const QString &time);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void setUpTexts();
    void layOut();

    ScrollingMarqueeView *m_trackInfoLabel;
    QLabel *m_primaryTimeLabel;
    PercentSlider *m_trackProgressSlider;
    QLabel *m_secondaryTimeLabel;
    QLabel *m_isLiveLabel;
    GlyphButton *m_infoButton;
    int m_longestTimeWidth = 0;
};

} // namespace tunedeck
