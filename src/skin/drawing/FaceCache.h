// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QPainter>
#include <QPixmap>
#include <QRect>
#include <QSize>
#include <QTransform>

#include <utility>

namespace tunedeck {

/// A transparent picture of `size` points.
[[nodiscard]] QPixmap emptyFace(QSize size, double scale);
/// Draws `face` with its upper left corner on the device pixel that is nearest to `position`, pixel by pixel.
void blit(QPainter &painter, QPointF position, const QPixmap &face);

/// Draws each face of a view once and copies it from memory after that.
///
/// `State` holds all that a face depends on besides its size and scale, and can be compared. The cache keeps the last
/// `capacity` states, all of one size and scale, so resizing a window leaves nothing behind.
template <typename State> class FaceCache {
public:
    static constexpr qsizetype capacity = 4;

    /// Puts the face of `state` into `frame`, in the painter's points and with y downwards. A face that is not in the
    /// cache is drawn by `draw`, with a painter that has antialiasing on and its origin at the face's upper left
    /// corner. An empty frame shows nothing.
    template <typename Draw> void draw(QPainter &painter, const QRect &frame, const State &state, Draw &&draw)
    {
        if (frame.isEmpty()) {
            return;
        }
        // The painter's scale, not the device's: when a screen's scale changes, a widget learns it before its paint
        // device.
        const double scale = painter.deviceTransform().m11();
        if (m_size != frame.size() || m_scale != scale) {
            m_faces.clear();
            m_size = frame.size();
            m_scale = scale;
        }
        blit(painter, frame.topLeft(), face(state, std::forward<Draw>(draw)));
    }

private:
    struct Face {
        State state;
        QPixmap picture;
    };

    template <typename Draw> QPixmap face(const State &state, Draw &&draw)
    {
        for (const Face &face : std::as_const(m_faces)) {
            if (face.state == state) {
                return face.picture;
            }
        }
        QPixmap picture = emptyFace(m_size, m_scale);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        std::forward<Draw>(draw)(painter);
        painter.end();
        if (m_faces.size() == capacity) {
            m_faces.removeFirst();
        }
        m_faces.append({state, picture});
        return picture;
    }

    QSize m_size;
    double m_scale = 0;
    QList<Face> m_faces;
};

} // namespace tunedeck
