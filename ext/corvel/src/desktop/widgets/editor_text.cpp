#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/log_view.h"

#include <QLineEdit>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

#include <algorithm>

// The text of an editor: what is written into its control, and what is reported of it.

namespace Corvel {

namespace {

/// The text as a text edit gives it back: it keeps one kind of line end and of blank.
QString as_kept(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    for (const char16_t end : {u'\r', u'\u2028', u'\u2029', u'\ufdd0', u'\ufdd1'})
        text.replace(QChar(end), QLatin1Char('\n'));
    return text.replace(QChar::Nbsp, QLatin1Char(' '));
}

} // namespace

bool has_overlong_word(const QString& text) {
    constexpr qsizetype OVERLONG = 10000;
    qsizetype length = 0;
    return std::any_of(text.begin(), text.end(), [&length](QChar letter) {
        length = letter.isSpace() ? 0 : length + 1;
        return length > OVERLONG;
    });
}

void EditorWidget::apply_text(bool first) {
    if (first ? !wanted_text.empty() : wanted_text != seen_text)
        show_given(wanted_text);
    seen_text = wanted_text;
}

void EditorWidget::push_text(const GrowingText& text) {
    show_given(text);
    if (!multiline)
        update_label(false);
}

void EditorWidget::show_given(const GrowingText& text) {
    if (is_log)
        log_view->set_text(text);
    else
        show_text(QString::fromStdString(text));
}

/// Puts `text` in the control. One that holds it already is left alone: setting it anew would take
/// the caret to the start.
void EditorWidget::show_text(const QString& text) {
    if (multiline)
        return show_lines(text);
    known_text_ = text;
    if (line_edit->text() == text)
        return;
    line_edit->setText(text);
    // A text longer than its field is read from its beginning.
    if (!line_edit->hasFocus())
        line_edit->setCursorPosition(0);
}

void EditorWidget::show_lines(const QString& text) {
    const QScopedValueRollback<bool> quiet(guard, true);
    const bool scrolled_away = text_edit->isReadOnly() && !at_tail_;
    const bool continued = append_to_log(text);
    if (!continued && as_kept(text) != as_kept(known_text_)) {
        text_edit->setWordWrapMode(has_overlong_word(text)
                                       ? QTextOption::WrapAnywhere
                                       : QTextOption::WrapAtWordBoundaryOrAnywhere);
        text_edit->setPlainText(text);
        // A control shown for the first time scrolls to its caret.
        if (text_edit->isReadOnly())
            text_edit->moveCursor(QTextCursor::End);
    }
    known_text_ = text;
    if (text_edit->isReadOnly() && !(continued && scrolled_away))
        keep_to_tail();
}

/// Adds what is new if `text` continues the log that is shown, which costs the new part only.
bool EditorWidget::append_to_log(const QString& text) {
    if (!text_edit->isReadOnly() || known_text_.isEmpty() || !text.startsWith(known_text_))
        return false;
    const QString rest = text.sliced(known_text_.size());
    if (known_text_.endsWith(QLatin1Char('\r')) && rest.startsWith(QLatin1Char('\n')))
        return false;
    QTextDocument* document = text_edit->document();
    document->setUndoRedoEnabled(false);
    QTextCursor end(document);
    end.movePosition(QTextCursor::End);
    end.insertText(as_kept(rest));
    document->setUndoRedoEnabled(true);
    return true;
}

/// A control also signals when nothing was edited, and gives back a text that differs from the one
/// shown in its line ends alone: neither is an edit.
void EditorWidget::report_edit(const QString& text) {
    if (text == (multiline ? as_kept(known_text_) : known_text_))
        return;
    known_text_ = text;
    if (muted)
        return;
    if (const auto handler = on_text_changed)
        handler(text.toStdString());
}

/// A field of one line takes a pasted text of several as one, without an end behind it.
void EditorWidget::join_pasted_lines() {
    static const QRegularExpression line_end(
        QStringLiteral("[ \t]*(?:\r\n|[\n\r\\x{2028}\\x{2029}])[ \t]*"));
    const QString now = line_edit->text();
    const qsizetype end = line_edit->cursorPosition();
    if (!now.contains(line_end))
        return;
    const auto [first_change, ignored] =
        std::mismatch(known_text_.begin(), known_text_.end(), now.begin(), now.begin() + end);
    const qsizetype start = first_change - known_text_.begin();
    QString pasted = now.sliced(start, end - start);
    if (!pasted.contains(line_end))
        return;
    const bool ends_open = !line_end.match(pasted.right(1)).hasMatch();
    pasted.replace(line_end, QStringLiteral(" "));
    if (!ends_open)
        pasted.chop(1);
    const QSignalBlocker quiet(line_edit);
    line_edit->setText(now.left(start) + pasted + now.sliced(end));
    line_edit->setCursorPosition(static_cast<int>(start + pasted.size()));
}

void EditorWidget::restore_if_emptied() {
    if (muted || multiline || !line_edit->text().isEmpty() || wanted_text.empty())
        return;
    show_given(wanted_text);
    if (const auto handler = on_text_changed)
        handler(wanted_text);
}

} // namespace Corvel
