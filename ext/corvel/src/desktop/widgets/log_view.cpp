#include "desktop/widgets/log_view.h"

#include "desktop/widgets/accessible_log.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextLayout>
#include <QTimerEvent>

#include <algorithm>

namespace Corvel {

namespace {

/// Around the text, as a text edit has it.
constexpr int MARGIN = 4;
constexpr int DRAG_STEP_MS = 40;
constexpr int TAB_COLUMNS = 8;

QString qt_text(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// All of its text in one line.
void lay_out_line(QTextLayout& layout) {
    constexpr double WIDER_THAN_ANY = 1e6;
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(WIDER_THAN_ANY);
    line.setPosition({0, 0});
    layout.endLayout();
}

bool is_word(char byte) {
    const auto letter = static_cast<unsigned char>(byte);
    return letter >= 0x80 || (letter >= '0' && letter <= '9') || letter == '_' ||
           (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z');
}

} // namespace

LogView::LogView(QWidget* parent)
    : QAbstractScrollArea(parent) {
    install_accessible_logs();
    setFrameStyle(QFrame::NoFrame);
    setFocusPolicy(Qt::WheelFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    viewport()->setCursor(Qt::IBeamCursor);
    measure();
}

LogView::~LogView() = default;

void LogView::set_text(const GrowingText& text) {
    if (text_.same(text))
        return;
    const GrowingText earlier = std::exchange(text_, text);
    if (!text.continues(earlier)) {
        lines_.clear();
        anchor_ = caret_ = top_byte_ = 0;
        at_tail_ = true;
    }
    lines_.grow(text_.view());
    arrange();
    tell_log_changed(*this, earlier);
    viewport()->update();
}

void LogView::set_placeholder(const QString& text) {
    placeholder_ = text;
    viewport()->update();
}

void LogView::set_color(const QColor& color) {
    color_ = color;
    viewport()->update();
}

void LogView::set_wrap(bool on) {
    wrap_ = on;
    setHorizontalScrollBarPolicy(on ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    arrange();
    viewport()->update();
}

int LogView::rows_in_view() const {
    return std::max((viewport()->height() - 2 * MARGIN) / row_height_, 1);
}

std::size_t LogView::top_row() const {
    return static_cast<std::size_t>(verticalScrollBar()->value());
}

/// Where the row at the top begins. At the end of the log the last row ends at the bottom.
int LogView::origin() const {
    const QScrollBar* bar = verticalScrollBar();
    if (bar->value() < bar->maximum() || bar->maximum() == 0)
        return MARGIN;
    return viewport()->height() - MARGIN - rows_in_view() * row_height_;
}

void LogView::measure() {
    QTextLayout sample(QStringLiteral("x"), font());
    lay_out_line(sample);
    row_height_ = std::max(qCeil(sample.lineAt(0).height()), 1);
    column_width_ = std::max(QFontMetrics(font()).horizontalAdvance(QLatin1Char('x')), 1);
}

/// Breaks the lines for the present width and sets the bars. What is at the top stays there, or
/// what is at the end.
void LogView::arrange() {
    if (arranging_)
        return;
    const QScopedValueRollback<bool> once(arranging_, true);
    // A bar that comes or goes changes the room for the rows.
    QSize room;
    for (int pass = 0; pass < 3 && room != viewport()->size(); ++pass) {
        room = viewport()->size();
        set_bars();
    }
    at_tail_ = at_tail_ || verticalScrollBar()->value() == verticalScrollBar()->maximum();
}

void LogView::set_bars() {
    const std::string_view text = text_.view();
    const int across = std::max((viewport()->width() - 2 * MARGIN) / column_width_, 1);
    lines_.set_columns(text, wrap_ ? static_cast<std::size_t>(across) : 0);

    QScrollBar* across_bar = horizontalScrollBar();
    const int widest = wrap_ ? 0 : static_cast<int>(lines_.widest()) * column_width_;
    across_bar->setSingleStep(column_width_);
    across_bar->setPageStep(across * column_width_);
    across_bar->setRange(0, std::max(widest + 2 * MARGIN - viewport()->width(), 0));

    QScrollBar* bar = verticalScrollBar();
    bar->setPageStep(rows_in_view());
    bar->setRange(0, std::max(static_cast<int>(lines_.row_count()) - rows_in_view(), 0));
    if (at_tail_)
        bar->setValue(bar->maximum());
    else
        bar->setValue(static_cast<int>(lines_.row_at(text, top_byte_)));
}

void LogView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    arrange();
}

void LogView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        measure();
        arrange();
    }
}

void LogView::scrollContentsBy(int, int) {
    if (!arranging_) {
        at_tail_ = verticalScrollBar()->value() == verticalScrollBar()->maximum();
        const auto top = lines_.rows(text_.view(), top_row(), 1);
        top_byte_ = top.empty() ? 0 : top.front().begin;
    }
    viewport()->update();
}

/// What stands in a row, as it is drawn: one letter for each letter of the text.
QString LogView::row_text(LogLines::Range row) const {
    QString shown = qt_text(text_.view().substr(row.begin, row.end - row.begin));
    for (QChar& letter : shown)
        if (letter < QLatin1Char(' ') && letter != QLatin1Char('\t'))
            letter = QLatin1Char(' ');
    return shown;
}

void LogView::lay_out_row(QTextLayout& layout, LogLines::Range row) const {
    layout.setFont(font());
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setTabStopDistance(TAB_COLUMNS * column_width_);
    layout.setTextOption(option);
    layout.setText(row_text(row));
    lay_out_line(layout);
}

void LogView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    if (text_.empty()) {
        QColor faint = color_;
        faint.setAlphaF(0.5F);
        painter.setPen(faint);
        painter.drawText(viewport()->rect().adjusted(MARGIN, MARGIN, -MARGIN, -MARGIN),
                         Qt::AlignTop | Qt::TextWordWrap, placeholder_);
        return;
    }
    painter.setPen(color_);
    const auto [first, last] = std::minmax(anchor_, caret_);
    // The row above may be seen in part.
    const std::size_t above = std::min<std::size_t>(top_row(), 1);
    QPointF place(MARGIN - horizontalScrollBar()->value(),
                  origin() - static_cast<int>(above) * row_height_);
    const auto count = static_cast<std::size_t>(viewport()->height() / row_height_ + 2);
    for (const LogLines::Range& row : lines_.rows(text_.view(), top_row() - above, count)) {
        QTextLayout layout;
        lay_out_row(layout, row);
        QList<QTextLayout::FormatRange> marked;
        if (first < row.end && last > row.begin) {
            const auto units = [&](std::size_t byte) {
                const std::size_t to = std::clamp(byte, row.begin, row.end);
                return static_cast<int>(
                    qt_text(text_.view().substr(row.begin, to - row.begin)).size());
            };
            QTextLayout::FormatRange range;
            range.start = units(first);
            range.length = units(last) - range.start;
            range.format.setBackground(palette().highlight());
            range.format.setForeground(palette().highlightedText());
            marked.append(range);
        }
        layout.draw(&painter, place, marked);
        place.ry() += row_height_;
    }
}

std::size_t LogView::byte_at(QPoint place) const {
    const int from_top = place.y() - origin();
    const int row = verticalScrollBar()->value() + from_top / row_height_ - (from_top < 0);
    const auto found = lines_.rows(text_.view(), static_cast<std::size_t>(std::max(row, 0)), 1);
    if (found.empty())
        return text_.size();
    QTextLayout layout;
    lay_out_row(layout, found.front());
    const int unit =
        layout.lineAt(0).xToCursor(place.x() - MARGIN + horizontalScrollBar()->value());
    const QString before = layout.text().left(unit);
    return std::min(found.front().begin + static_cast<std::size_t>(before.toUtf8().size()),
                    found.front().end);
}

QRect LogView::letter_rect(std::size_t byte) const {
    const std::size_t row = lines_.row_at(text_.view(), byte);
    const auto found = lines_.rows(text_.view(), row, 1);
    int x = 0;
    if (!found.empty() && byte >= found.front().begin) {
        QTextLayout layout;
        lay_out_row(layout, {found.front().begin, std::min(byte, found.front().end)});
        x = qRound(layout.lineAt(0).naturalTextWidth());
    }
    return {MARGIN + x - horizontalScrollBar()->value(),
            origin() + (static_cast<int>(row) - verticalScrollBar()->value()) * row_height_,
            column_width_, row_height_};
}

void LogView::show_byte(std::size_t byte) {
    const int row = static_cast<int>(lines_.row_at(text_.view(), byte));
    QScrollBar* bar = verticalScrollBar();
    if (row < bar->value() || row >= bar->value() + rows_in_view())
        bar->setValue(row);
}

QString LogView::selected_text() const {
    const auto [first, last] = std::minmax(anchor_, caret_);
    return qt_text(text_.view().substr(first, last - first));
}

void LogView::select(std::size_t anchor, std::size_t caret) {
    anchor_ = std::min(anchor, text_.size());
    caret_ = std::min(caret, text_.size());
    viewport()->update();
}

void LogView::select_all() {
    select(0, text_.size());
}

void LogView::copy() const {
    if (has_selection())
        QApplication::clipboard()->setText(selected_text());
}

void LogView::keyPressEvent(QKeyEvent* event) {
    QScrollBar* bar = verticalScrollBar();
    if (event == QKeySequence::Copy)
        copy();
    else if (event == QKeySequence::SelectAll)
        select_all();
    else if (event == QKeySequence::MoveToStartOfDocument || event->key() == Qt::Key_Home)
        bar->setValue(0);
    else if (event == QKeySequence::MoveToEndOfDocument || event->key() == Qt::Key_End)
        bar->setValue(bar->maximum());
    else if (event->key() == Qt::Key_Space)
        bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
    else
        QAbstractScrollArea::keyPressEvent(event); // arrows and pages
}

void LogView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return QAbstractScrollArea::mousePressEvent(event);
    const std::size_t byte = byte_at(event->pos());
    select(event->modifiers() & Qt::ShiftModifier ? anchor_ : byte, byte);
}

