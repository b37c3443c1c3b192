// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QList>
#include <QString>

namespace tunedeck {

/// Many small pictures on one, each above its name. Every group begins a row of its own.
class ContactSheet {
public:
    void add(const QString &group, const QString &name, const QImage &picture, bool dark);
    [[nodiscard]] QImage image() const;

private:
    struct Print {
        QString group;
        QString name;
        QImage picture;
        bool dark = false;
    };
    struct Place {
        QRect box;
        QPoint picture;
    };

    [[nodiscard]] QList<Place> places() const;

    QList<Print> m_prints;
};

} // namespace tunedeck
