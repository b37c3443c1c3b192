// SPDX-License-Identifier: MIT
#include "updates/fileName.h"

#include <QRegularExpression>

namespace tunedeck {

namespace {
constexpr qsizetype longestVersion = 100;
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

QString fileNameFor(const QString &version, const QUrl &url)
{
    static const QRegularExpression unwanted(QStringLiteral("[^A-Za-z0-9._+~-]"));
    const QString plainVersion = QString(version).remove(unwanted).left(longestVersion);
    const QString name = url.fileName(QUrl::FullyDecoded).remove(unwanted);
    return QStringLiteral("tunedeck_") + plainVersion + partsOf(name).suffix;
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
