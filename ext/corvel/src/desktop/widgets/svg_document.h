#pragma once

#include "svg/svg_animation.h"

#include <QElapsedTimer>
#include <QString>
#include <QSvgRenderer>

#include <functional>
#include <memory>
#include <string>

class QTimer;
class QWidget;

namespace Corvel {

/// The SVG that a widget shows: its text, its animation if it has one, and the renderer that holds
/// the present frame in the present tint.
class SvgDocument {
public:
    /// Takes `text` as the document and, if it moves, calls `tick` every 16 ms while `owner`
    /// lives and is seen and the document stays, until its animation has come to an end. Where
    /// less motion is wanted, it stands still. Loads nothing yet. The document must stay where it
    /// is.
    void open_document(const QString& text, QWidget* owner, const std::function<void()>& tick);
    /// Forgets the document. The renderer keeps its picture until the next `load_frame`.
    void close_document();
    /// Puts the frame of this moment in the renderer, tinted; without a document empties it.
    void load_frame(const std::string& tint);

    QString svg_text;
    std::unique_ptr<SvgAnimation> animation;
    QTimer* frame_timer = nullptr; ///< owned by the widget; runs while the document moves
    QElapsedTimer clock;           ///< since the document was opened
    QSvgRenderer renderer;

private:
    double present_time() const;
};

} // namespace Corvel
