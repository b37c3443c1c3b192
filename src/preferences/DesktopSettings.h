// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

namespace tunedeck {

/// The interface through which the preferences say what has become of the settings that the desktop must carry out.
class DesktopSettings : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// A remark for the user on the setting with this key, such as that the desktop refuses it. Empty if there is
    /// nothing to say.
    [[nodiscard]] virtual QString note(const QString &key) const = 0;

Q_SIGNALS:
    void noteChanged(const QString &key);
};

} // namespace tunedeck