void LogView::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton))
        return;
    extend_selection(event->pos());
    if (viewport()->rect().contains(event->pos()))
        drag_timer_.stop();
    else if (!drag_timer_.isActive())
        drag_timer_.start(DRAG_STEP_MS, this);
}

void LogView::extend_selection(QPoint place) {
    dragged_to_ = place;
    const QRect inside = viewport()->rect();
    select(anchor_, byte_at({place.x(), std::clamp(place.y(), inside.top(), inside.bottom())}));
}

void LogView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != drag_timer_.timerId())
        return QAbstractScrollArea::timerEvent(event);
    const int beyond =
        dragged_to_.y() < 0 ? dragged_to_.y() : std::max(dragged_to_.y() - viewport()->height(), 0);
    verticalScrollBar()->setValue(verticalScrollBar()->value() + beyond / row_height_ +
                                  (beyond > 0) - (beyond < 0));
    extend_selection(dragged_to_);
}

void LogView::mouseReleaseEvent(QMouseEvent* event) {
    drag_timer_.stop();
    QClipboard* clipboard = QApplication::clipboard();
    if (event->button() == Qt::LeftButton && has_selection() && clipboard->supportsSelection())
        clipboard->setText(selected_text(), QClipboard::Selection);
}

void LogView::mouseDoubleClickEvent(QMouseEvent* event) {
    const std::string_view text = text_.view();
    std::size_t first = byte_at(event->pos());
    std::size_t last = first;
    while (first > 0 && is_word(text[first - 1]))
        --first;
    while (last < text.size() && is_word(text[last]))
        ++last;
    select(first, last);
}

void LogView::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    QAction* copying = menu.addAction(tr("&Copy"), QKeySequence::Copy, this, &LogView::copy);
    copying->setEnabled(has_selection());
    menu.addSeparator();
    menu.addAction(tr("Select All"), QKeySequence::SelectAll, this, &LogView::select_all)
        ->setEnabled(!text_.empty());
    menu.exec(event->globalPos());
}

} // namespace Corvel
