// SPDX-License-Identifier: MIT
#include "music/statusTexts.h"

#include <QCoreApplication>

namespace tunedeck {

QString musicIsNotOpenText()
{
    //: Also the tooltip of the empty playlist picker.
    return QCoreApplication::translate("tunedeck", "Music is not open", "'Music is not open' displayed in LCD");
}

QString noSongText()
{
    return QCoreApplication::translate("tunedeck", "No Song", "'No Song' displayed in LCD");
}

QString musicIsNotRespondingText()
{
    return QCoreApplication::translate(
        "tunedeck", "Music is not responding", "Tooltip of the LCD while Music is frozen");
}

} // namespace tunedeck
