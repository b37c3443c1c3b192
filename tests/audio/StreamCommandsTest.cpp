// SPDX-License-Identifier: MIT
#include "audio/StreamCommands.h"
#include "PrivateSoundServer.h"
#include "SoundClient.h"
#include "audio/PulsePlayerSound.h"
#include "support/registerTest.h"

#include <pulse/introspect.h>

#include <QCoreApplication>
#include <QList>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <memory>
#include <unistd.h>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {
/// A question about a move that has been answered, but whose asker does not know yet.
struct Answer {
    pa_context_success_cb_t tell;
    void *asker;
    int isDone = 0;
};

/// Answers to two questions are told in reverse. Only the loop's thread uses it.
QList<Answer *> &heldAnswers()
{
    static QList<Answer *> answers;
    return answers;
}

void hold(pa_context *context, int isDone, void *question)
{
    auto *answer = static_cast<Answer *>(question);
    answer->isDone = isDone;
    QList<Answer *> &answers = heldAnswers();
    answers.prepend(answer);
    if (answers.size() == 2) {
        for (const Answer *next : std::as_const(answers)) {
            next->tell(context, next->isDone, next->asker);
        }
        qDeleteAll(answers);
        answers.clear();
    }
}
} // namespace

extern "C" {
// The linker has the program call the test's function instead of libpulse's.
pa_operation *moveOfLibpulse(pa_context *context, uint32_t stream, const char *output, pa_context_success_cb_t answered,
    void *asker) asm("__real_pa_context_move_sink_input_by_name");
pa_operation *moveOfTheTest(pa_context *context, uint32_t stream, const char *output, pa_context_success_cb_t answered,
    void *asker) asm("__wrap_pa_context_move_sink_input_by_name");

pa_operation *moveOfTheTest(
    pa_context *context, uint32_t stream, const char *output, pa_context_success_cb_t answered, void *asker)
{
    // The name is that of no output but in this test.
    if (qstrcmp(output, "reversed") != 0) {
        return moveOfLibpulse(context, stream, output, answered, asker);
    }
    return moveOfLibpulse(context, stream, output, hold, new Answer{.tell = answered, .asker = asker});
}
}

class StreamCommandsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void anAnswerCountsForTheStreamThatWasAskedAbout()
    {
        if (!PrivateSoundServer::isInstalled(PrivateSoundServer::Kind::PulseAudio)) {
            QSKIP("PulseAudio is not installed.");
        }
        PrivateSoundServer server(PrivateSoundServer::Kind::PulseAudio);
        QVERIFY(server.start());
        QVERIFY(server.addOutput(u"reversed"_s, u"Reversed"_s) != 0);
        SoundClient client;
        const quint32 immovable = client.play({.mayBeMoved = false});
        QVERIFY(client.play({}) != PA_INVALID_INDEX);
        const std::unique_ptr<PlayerSound> sound = PulsePlayerSound::make();
        sound->follow({{.id = ::getpid(), .names = {u"deck"_s}}});
        QTRY_COMPARE(sound->state().currentOutputs, QStringList{u"first"_s});
        sound->moveTo(u"reversed"_s);
        QTRY_VERIFY(!sound->state().canMove);
        QTRY_COMPARE(sound->state().currentOutputs, (QStringList{u"first"_s, u"reversed"_s}));
        client.end(immovable);
        QTRY_COMPARE(sound->state().currentOutputs, QStringList{u"reversed"_s});
        QVERIFY(sound->state().canMove);
    }
};

TUNEDECK_TEST(StreamCommandsTest, QCoreApplication)

#include "StreamCommandsTest.moc"
