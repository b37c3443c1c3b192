// SPDX-License-Identifier: MIT
#include "OtherVersionModule.h"

namespace tunedeck {

UpdatesModule::Check OtherVersionModule::makeCheck(const QDBusConnection &, UserDefaults &) const
{
    return [] { qFatal("The program has taken a module of another version."); };
}

} // namespace tunedeck
