// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QObject>
#include <QProcessEnvironment>
#include <QString>

namespace tunedeck {

class Appearance;

/// What the desktop says of texts and the toolkit does not carry out by itself.
struct UnservedText {
    bool scale = false;
    bool fontName = false;

    bool operator==(const UnservedText &) const = default;
};

/// By the toolkit's platform, such as "xcb", and the environment that the program was started in.
[[nodiscard]] UnservedText unservedText(const QString &platformName, const QProcessEnvironment &environment);

/// The font that a desktop calls `name`, such as "Cantarell Bold 11", its size in points; `otherwise` where the name is
/// none. What names do not tell, such as how letters are smoothed, is that of `otherwise`.
[[nodiscard]] QFont fontFromName(const QString &name, const QFont &otherwise);

/// Keeps the application's font as the desktop wants it to be, where the toolkit does not. The skin's own texts have
/// fonts of their own.
class DesktopFont : public QObject {
    Q_OBJECT

public:
    /// `appearance` must outlive this object, which takes the application's font of now for the toolkit's.
    explicit DesktopFont(const Appearance &appearance, QObject *parent = nullptr);
    DesktopFont(const Appearance &appearance, const UnservedText &unserved, QObject *parent = nullptr);

private:
    void update();

    const Appearance &m_appearance;
    const UnservedText m_unserved;
    const QFont m_toolkitFont;
    QFont m_wanted; ///< what was found last
};

} // namespace tunedeck
