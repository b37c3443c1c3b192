// SPDX-License-Identifier: MIT
#include "CommandMatrix.h"
#include "support/registerTest.h"

#include <QGuiApplication>

namespace tunedeck {

/// The rows with players that answer at once.
class PromptPlayerCommandsTest : public CommandMatrix {
    Q_OBJECT

private Q_SLOTS:
    static void aCommandReachesThePlayerOnShowAlone_data() { addRows(); }
    void aCommandReachesThePlayerOnShowAlone() { runRow(Answers::AtOnce); }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PromptPlayerCommandsTest, QGuiApplication)
#include "PromptPlayerCommandsTest.moc"
