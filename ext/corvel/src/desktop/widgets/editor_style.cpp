#include "desktop/widgets/code_edit.h"
#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/icon_widget.h"
#include "desktop/widgets/log_view.h"
#include "desktop/widgets/painting.h"
#include "desktop/widgets/sizing.h"
#include "desktop/widgets/style_sheet.h"
#include "desktop/widgets/wrap_label.h"

#include <QFont>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextEdit>

#include <algorithm>

// How an editor takes the style of its node.

namespace Corvel {

namespace {

constexpr double DEFAULT_FONT_SIZE = 14.0;
constexpr double SMALLEST_LABEL_SIZE = 9.0;
constexpr double PREFIX_OPACITY = 0.5;
/// A line of text keeps so much free before its first letter; the label above it does the same.
constexpr int CONTROL_MARGIN = 2;

QMargins insets_of(const NodeStyle& style) {
    const int border = whole_pixels(style.border_thickness);
    return {whole_pixels(style.padding_left) + border, whole_pixels(style.padding_top) + border,
            whole_pixels(style.padding_right) + border,
            whole_pixels(style.padding_bottom) + border};
}

/// Measured, since what a font says of itself depends on how it was found.
bool has_one_width(const QFont& font) {
    const QFontMetrics metrics(font);
    return metrics.horizontalAdvance(QLatin1Char('i')) ==
           metrics.horizontalAdvance(QLatin1Char('W'));
}

void set_placeholder_color(QTextEdit* edit, QColor color) {
    color.setAlphaF(0.5F);
    QPalette palette = edit->palette();
    if (palette.color(QPalette::PlaceholderText) == color)
        return;
    palette.setColor(QPalette::PlaceholderText, color);
    edit->setPalette(palette);
}

} // namespace

void apply_editor_style(EditorWidget* editor, const SharedStyle& style,
                        const std::string& placeholder, const GrowingText& text, bool first) {
    editor->set_style(style);
    editor->font_size = style->font_size > 0 ? style->font_size : DEFAULT_FONT_SIZE;
    editor->small_size = std::max(editor->font_size * 0.72, SMALLEST_LABEL_SIZE);
    editor->insets = insets_of(style);
    editor->wanted_text = text;
    editor->family = style->font_family;
    editor->switch_control(first);
    const QString hint = QString::fromStdString(placeholder);
    if (editor->is_log)
        editor->style_log(hint);
    else if (editor->multiline)
        editor->style_lines(hint);
    else
        editor->style_line(hint);
    editor->apply_text(first);
    editor->style_prefix();
    editor->updateGeometry();
    editor->lay_out();
    if (!editor->multiline)
        editor->update_label(false);
}

/// Shows the control of one line, of many or of a log. A field that changes takes its text along.
void EditorWidget::switch_control(bool first) {
    const bool many_lines = style->multiline;
    // Colours and search are for what people read; beyond that a log is only kept quick.
    constexpr std::size_t LARGE_LOG = 256 * 1024;
    const bool bare = style->tag.empty() || wanted_text.size() > LARGE_LOG;
    const bool log = many_lines && style->read_only && bare && has_one_width(control_font());
    const bool changed = !first && (multiline != many_lines || is_log != log);
    QString held;
    if (changed && wanted_text == seen_text)
        held = is_log ? shown_text() : known_text_;
    if (changed && is_log)
        log_view->set_text({});
    multiline = many_lines;
    is_log = log;
    if (log)
        ensure_log_view();
    else if (many_lines)
        ensure_text_edit();
    if (log_view)
        log_view->setVisible(log);
    if (text_edit)
        text_edit->setVisible(many_lines && !log);
    line_edit->setVisible(!many_lines);
    floating_label->setVisible(!many_lines);
    if (!changed)
        return;
    if (log)
        return log_view->set_text(held.toStdString());
    if (many_lines) // what it held when it was last shown
        known_text_ = text_edit->toPlainText();
    show_text(held);
}

void EditorWidget::style_log(const QString& placeholder) {
    log_view->setFont(control_font());
    log_view->set_color(text_color());
    log_view->set_wrap(style->wrap);
    log_view->set_placeholder(placeholder);
    log_view->setAccessibleName(placeholder.isEmpty() ? objectName() : placeholder);
    style_scroll_bar(log_view->verticalScrollBar(), text_color());
    style_scroll_bar(log_view->horizontalScrollBar(), text_color());
}

void EditorWidget::style_lines(const QString& placeholder) {
    const QScopedValueRollback<bool> quiet(guard, true);
    text_edit->setReadOnly(style->read_only);
    text_edit->setLineWrapMode(style->wrap ? QTextEdit::WidgetWidth : QTextEdit::NoWrap);
    text_edit->setHorizontalScrollBarPolicy(style->wrap ? Qt::ScrollBarAlwaysOff
                                                        : Qt::ScrollBarAsNeeded);
    set_sheet(text_edit, QLatin1String("QTextEdit { background: transparent; border: none;") +
                             color_rule(QString::fromStdString(style->text_color)) +
                             QLatin1String(" }"));
    text_edit->setFont(control_font());
    // The hint is written in the viewport's font, which does not follow under a style sheet.
    text_edit->viewport()->setFont(control_font());
    text_edit->setPlaceholderText(placeholder);
    text_edit->setAccessibleName(placeholder.isEmpty() ? objectName() : placeholder);
    set_placeholder_color(text_edit, text_color());
    code_edit_->set_language(QString::fromStdString(style->tag), text_color());
    code_edit_->mark_line(QString::fromStdString(style->data).toInt());
    style_scroll_bar(text_edit->verticalScrollBar(), text_color());
    style_scroll_bar(text_edit->horizontalScrollBar(), text_color());
}

void EditorWidget::style_line(const QString& placeholder) {
    const QColor color = text_color();
    set_sheet(line_edit, QLatin1String("QLineEdit { background: transparent; border: none;") +
                             color_rule(QString::fromStdString(style->text_color)) +
                             QLatin1String(" }"));
    set_sheet(floating_label,
              QStringLiteral("background: transparent; color: rgba(%1, %2, %3, 0.5);")
                  .arg(color.red())
                  .arg(color.green())
                  .arg(color.blue()));
    line_edit->setEchoMode(style->secret ? QLineEdit::Password : QLineEdit::Normal);
    line_edit->setReadOnly(style->read_only);
    line_edit->setFont(control_font());
    line_edit->setAccessibleName(placeholder.isEmpty() ? objectName() : placeholder);
    floating_label->setText(placeholder);
    floating_label->setIndent(CONTROL_MARGIN);
}

void EditorWidget::style_prefix() {
    if (multiline || style->source.empty()) {
        if (prefix_icon)
            prefix_icon->hide();
        prefix_space = 0;
        return;
    }
    if (!prefix_icon) {
        prefix_icon = new IconWidget(style->source, this);
        prefix_icon->set_opacity(PREFIX_OPACITY);
    } else {
        prefix_icon->set_source(style->source);
    }
    prefix_icon->set_color(style->text_color);
    prefix_icon->raise();
    prefix_icon->show();
    prefix_size = whole_pixels(font_size * 1.15 + 0.5);
    prefix_space = prefix_size + whole_pixels(font_size * 0.4 + 0.5);
}

QFont EditorWidget::control_font() const {
    QFont result = font();
    result.setPixelSize(whole_pixels(font_size + 0.5));
    result.setItalic(false);
    set_line_font(result, family);
    return result;
}

QColor EditorWidget::text_color() const {
    const QColor color = color_of(style->text_color);
    return color.isValid() ? color : palette().color(QPalette::WindowText);
}

} // namespace Corvel
