// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace tunedeck {

/// The interface of the window's controller to the player: its window grows to show the drawer and shrinks to hide it.
class DrawerHost : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isExpanded READ isExpanded WRITE setExpanded NOTIFY isExpandedChanged)

public:
    using QObject::QObject;

    [[nodiscard]] virtual bool isExpanded() const = 0;
    virtual void setExpanded(bool expanded) = 0;

Q_SIGNALS:
    /// Emitted after every assignment, also of an equal value, once the window has reached its height. Assignments made
    /// before that share one signal.
    void isExpandedChanged(bool expanded);
};

} // namespace tunedeck
