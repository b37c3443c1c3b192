// SPDX-License-Identifier: MIT
#pragma once

#include <QLoggingCategory>
#include <QStringList>

namespace tunedeck {

/// Records what "tunedeck.skin" logs while it exists. Only one may exist at a time.
class SkinLogRecorder {
public:
    /// A log that is not switched on is as the program starts with.
    explicit SkinLogRecorder(bool isSwitchedOn)
    {
        lines.clear();
        if (isSwitchedOn) {
            QLoggingCategory::setFilterRules(QStringLiteral("tunedeck.skin.debug=true"));
        }
        m_previous = qInstallMessageHandler(record);
    }
    ~SkinLogRecorder()
    {
        qInstallMessageHandler(m_previous);
        QLoggingCategory::setFilterRules(QString());
    }
    Q_DISABLE_COPY_MOVE(SkinLogRecorder)

    inline static QStringList lines;

private:
    static void record(QtMsgType, const QMessageLogContext &context, const QString &line)
    {
        if (QLatin1String(context.category) == QLatin1String("tunedeck.skin")) {
            lines.append(line);
        }
    }

    QtMessageHandler m_previous = nullptr;
};

} // namespace tunedeck
