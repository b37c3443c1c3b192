// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QTimer>

namespace tunedeck {

/// Frees the pictures of the program's windows and menus while they are hidden. Qt keeps the picture of each for as
/// long as the window exists, two megabytes for a help window at scale 1, and paints a window as a whole when it is
/// shown again.
///
/// Works from when it is made, for all windows. The application object must outlive it.
class PicturesOfHiddenWindows : public QObject {
    Q_OBJECT

public:
    explicit PicturesOfHiddenWindows(QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QTimer m_afterwards;
};

} // namespace tunedeck
