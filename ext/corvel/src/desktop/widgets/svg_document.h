#pragma once

#include "svg/svg_animation.h"

#include <QElapsedTimer>
#include <QString>
#include <QSvgRenderer>

#include <functional>
#include <memory>
#include <string>

class QPainter;
class QTimer;
class QWidget;

namespace Corvel {

/// The SVG that a widget shows: its text, its animation if it has one, and the picture of the
/// present frame in the present tint. Widgets that show one still document in one tint share its
/// picture: it is read once.
class SvgDocument {
public:
    /// Takes `text` as the document and, if it moves, calls `tick` every 16 ms while `owner`
    /// lives and is seen and the document stays, until its animation has come to an end. Where
    /// less motion is wanted, it stands still. Loads nothing yet. The document must stay where it
    /// is.
    void open_document(const QString& text, QWidget* owner, const std::function<void()>& tick);
    /// Forgets the document. The picture stays until the next `load_frame`.
    void close_document();
    /// Makes the picture that of this moment, tinted; without a document there is none.
    void load_frame(const std::string& tint);

    bool has_picture() const { return picture_ && picture_->isValid(); }
    /// Empty without a picture.
    QSize picture_size() const { return has_picture() ? picture_->defaultSize() : QSize(); }
    void draw_picture(QPainter& painter, const QRectF& target) const;

    QString svg_text;
    std::unique_ptr<SvgAnimation> animation; ///< null if the document stands still
    QTimer* frame_timer = nullptr;           ///< owned by the widget; runs while the document moves
    QElapsedTimer clock;                     ///< since the document was opened

private:
    double present_time() const;
    std::shared_ptr<QSvgRenderer> picture_;
};

} // namespace Corvel
