// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>

namespace tunedeck {

class ExplanationLabel;
class UserDefaults;

/// A check box that shows and changes a Boolean setting, with an explanation of it.
class SettingBox : public QCheckBox {
    Q_OBJECT

public:
    /// `defaults` must outlive the box. `key` is that of the setting. `parent` also gets the explanation.
    SettingBox(
        UserDefaults &defaults, const QString &key, const QString &text, const QString &explanation, QWidget *parent);

    /// Belongs below the box, where it begins with the box's text.
    [[nodiscard]] ExplanationLabel &explanation() { return *m_explanation; }

private:
    ExplanationLabel *m_explanation;
};

} // namespace tunedeck
