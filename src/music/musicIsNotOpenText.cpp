// SPDX-License-Identifier: MIT
#include "music/musicIsNotOpenText.h"

#include <QCoreApplication>

namespace tunedeck {

QString musicIsNotOpenText()
{
    //: Also the tooltip of the empty playlist picker.
    return QCoreApplication::translate("tunedeck", "Music is not open", "'Music is not open' displayed in LCD");
}

} // namespace tunedeck
