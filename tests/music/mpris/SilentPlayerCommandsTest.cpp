// SPDX-License-Identifier: MIT
#include "CommandMatrix.h"
#include "support/registerTest.h"

#include <QGuiApplication>

namespace tunedeck {

/// The rows with a player that says nothing for longer than its deadline, and then carries out what it was sent.
class SilentPlayerCommandsTest : public CommandMatrix {
    Q_OBJECT

private Q_SLOTS:
    static void aCommandReachesThePlayerOnShowAlone_data() { addRows(); }
    void aCommandReachesThePlayerOnShowAlone() { runRow(Answers::Never); }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::SilentPlayerCommandsTest, QGuiApplication)
#include "SilentPlayerCommandsTest.moc"
