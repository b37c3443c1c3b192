// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace tunedeck {

/// The application's style with animations of the length that a test wants.
class TimedStyle : public QProxyStyle {
public:
    int animationDuration = 0;

    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
        QStyleHintReturn *returnData = nullptr) const override
    {
        return hint == SH_Widget_Animation_Duration ? animationDuration
                                                    : QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

} // namespace tunedeck
