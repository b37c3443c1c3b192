// SPDX-License-Identifier: MIT
#include "player/SpeakerButton.h"

#include "platform/FatalError.h"
#include "skin/views/VolumeSlider.h"

#include <QWheelEvent>

#include <utility>

namespace tunedeck {

namespace {
constexpr QSize speakerSize(12, 12);

QString imageOf(SpeakerButton::Speaker speaker)
{
    switch (speaker) {
    case SpeakerButton::Speaker::Quiet:
        return QStringLiteral("speaker-quiet");
    case SpeakerButton::Speaker::Loud:
        return QStringLiteral("speaker-loud");
    case SpeakerButton::Speaker::Muted:
        return QStringLiteral("speaker-muted");
    }
    fatalError("Impossible speaker");
}
} // namespace

SpeakerButton::SpeakerButton(const SkinEnvironment &environment, VolumeSlider &slider, QWidget *parent)
    : PlainButton(environment, parent)
    , m_slider(slider)
{
}

void SpeakerButton::setSpeaker(Speaker speaker)
{
    if (std::exchange(m_speaker, speaker) != speaker) {
        setImage(imageOf(speaker), speakerSize);
    }
}

void SpeakerButton::wheelEvent(QWheelEvent *event)
{
    event->accept();
    m_slider.scroll(*event);
}

} // namespace tunedeck
