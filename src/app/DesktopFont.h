// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QObject>
#include <QProcessEnvironment>
#include <QString>

namespace tunedeck {

class Appearance;

/// The desktop's settings for texts that Qt does not apply by itself.
struct UnservedText {
    bool scale = false;
    bool fontName = false;

    bool operator==(const UnservedText &) const = default;
};

/// `platformName` is the name of Qt's platform plugin, such as "xcb"; `environment` is that of the program's start.
[[nodiscard]] UnservedText unservedText(const QString &platformName, const QProcessEnvironment &environment);

/// The font that a desktop calls `name`, such as "Cantarell Bold 11" with a size in points. Returns `otherwise` if the
/// name is not valid. Properties that names do not contain, such as smoothing, are those of `otherwise`.
[[nodiscard]] QFont fontFromName(const QString &name, const QFont &otherwise);

/// Keeps the application's font as the desktop's settings say, where Qt does not. The skin's texts have other fonts.
class DesktopFont : public QObject {
    Q_OBJECT

public:
    /// `appearance` must outlive this object. The application's current font counts as Qt's choice.
    explicit DesktopFont(const Appearance &appearance, QObject *parent = nullptr);
    DesktopFont(const Appearance &appearance, const UnservedText &unserved, QObject *parent = nullptr);

private:
    void update();

    const Appearance &m_appearance;
    const UnservedText m_unserved;
    const QFont m_qtFont;
    QFont m_wanted; ///< the last result
};

} // namespace tunedeck
