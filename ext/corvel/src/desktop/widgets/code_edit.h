#pragma once

#include <QTextEdit>

class QLabel;
class QLineEdit;

namespace Corvel {

class CodeColors;

/// A text edit of many lines that can number them, colour their language, mark one of them and find
/// words: Ctrl+F opens a field at the upper right, Return goes on, Shift+Return back, Escape closes
/// it.
class CodeEdit : public QTextEdit {
    Q_OBJECT
public:
    explicit CodeEdit(QWidget* parent);
    ~CodeEdit() override;

    /// The language of the text: "json" and "markdown", whose lines get numbers, or "log". Empty:
    /// plain text.
    void set_language(const QString& language, const QColor& ink);
    /// Marks the line of that number, which begins at 1; 0: none. Scrolls to another one than
    /// before, unless somebody is writing elsewhere in the text.
    void mark_line(int number);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    friend class LineNumbers;
    void open_search();
    void close_search();
    void search(bool backwards, bool from_here);
    void tell_matches();
    void place();
    void fit_numbers();
    void show_marks();
    void paint_numbers(QWidget* column);

    QWidget* numbers_;
    QWidget* search_bar_ = nullptr; ///< null until first opened
    QLineEdit* search_field_ = nullptr;
    QLabel* search_count_ = nullptr;
    CodeColors* colors_ = nullptr; ///< null until there is a language
    QColor ink_;
    int marked_ = 0;
};

} // namespace Corvel
