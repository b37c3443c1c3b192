// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

namespace tunedeck::demo {

/// The names of the kinds of values that a script can give a property.
[[nodiscard]] QStringList wrongValueKinds();

/// The value of that kind for `key`. `text` replaces the kind's own value, unless it is empty. Invalid if `kind` is
/// unknown or `text` is no value of it.
[[nodiscard]] QVariant wrongValue(const QString &kind, const QString &key, const QString &text);

} // namespace tunedeck::demo
