// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QList>
#include <QObject>
#include <QPointer>

#include <functional>

class QMenu;

namespace tunedeck {

/// Enables and disables menu items: an item is enabled while all its validators return true.
class MenuValidation : public QObject {
    Q_OBJECT

public:
    /// Returns whether the item is enabled. May also set its check mark or its title.
    using Validator = std::function<bool(QAction &item)>;

    using QObject::QObject;

    void add(QAction *item, const QList<Validator> &validators);
    /// Validates all items whenever `menu` is about to be shown.
    void validateBeforeShowing(QMenu &menu);

public Q_SLOTS:
    /// Validates all items. Shortcuts work without opening a menu, so call this when a validator's answer may change.
    void validate();

private:
    struct Entry {
        QPointer<QAction> item;
        QList<Validator> validators;
    };
    QList<Entry> m_entries;
};

} // namespace tunedeck
