// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QVariantHash>

#include <optional>

namespace tunedeck {

/// The settings in the content of a file that QSettings has written in its INI format, or the user. The keys are those
/// of QSettings, if they have at most 1,000 characters; longer ones are left out. Every value is a QString, a
/// QStringList, or a QByteArray (see settingsValue()). No value if a line cannot be read.
[[nodiscard]] std::optional<QVariantHash> parsedSettings(QByteArrayView content);

} // namespace tunedeck
