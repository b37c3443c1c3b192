// SPDX-License-Identifier: MIT
#include "preferences/SettingBox.h"

#include "platform/UserDefaults.h"
#include "preferences/ExplanationLabel.h"

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
    , m_explanation(new ExplanationLabel(explanation, *this))
{
    m_explanation->setContentsMargins(textInset(*this), 0, 0, 0);
    defaults.bind(key, this, [this](bool isOn) { setChecked(isOn); });
    connect(this, &QCheckBox::clicked, this, [&defaults, key](bool isOn) { defaults.setBool(key, isOn); });
}

} // namespace tunedeck
