#pragma once

#include "desktop/widgets/log_lines.h"
#include "runtime/growing_text.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QColor>
#include <QString>

#include <utility>

class QTextLayout;

namespace Corvel {

/// A log of any length: text to read, select and copy, that follows its end unless its reader
/// scrolled away. It draws from the text that the application holds and keeps no copy; growing,
/// resizing and being made anew cost next to nothing beside a document with a million lines. For
/// fonts of one width only.
class LogView : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit LogView(QWidget* parent = nullptr);
    ~LogView() override;

    /// Shows `text`. One that continues the present text leaves selection and place alone; any
    /// other is shown at its end.
    void set_text(const GrowingText& text);
    const GrowingText& text() const { return text_; }
    /// Shown faintly while there is no text.
    void set_placeholder(const QString& text);
    void set_color(const QColor& color);
    /// Long lines go on in the next row; otherwise they are scrolled to.
    void set_wrap(bool on);

    bool has_selection() const { return anchor_ != caret_; }
    /// Where the selection begins and where it ends, which may lie before.
    std::pair<std::size_t, std::size_t> selection() const { return {anchor_, caret_}; }
    QString selected_text() const;
    /// From byte to byte of the text.
    void select(std::size_t anchor, std::size_t caret);
    void select_all();
    void copy() const;
    /// Brings the byte into view.
    void show_byte(std::size_t byte);
    /// The byte of the letter under a place in the viewport.
    std::size_t byte_at(QPoint place) const;
    /// Of the letter at a byte, in the viewport; outside it if the letter is not in view.
    QRect letter_rect(std::size_t byte) const;
    const LogLines& lines() const { return lines_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void arrange();
    void set_bars();
    void measure();
    int rows_in_view() const;
    int origin() const;
    std::size_t top_row() const;
    QString row_text(LogLines::Range row) const;
    void lay_out_row(QTextLayout& layout, LogLines::Range row) const;
    void extend_selection(QPoint place);

    GrowingText text_;
    LogLines lines_;
    QString placeholder_;
    QColor color_;
    bool wrap_ = true;
    bool at_tail_ = true;
    bool arranging_ = false;
    int row_height_ = 1;
    int column_width_ = 1;
    std::size_t top_byte_ = 0; ///< of the row that the reader scrolled to
    std::size_t anchor_ = 0;
    std::size_t caret_ = 0;
    QPoint dragged_to_;
    QBasicTimer drag_timer_; ///< while the pointer is dragged beyond the edge
};

} // namespace Corvel
