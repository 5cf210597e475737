#include "desktop/widgets/editor_widget.h"

#include "desktop/widgets/code_edit.h"
#include "desktop/widgets/focus_ring.h"
#include "desktop/widgets/icon_widget.h"
#include "desktop/widgets/log_view.h"
#include "desktop/widgets/sizing.h"

#include <QFocusEvent>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollBar>
#include <QTextEdit>
#include <QVariantAnimation>

#include <algorithm>
#include <limits>

namespace Corvel {

namespace {

constexpr int LABEL_MOTION_MS = 150;
/// Between the content's edge, or the prefix icon, and the text.
constexpr int TEXT_INDENT = 4;

/// Breaks lines in time when a word that is too long for words is pasted.
class LinesEdit : public CodeEdit {
public:
    using CodeEdit::CodeEdit;

protected:
    void insertFromMimeData(const QMimeData* source) override {
        if (source->hasText() && has_overlong_word(source->text()))
            setWordWrapMode(QTextOption::WrapAnywhere);
        CodeEdit::insertFromMimeData(source);
    }
};

int line_height(QFont font, double pixels) {
    font.setPixelSize(whole_pixels(pixels + 0.5));
    return QFontMetrics(font).height();
}

} // namespace

EditorWidget::EditorWidget(QWidget* parent)
    : VBoxWidget(parent)
    , line_edit(new QLineEdit(this))
    , floating_label(new QLabel(this))
    , label_animation(new QVariantAnimation(this)) {
    line_edit->setFrame(false);
    line_edit->setMaxLength(std::numeric_limits<int>::max());
    line_edit->installEventFilter(this);
    floating_label->setAttribute(Qt::WA_TransparentForMouseEvents);
    floating_label->setTextFormat(Qt::PlainText);
    label_animation->setDuration(LABEL_MOTION_MS);
    label_animation->setEasingCurve(QEasingCurve::InOutCubic);
    connect(label_animation, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { place_label(value.toDouble()); });
    // Assistive programs set the text, which is no edit to the control; our own is known already.
    connect(line_edit, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text == known_text_)
            return;
        const QPointer<EditorWidget> self(this);
        join_pasted_lines();
        report_edit(line_edit->text());
        if (self)
            update_label(true);
    });
}

EditorWidget::~EditorWidget() {
    muted = true;
}

void EditorWidget::ensure_text_edit() {
    if (text_edit)
        return;
    code_edit_ = new LinesEdit(this);
    text_edit = code_edit_;
    text_edit->setFrameStyle(QFrame::NoFrame);
    // The keyboard must be able to leave.
    text_edit->setTabChangesFocus(true);
    text_edit->installEventFilter(this);
    text_edit->setAcceptRichText(false);
    text_edit->setLineWrapMode(QTextEdit::WidgetWidth);
    text_edit->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    text_edit->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    text_edit->viewport()->setAutoFillBackground(false);
    connect(text_edit, &QTextEdit::textChanged, this, [this] {
        if (!guard)
            report_edit(text_edit->toPlainText());
    });
    // A text that is hidden, or long, is laid out after it was set: the end moves away later.
    QScrollBar* bar = text_edit->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this,
            [this, bar](int value) { at_tail_ = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this] {
        if (at_tail_ && text_edit->isReadOnly())
            keep_to_tail();
    });
}

void EditorWidget::ensure_log_view() {
    if (log_view)
        return;
    log_view = new LogView(this);
    log_view->installEventFilter(this);
}

QWidget* EditorWidget::control() const {
    if (is_log)
        return log_view;
    return multiline ? static_cast<QWidget*>(text_edit) : line_edit;
}

QString EditorWidget::shown_text() const {
    if (is_log)
        return QString::fromStdString(log_view->text());
    return multiline ? text_edit->toPlainText() : line_edit->text();
}

