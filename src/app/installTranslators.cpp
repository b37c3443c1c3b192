// SPDX-License-Identifier: MIT
#include "app/installTranslators.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include <algorithm>
#include <array>
#include <memory>

namespace tunedeck {

namespace {
constexpr QLatin1String english("en");
/// English has a translation too, for its plurals.
constexpr std::array<QLatin1String, 5> translations{
    QLatin1String("de"), english, QLatin1String("es"), QLatin1String("fi"), QLatin1String("pl")};

/// The C locale has no language, and counts as English.
QString languageOf(const QLocale &locale)
{
    return locale.language() == QLocale::C ? QString(english) : QLocale::languageToCode(locale.language());
}

void install(QCoreApplication &application, const QString &file, const QString &folder)
{
    auto translator = std::make_unique<QTranslator>(&application);
    if (translator->load(file, folder)) {
        QCoreApplication::installTranslator(translator.release()); // owned by the application
    }
}
} // namespace

QString spokenLanguage(const QStringList &languages)
{
    for (const QString &name : languages) {
        const QString language = name.section(u'-', 0, 0).toLower();
        if (std::ranges::find(translations, language) != translations.end()) {
            return language;
        }
    }
    return english;
}

void installTranslators(QCoreApplication &application, const QLocale &reader)
{
    const QString language = spokenLanguage(reader.uiLanguages());
    if (language != languageOf(reader)) {
        QLocale::setDefault(QLocale(language));
    }
    install(application, QStringLiteral("tunedeck_") + language, QStringLiteral(":/translations"));
    install(application, QStringLiteral("qtbase_") + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
}

} // namespace tunedeck
