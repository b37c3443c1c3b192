// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QVariant>

namespace tunedeck {

/// The value of a line as QSettings writes it: a QString, a QStringList, or a QByteArray. A value that names any other
/// type is the text that it is. QSettings would build it, and must not: a picture ends a program that has no
/// QGuiApplication yet, and lists in lists, some ten thousand deep, overflow the stack. Invalid if the line says that
/// there is no value.
[[nodiscard]] QVariant settingsValue(QByteArrayView written);

} // namespace tunedeck