void EditorWidget::keep_to_tail() {
    QScrollBar* bar = text_edit->verticalScrollBar();
    bar->setValue(bar->maximum());
    at_tail_ = true;
}

bool EditorWidget::eventFilter(QObject* watched, QEvent* event) {
    const bool takes_keys = watched == line_edit || watched == text_edit || watched == log_view;
    if (takes_keys && event->type() == QEvent::FocusIn)
        take_ring(static_cast<QFocusEvent*>(event)->reason());
    else if (takes_keys && event->type() == QEvent::FocusOut)
        show_ring(false);
    if (watched == line_edit && event->type() == QEvent::FocusIn) {
        update_label(true);
    } else if (watched == line_edit && event->type() == QEvent::FocusOut) {
        // Opening the field's own menu is not leaving it.
        const QPointer<EditorWidget> self(this);
        if (static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason)
            restore_if_emptied();
        if (!self)
            return true;
        update_label(true);
    }
    return VBoxWidget::eventFilter(watched, event);
}

void EditorWidget::take_ring(Qt::FocusReason reason) {
    show_ring(true);
    if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
        scroll_into_view(this);
}

void EditorWidget::mousePressEvent(QMouseEvent* event) {
    control()->setFocus(Qt::OtherFocusReason);
    event->accept();
}

void EditorWidget::resizeEvent(QResizeEvent* event) {
    VBoxWidget::resizeEvent(event);
    lay_out();
}

QSize EditorWidget::sizeHint() const {
    const int text_height = line_height(control_font(), font_size);
    const int around = insets.top() + insets.bottom();
    if (multiline)
        return {0, 3 * text_height + around + 8};
    return {line_edit->sizeHint().width(),
            line_height(control_font(), small_size) + around + text_height + 4};
}

QSize EditorWidget::minimumSizeHint() const {
    return {0, sizeHint().height()};
}

QRect EditorWidget::content_rect() const {
    return {insets.left(), insets.top(), std::max(0, width() - insets.left() - insets.right()),
            std::max(0, height() - insets.top() - insets.bottom())};
}

void EditorWidget::lay_out() {
    const QRect content = content_rect();
    if (multiline) {
        control()->setGeometry(content);
        return;
    }
    line_edit->setGeometry(content);
    line_edit->setTextMargins(prefix_space + TEXT_INDENT, line_height(control_font(), small_size),
                              0, 0);
    const int text_height = line_height(control_font(), font_size);
    const int left = content.left() + prefix_space + TEXT_INDENT;
    label_rest = {left, (height() - text_height) / 2};
    label_up = {left, std::max(insets.top() - 3, 0)};
    floating_label->resize(std::max(0, content.width() - prefix_space - TEXT_INDENT), text_height);
    if (prefix_icon && prefix_space >= 1)
        prefix_icon->setGeometry(content.left() + TEXT_INDENT, (height() - prefix_size) / 2,
                                 prefix_size, prefix_size);
    place_label(label_progress);
}

void EditorWidget::place_label(double progress) {
    label_progress = progress;
    const auto between = [progress](int from, int to) {
        return int(from + (to - from) * progress);
    };
    floating_label->move(between(label_rest.x(), label_up.x()),
                         between(label_rest.y(), label_up.y()));
    QFont font = floating_label->font();
    font.setPixelSize(whole_pixels(font_size + (small_size - font_size) * progress + 0.5));
    font.setItalic(true);
    if (font != floating_label->font())
        floating_label->setFont(font);
}

void EditorWidget::update_label(bool animated) {
    const bool raised = !multiline && (line_edit->hasFocus() || !line_edit->text().isEmpty());
    if (animated && raised == label_raised)
        return;
    label_raised = raised;
    label_animation->stop();
    const double goal = raised ? 1.0 : 0.0;
    if (!animated)
        return place_label(goal);
    label_animation->setStartValue(label_progress);
    label_animation->setEndValue(goal);
    label_animation->start();
}

} // namespace Corvel
