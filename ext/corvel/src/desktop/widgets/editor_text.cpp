#include "desktop/widgets/editor_widget.h"

#include <QLineEdit>
#include <QScopedValueRollback>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

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

void EditorWidget::apply_text(bool first) {
    if (first ? !wanted_text.isEmpty() : wanted_text != seen_text)
        show_text(wanted_text);
    seen_text = wanted_text;
}

void EditorWidget::push_text(const std::string& text) {
    show_text(QString::fromStdString(text));
    if (!multiline)
        update_label(false);
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
    if (!append_to_log(text) && as_kept(text) != as_kept(known_text_)) {
        text_edit->setPlainText(text);
        // A control shown for the first time scrolls to its caret.
        if (text_edit->isReadOnly())
            text_edit->moveCursor(QTextCursor::End);
    }
    known_text_ = text;
    if (text_edit->isReadOnly())
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

void EditorWidget::restore_if_emptied() {
    if (muted || multiline || !line_edit->text().isEmpty() || wanted_text.isEmpty())
        return;
    show_text(wanted_text);
    if (const auto handler = on_text_changed)
        handler(wanted_text.toStdString());
}

} // namespace Corvel
