// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

class QCoreApplication;

namespace tunedeck {

/// The code of the language that the program speaks to somebody who reads `languages`, the preferred first and each
/// named such as "de" or "de-AT": the first that there is a translation for, else "en".
[[nodiscard]] QString spokenLanguage(const QStringList &languages);

/// Lets `application` speak one language to its reader: its own texts, where the system has them the toolkit's, and by
/// the default locale whatever else comes in several languages. Numbers are written as the reader does, unless theirs
/// is another language.
void installTranslators(QCoreApplication &application, const QLocale &reader = QLocale());

} // namespace tunedeck
