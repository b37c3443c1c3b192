// SPDX-License-Identifier: MIT
#include "CommandMatrix.h"
#include "support/registerTest.h"

#include <QGuiApplication>

namespace tunedeck {

/// The rows with a player that answers 300 ms late, as many do while they open a track.
class LatePlayerCommandsTest : public CommandMatrix {
    Q_OBJECT

private Q_SLOTS:
    static void aCommandReachesThePlayerOnShowAlone_data() { addRows(); }
    void aCommandReachesThePlayerOnShowAlone() { runRow(Answers::Late); }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::LatePlayerCommandsTest, QGuiApplication)
#include "LatePlayerCommandsTest.moc"
