// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/bus/BusValue.h"
#include "platform/directionControls.h"
#include "require.h"

#include <QChar>
#include <QString>

namespace tunedeck::fuzz {

/// Requires what bus::text() promises of every text that a player sends.
inline void requireClean(const QString &text)
{
    require(text.size() <= bus::maximumTextLength, "a text is short");
    for (const char32_t character : text.toUcs4()) {
        require(!isDirectionControl(character), "a text does not turn the text around it");
        const QChar::Category category = QChar::category(character);
        require(category != QChar::Other_Control && category != QChar::Separator_Line
                && category != QChar::Separator_Paragraph && category != QChar::Other_Surrogate,
            "a text has no control characters, line ends or halves of characters");
    }
}

} // namespace tunedeck::fuzz
