// SPDX-License-Identifier: MIT
#include "preferences/SettingBox.h"

#include "platform/UserDefaults.h"
#include "preferences/DesktopSettings.h"
#include "preferences/ExplanationLabel.h"
#include "widgets/speakNotice.h"

#include <QStyle>
#include <QStyleOptionButton>

namespace tunedeck {

namespace {
/// The distance from a check box's left edge to its text, in points.
int textInset(const QCheckBox &box)
{
    QStyleOptionButton option;
    option.initFrom(&box);
    option.direction = Qt::LeftToRight;
    return box.style()->subElementRect(QStyle::SE_CheckBoxContents, &option, &box).left();
}
} // namespace

SettingBox::SettingBox(
    UserDefaults &defaults, const QString &key, const QString &text, const QString &explanation, QWidget *parent)
    : QCheckBox(text, parent)
    , m_key(key)
    , m_usualExplanation(explanation)
    , m_explanation(new ExplanationLabel(explanation, *this))
{
    m_explanation->setContentsMargins(textInset(*this), 0, 0, 0);
    defaults.bind(key, this, [this](bool isOn) { setChecked(isOn); });
    connect(this, &QCheckBox::clicked, this, [&defaults, key](bool isOn) { defaults.setBool(key, isOn); });
}

void SettingBox::showNotes(const DesktopSettings &settings)
{
    connect(&settings, &DesktopSettings::noteChanged, this, [this, desktop = &settings](const QString &key) {
        if (key == m_key) {
            const QString note = desktop->note(key);
            if (showNote(note)) {
                speak(note);
            }
        }
    });
    showNote(settings.note(m_key));
}

bool SettingBox::showNote(const QString &note)
{
    const QString &explanation = note.isEmpty() ? m_usualExplanation : note;
    if (m_explanation->text() == explanation) {
        return false;
    }
    m_explanation->setExplanation(explanation);
    return true;
}

/// Screen readers speak a new description only of the control that has the focus.
void SettingBox::speak(const QString &note)
{
    if (!note.isEmpty() && isActiveWindow() && !hasFocus()) {
        speakNotice(*window(), note);
    }
}

} // namespace tunedeck
