// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

class QCoreApplication;

namespace tunedeck {

/// The code of the first language in `languages` that the program is translated into, or "en" if there is none. The
/// names are like "de" or "de-AT", the preferred one first.
[[nodiscard]] QString spokenLanguage(const QStringList &languages);

/// Makes `application` show one language to its reader: its own texts, and Qt's texts if the system has their
/// translation. Sets the default locale to that language if the reader's is another one; otherwise numbers keep the
/// reader's format.
void installTranslators(QCoreApplication &application, const QLocale &reader = QLocale());

} // namespace tunedeck
