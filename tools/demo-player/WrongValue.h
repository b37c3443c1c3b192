// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

namespace tunedeck::demo {

/// The kinds of values that a property can be made to have, as scripts name them.
[[nodiscard]] QStringList wrongValueKinds();

/// The value of that kind for `key`. `text` takes the place of what the kind has by itself, if it can be read as one.
/// Invalid if `kind` is unknown or `text` cannot be.
[[nodiscard]] QVariant wrongValue(const QString &kind, const QString &key, const QString &text);

} // namespace tunedeck::demo
