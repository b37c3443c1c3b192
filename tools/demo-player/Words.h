// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <exception>

namespace tunedeck::demo {

/// Why a script line cannot be carried out. Never leaves Script::run().
struct NotUnderstood : std::exception {
    explicit NotUnderstood(const QString &why)
        : reason(why)
    {
    }
    QString reason;
};

/// The words of a script line, read from the left. A word that cannot be read as requested throws NotUnderstood.
class Words {
public:
    explicit Words(const QString &line);

    [[nodiscard]] bool areOver() const { return m_rest.isEmpty(); }
    /// Throws if words are left.
    void end() const;
    [[nodiscard]] QString word();
    /// The rest of the line with its spaces; may be empty.
    [[nodiscard]] QString text();
    [[nodiscard]] QString oneOf(const QStringList &choices);
    [[nodiscard]] bool onOff();
    [[nodiscard]] int integer(int minimum, int maximum);
    [[nodiscard]] double number(double minimum, double maximum);
    [[nodiscard]] std::chrono::milliseconds milliseconds();
    /// A time in a track.
    [[nodiscard]] std::chrono::microseconds seconds();

private:
    QString m_rest;
};

} // namespace tunedeck::demo
