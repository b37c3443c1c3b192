// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QCheckBox;

namespace tunedeck {

class UserDefaults;

/// A check box that shows and changes a Boolean setting, with an explanation below it.
class SettingBox : public QWidget {
    Q_OBJECT

public:
    /// `defaults` must outlive the box. `key` is that of the setting.
    SettingBox(UserDefaults &defaults, const QString &key, const QString &text, const QString &explanation,
        QWidget *parent = nullptr);

    [[nodiscard]] QCheckBox &box() { return *m_box; }

private:
    QCheckBox *m_box;
};

} // namespace tunedeck
