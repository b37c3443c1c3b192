// SPDX-License-Identifier: MIT
#pragma once

#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

/// Lets every warning fail the test but those of the offscreen platform, which can neither limit nor raise a window.
inline void failOnWarning()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral("^(?!This plugin does not support)")));
}

} // namespace tunedeck
