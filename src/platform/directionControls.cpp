// SPDX-License-Identifier: MIT
#include "platform/directionControls.h"

namespace tunedeck {

QString withoutDirectionControls(QString text)
{
    text.removeIf([](QChar character) { return isDirectionControl(character.unicode()); });
    return text;
}

} // namespace tunedeck
