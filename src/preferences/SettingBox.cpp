// SPDX-License-Identifier: MIT
#include "preferences/SettingBox.h"

#include "platform/UserDefaults.h"
#include "preferences/ExplanationLabel.h"
#include "preferences/PaneMetrics.h"

#include <QCheckBox>
#include <QStyle>
#include <QStyleOptionButton>
#include <QVBoxLayout>

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
    : QWidget(parent)
    , m_box(new QCheckBox(text, this))
{
    auto *label = new ExplanationLabel(explanation, *m_box);
    label->setContentsMargins(textInset(*m_box), 0, 0, 0);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(PaneMetrics::gap);
    layout->addWidget(m_box);
    layout->addWidget(label);

    defaults.bind(key, m_box, [box = m_box](bool isOn) { box->setChecked(isOn); });
    connect(m_box, &QCheckBox::clicked, this, [&defaults, key](bool isOn) { defaults.setBool(key, isOn); });
}

} // namespace tunedeck
