// SPDX-License-Identifier: MIT
#pragma once

#include "skin/views/LCDBackgroundView.h"

#include <QString>

class QLabel;

namespace tunedeck {

class ClassicAudioProgressSlider;
class PlainButton;
class ScrollingMarqueeView;

/// The display: the track above, below it the elapsed time, the progress and the remaining or total time, or in their
/// place the live marker. It makes them and lays them out.
class LcdView : public LCDBackgroundView {
    Q_OBJECT

public:
    explicit LcdView(const SkinEnvironment &environment, QWidget *parent = nullptr);

    [[nodiscard]] ScrollingMarqueeView &trackInfoLabel() { return *m_trackInfoLabel; }
    [[nodiscard]] QLabel &primaryTimeLabel() { return *m_primaryTimeLabel; }
    [[nodiscard]] ClassicAudioProgressSlider &trackProgressSlider() { return *m_trackProgressSlider; }
    [[nodiscard]] QLabel &secondaryTimeLabel() { return *m_secondaryTimeLabel; }
    [[nodiscard]] QLabel &isLiveLabel() { return *m_isLiveLabel; }
    [[nodiscard]] PlainButton &infoButton() { return *m_infoButton; }

    void setPrimaryTime(const QString &time) { setTime(*m_primaryTimeLabel, time); }
    void setSecondaryTime(const QString &time) { setTime(*m_secondaryTimeLabel, time); }
    /// Reserves the width of `time` for both times, so that nothing moves while they grow.
    void setLongestTime(const QString &time);

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void applyContrast(bool isHigh);
    void setUpTexts();
    void setTime(QLabel &label, const QString &time);
    void layOut();

    ScrollingMarqueeView *m_trackInfoLabel;
    QLabel *m_primaryTimeLabel;
    ClassicAudioProgressSlider *m_trackProgressSlider;
    QLabel *m_secondaryTimeLabel;
    QLabel *m_isLiveLabel;
    PlainButton *m_infoButton;
    QString m_longestTime;
    int m_longestTimeWidth = 0;
};

} // namespace tunedeck
