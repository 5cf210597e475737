#pragma once

#include "desktop/widgets/vbox_widget.h"
#include "runtime/growing_text.h"

#include <QMargins>
#include <QPoint>
#include <QString>

#include <functional>
#include <string>

class QFont;
class QLabel;
class QLineEdit;
class QTextEdit;
class QVariantAnimation;

namespace Corvel {

class CodeEdit;
class IconWidget;
class LogView;

/// A text field in a painted box: one line with a label that floats above the text, or many lines.
/// A read-only field of many lines is a log and stays at its end, unless its reader scrolled away.
///
/// The application's text is written only when it differs from the last one given, so that what
/// the user types stays; only real edits are reported, and only to `on_text_changed`.
class EditorWidget : public VBoxWidget {
    Q_OBJECT
public:
    explicit EditorWidget(QWidget* parent = nullptr);
    ~EditorWidget() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Shows `text` whatever the field holds; not reported.
    void push_text(const GrowingText& text);

    /// What takes the keys now.
    QWidget* control() const;
    /// The text in it.
    QString shown_text() const;

    std::function<void(const std::string&)> on_text_changed;
    QLineEdit* line_edit = nullptr;
    QTextEdit* text_edit = nullptr; ///< null until the field first has many lines
    LogView* log_view = nullptr;    ///< null until the field first is a log of fixed pitch
    bool multiline = false;
    bool is_log = false; ///< many lines, shown by `log_view`
    QLabel* floating_label = nullptr;
    QVariantAnimation* label_animation = nullptr;
    GrowingText wanted_text; ///< the application's text as last given
    GrowingText seen_text;   ///< `wanted_text` when it was last applied
    bool guard = false;      ///< the text is being set by us
    /// While set, nothing is reported and an emptied field is not restored: the view sets it on
    /// fields that are about to go or to change their place.
    bool muted = false;
    std::string family;
    double font_size = 14.0;
    double small_size = 10.0; ///< of the raised label
    QMargins insets;
    QPoint label_rest;         ///< the label's place over an empty field
    QPoint label_up;           ///< and above a text
    double label_progress = 0; ///< 0: at rest, 1: up
    bool label_raised = false;
    IconWidget* prefix_icon = nullptr; ///< null until first needed
    int prefix_size = 0;
    int prefix_space = 0;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    friend void apply_editor_style(EditorWidget*, const SharedStyle&, const std::string&,
                                   const GrowingText&, bool);
    void ensure_text_edit();
    void ensure_log_view();
    void switch_control(bool first);
    void style_lines(const QString& placeholder);
    void style_log(const QString& placeholder);
    void style_line(const QString& placeholder);
    void style_prefix();
    void apply_text(bool first);
    void show_given(const GrowingText& text);
    void show_text(const QString& text);
    void show_lines(const QString& text);
    bool append_to_log(const QString& text);
    void report_edit(const QString& text);
    void join_pasted_lines();
    void restore_if_emptied();
    void keep_to_tail();
    void take_ring(Qt::FocusReason reason);
    QFont control_font() const;
    QColor text_color() const;
    QRect content_rect() const;
    void lay_out();
    void place_label(double progress);
    void update_label(bool animated);

    CodeEdit* code_edit_ = nullptr; ///< `text_edit` as what it is
    QString known_text_;  ///< what the control holds, as last shown by us or edited by the user
    bool at_tail_ = true; ///< a log: its end is in view
};

/// Whether a word is so long that seeking the place to break it would take time by the square of
/// its length.
bool has_overlong_word(const QString& text);

/// Brings the field up to its node: `style`, `placeholder` and the application's `text`. `first`
/// tells that the field has just been made.
void apply_editor_style(EditorWidget* editor, const SharedStyle& style,
                        const std::string& placeholder, const GrowingText& text, bool first);

} // namespace Corvel
