// SPDX-License-Identifier: MIT
#include "platform/LogLimit.h"

#include <QLoggingCategory>
#include <QtGlobal>

#include <algorithm>
#include <mutex>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr auto period = 10s;
constexpr int mostLines = 10;
constexpr qsizetype mostKinds = 50;
constexpr qsizetype longestBeginning = 60;

QString beginningOf(const QString &line)
{
    const QString beginning = line.left(longestBeginning);
    const auto end = std::ranges::find_if(
        beginning, [](QChar character) { return character == u'"' || character == u'\'' || character.isDigit(); });
    return beginning.first(end - beginning.begin()).trimmed();
}

QString leftOutLine(int lines, const QByteArray &category, const QString &beginning)
{
    return QStringLiteral("and %1 more lines of %2: %3 …").arg(lines).arg(QString::fromUtf8(category), beginning);
}

/// The limit of the program's log, for all threads.
class ProgramLog {
public:
    explicit ProgramLog(QtMessageHandler write)
        : m_write(write)
    {
    }
    ~ProgramLog()
    {
        qInstallMessageHandler(m_write);
        report(m_limit.leftOut());
    }
    ProgramLog(const ProgramLog &) = delete;
    ProgramLog &operator=(const ProgramLog &) = delete;

    void add(QtMsgType type, const QMessageLogContext &context, const QString &line)
    {
        const std::lock_guard lock(m_mutex);
        const LogLimit::Decision decision = m_limit.decide(context.category, line, std::chrono::steady_clock::now());
        report(decision.leftOut);
        if (decision.isWritten || type == QtFatalMsg) {
            m_write(type, context, line);
        }
    }

private:
    void report(const QStringList &lines)
    {
        for (const QString &line : lines) {
            m_write(QtInfoMsg, QMessageLogContext(nullptr, 0, nullptr, "tunedeck.log"), line);
        }
    }

    const QtMessageHandler m_write;
    std::mutex m_mutex;
    LogLimit m_limit;
};

ProgramLog &programLog()
{
    static ProgramLog log(qInstallMessageHandler(nullptr));
    return log;
}
} // namespace

LogLimit::Decision LogLimit::decide(const QByteArray &category, const QString &line, Time now)
{
    QStringList leftOut = takeExpired(now);
    Count &count = m_counts[kindOf(category, line)];
    if (count.lines == 0) {
        count.since = now;
    }
    ++count.lines;
    return {count.lines <= mostLines, leftOut};
}

QStringList LogLimit::leftOut() const
{
    QStringList lines;
    for (const auto &[kind, count] : m_counts.asKeyValueRange()) {
        if (count.lines > mostLines) {
            lines.append(leftOutLine(count.lines - mostLines, kind.first, kind.second));
        }
    }
    return lines;
}

void LogLimit::install()
{
    leaveOutUnknownCalls();
    programLog();
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &context, const QString &line) {
        programLog().add(type, context, line);
    });
}

void LogLimit::leaveOutUnknownCalls()
{
    QLoggingCategory::setFilterRules(QStringLiteral("qt.dbus.integration.warning=false"));
}

LogLimit::Kind LogLimit::kindOf(const QByteArray &category, const QString &line) const
{
    const Kind kind(category, beginningOf(line));
    return m_counts.size() < mostKinds || m_counts.contains(kind) ? kind : Kind(category, QString());
}

QStringList LogLimit::takeExpired(Time now)
{
    LogLimit expired;
    m_counts.removeIf([&](const std::pair<const Kind &, Count &> &entry) {
        const bool isOver = now - entry.second.since >= period;
        if (isOver) {
            expired.m_counts.insert(entry.first, entry.second);
        }
        return isOver;
    });
    return expired.leftOut();
}

} // namespace tunedeck
