// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <chrono>
#include <utility>

namespace tunedeck {

/// Decides which lines are written to the log, so that nobody fills a disk with what Qt or we say about their messages:
/// of lines of the same kind the first ten in ten seconds, and later how many more there were. Lines are of the same
/// kind if they are of one category and begin with the same words; the words end where a text in quotes or a number
/// begins. Beyond 50 kinds in ten seconds, the rest of a category is one kind.
class LogLimit {
public:
    using Time = std::chrono::steady_clock::time_point;

    struct Decision {
        bool isWritten;
        /// How many lines of each kind were left out whose ten seconds are over. They come before the line in the log.
        QStringList leftOut;
    };

    [[nodiscard]] Decision decide(const QByteArray &category, const QString &line, Time now);
    /// How many lines of each kind were left out and have not been reported.
    [[nodiscard]] QStringList leftOut() const;

    /// Limits what this program writes from now on, on every thread. No timer waits to report what was left out: the
    /// next line of any kind reports it, or the end of the program.
    static void install();
    /// Leaves out what Qt 6.8 logs for each call of a method that we do not have: any program on the bus could fill the
    /// log with names. The caller gets an error, as from Qt 6.4. install() includes this; QT_LOGGING_RULES overrides
    /// it.
    static void leaveOutUnknownCalls();

private:
    using Kind = std::pair<QByteArray, QString>;
    struct Count {
        Time since;
        int lines = 0;
    };

    [[nodiscard]] Kind kindOf(const QByteArray &category, const QString &line) const;
    [[nodiscard]] QStringList takeExpired(Time now);

    QHash<Kind, Count> m_counts;
};

} // namespace tunedeck
