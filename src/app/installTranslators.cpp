// SPDX-License-Identifier: MIT
#include "installTranslators.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include <memory>

namespace tunedeck {

namespace {
void install(QCoreApplication &application, const QLocale &locale, const QString &name, const QString &folder)
{
    auto translator = std::make_unique<QTranslator>(&application);
    if (translator->load(locale, name, QStringLiteral("_"), folder)) {
        QCoreApplication::installTranslator(translator.release()); // the application's
    }
}
} // namespace

void installTranslators(QCoreApplication &application, const QLocale &locale)
{
    // English has translations too: whoever reads English and then German is not to be shown German. They also know
    // its plurals.
    install(application, locale, QStringLiteral("tunedeck"), QStringLiteral(":/translations"));
    install(application, locale, QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace tunedeck
