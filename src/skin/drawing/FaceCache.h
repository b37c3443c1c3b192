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

/// Draws a view's faces once and from memory after that.
///
/// `State` is what a face depends on beside its size and scale; it can be compared. The last `capacity` states are
/// kept, of one size and scale: a view whose window is resized leaves nothing behind.
template <typename State> class FaceCache {
public:
    static constexpr qsizetype capacity = 4;

    /// Puts the face of `state` into `frame`, which is in the painter's points, y downwards. If it is not known, `draw`
    /// draws it with a painter, antialiasing on, whose origin is the face's upper left corner.
    template <typename Draw> void draw(QPainter &painter, const QRect &frame, const State &state, Draw &&draw)
    {
        if (frame.isEmpty()) {
            return;
        }
        // Not the device's: where a screen's scale changes, a widget knows of it before what it is painted on does.
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
