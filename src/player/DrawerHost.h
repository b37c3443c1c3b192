// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace tunedeck {

/// What the player knows of its window's controller: a window that grows to show the drawer and shrinks to hide it.
class DrawerHost : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isExpanded READ isExpanded WRITE setExpanded NOTIFY isExpandedChanged)

public:
    using QObject::QObject;

    [[nodiscard]] virtual bool isExpanded() const = 0;
    virtual void setExpanded(bool expanded) = 0;

Q_SIGNALS:
    /// After every assignment, also of an equal value, once the window has reached its height; of assignments that come
    /// before it has, once for all.
    void isExpandedChanged(bool expanded);
};

} // namespace tunedeck
