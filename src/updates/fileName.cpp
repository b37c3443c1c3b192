// SPDX-License-Identifier: MIT
#include "updates/fileName.h"

#include <QRegularExpression>

namespace tunedeck {

namespace {
constexpr qsizetype longestName = 120;
constexpr qsizetype longestSuffix = 16;

struct NameParts {
    QString base;
    QString suffix; ///< begins with a dot
};

NameParts partsOf(const QString &name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot <= 0 || name.size() - dot > longestSuffix) {
        return {name, {}};
    }
    return {name.first(dot), name.sliced(dot)};
}
} // namespace

QString fileNameFrom(const QUrl &url)
{
    static const QRegularExpression unwanted(QStringLiteral("[^A-Za-z0-9._+~-]"));
    static const QRegularExpression unwantedAtStart(QStringLiteral("^[^A-Za-z0-9]+"));
    QString name = url.fileName(QUrl::FullyDecoded).remove(unwanted).remove(unwantedAtStart);
    if (name.isEmpty()) {
        return QStringLiteral("update");
    }
    const NameParts parts = partsOf(name);
    return parts.base.left(longestName - parts.suffix.size()) + parts.suffix;
}

QString numberedFileName(const QString &name, int attempt)
{
    if (attempt == 0) {
        return name;
    }
    const NameParts parts = partsOf(name);
    return QStringLiteral("%1 (%2)%3").arg(parts.base).arg(attempt).arg(parts.suffix);
}

} // namespace tunedeck
