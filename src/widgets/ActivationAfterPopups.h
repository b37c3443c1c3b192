// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace tunedeck {

/// Corrects Qt's active window when the last menu or list closes. While one is open, Qt ignores that another window
/// gets the keyboard, and afterwards Tab moves a focus that no control shows.
class ActivationAfterPopups : public QObject {
    Q_OBJECT

public:
    explicit ActivationAfterPopups(QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace tunedeck
