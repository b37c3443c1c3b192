// SPDX-License-Identifier: MIT
#include "x11/WithoutSharedMemory.h"

#include <QByteArray>
#include <QtGlobal>

namespace tunedeck {

namespace {
constexpr char variable[] = "QT_XCB_NO_MITSHM";
/// From here on the X server uses more time for the pictures than this program saves.
constexpr double scaleOfLargePictures = 2;
} // namespace

WithoutSharedMemory::WithoutSharedMemory(std::optional<double> scale)
    : m_isSet(scale && *scale < scaleOfLargePictures && !qEnvironmentVariableIsSet(variable))
{
    if (m_isSet) {
        qputenv(variable, "1");
    }
}

WithoutSharedMemory::~WithoutSharedMemory()
{
    if (m_isSet) {
        qunsetenv(variable);
    }
}

} // namespace tunedeck
