// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>

class QCoreApplication;

namespace tunedeck {

/// Lets `application` show its texts, and where the system has them the toolkit's, in the first of the locale's
/// languages that there is a translation for. Without one they are English.
void installTranslators(QCoreApplication &application, const QLocale &locale = QLocale());

} // namespace tunedeck
