// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>
#include <QString>

namespace tunedeck {

class DesktopSettings;
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
    /// Shows what the desktop says to the setting instead of the explanation; the explanation while it says nothing.
    /// `settings` must outlive the box.
    void showNotes(const DesktopSettings &settings);

private:
    /// Shows the usual explanation if `note` is empty. Returns whether it was not shown before.
    bool showNote(const QString &note);
    void speak(const QString &note);

    const QString m_key;
    const QString m_usualExplanation;
    ExplanationLabel *m_explanation;
};

} // namespace tunedeck
