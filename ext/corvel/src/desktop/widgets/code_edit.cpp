#include "desktop/widgets/code_edit.h"

#include "desktop/widgets/code_colors.h"

#include <QAbstractTextDocumentLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace Corvel {

namespace {

constexpr int NUMBER_GAP = 12; ///< between the numbers and the text, in pixels
constexpr int FEWEST_DIGITS = 2;
constexpr float NUMBER_STRENGTH = 0.55F;
/// The colour of danger, under a text that stays readable.
constexpr QColor MARK(198, 47, 69, 90);
constexpr int SEARCH_WIDTH = 260;
constexpr int SEARCH_HEIGHT = 34;
constexpr int SEARCH_MARGIN = 4;
/// Beyond so many the count is not worth its time.
constexpr int MOST_COUNTED = 999;

int digits_of(int number) {
    int digits = 1;
    for (; number >= 10; number /= 10)
        ++digits;
    return digits;
}

} // namespace

/// The column of numbers at the left of the text.
class LineNumbers : public QWidget {
public:
    explicit LineNumbers(CodeEdit* edit)
        : QWidget(edit)
        , edit_(edit) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override { edit_->paint_numbers(this); }

private:
    CodeEdit* edit_;
};

CodeEdit::CodeEdit(QWidget* parent)
    : QTextEdit(parent)
    , numbers_(new LineNumbers(this)) {
    numbers_->hide();
    connect(document(), &QTextDocument::blockCountChanged, this, [this] { fit_numbers(); });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, numbers_,
            qOverload<>(&QWidget::update));
    connect(this, &QTextEdit::textChanged, numbers_, qOverload<>(&QWidget::update));
}

CodeEdit::~CodeEdit() = default;

void CodeEdit::set_language(const QString& language, const QColor& ink) {
    ink_ = ink;
    numbers_->setVisible(!language.isEmpty() && language != QLatin1String("log"));
    if (!colors_ && !language.isEmpty())
        colors_ = new CodeColors(document());
    if (colors_)
        colors_->set_look(language, ink);
    fit_numbers();
    show_marks();
}

void CodeEdit::mark_line(int number) {
    if (number == marked_)
        return;
    marked_ = number;
    show_marks();
    const QTextBlock block = document()->findBlockByNumber(number - 1);
    if (number < 1 || !block.isValid() || hasFocus())
        return;
    const QRectF place = document()->documentLayout()->blockBoundingRect(block);
    QScrollBar* bar = verticalScrollBar();
    if (place.top() < bar->value() || place.bottom() > bar->value() + viewport()->height())
        bar->setValue(int(place.top()) - viewport()->height() / 3);
}

void CodeEdit::show_marks() {
    QList<ExtraSelection> marks;
    const QTextBlock block = document()->findBlockByNumber(marked_ - 1);
    if (marked_ > 0 && block.isValid()) {
        ExtraSelection mark;
        mark.format.setBackground(MARK);
        mark.format.setProperty(QTextFormat::FullWidthSelection, true);
        mark.cursor = QTextCursor(block);
        marks.append(mark);
    }
    setExtraSelections(marks);
}

void CodeEdit::fit_numbers() {
    const int digits = std::max(digits_of(document()->blockCount()), FEWEST_DIGITS);
    const int width = numbers_->isHidden()
                          ? 0
                          : digits * fontMetrics().horizontalAdvance(QLatin1Char('9')) + NUMBER_GAP;
    if (viewportMargins().left() != width)
        setViewportMargins(width, 0, 0, 0);
    place();
}

void CodeEdit::place() {
    numbers_->setGeometry(0, 0, viewportMargins().left(), viewport()->height());
    if (search_bar_)
        search_bar_->setGeometry(std::max(viewport()->geometry().right() - SEARCH_WIDTH, 0),
                                 SEARCH_MARGIN, std::min(SEARCH_WIDTH, width()), SEARCH_HEIGHT);
}

void CodeEdit::resizeEvent(QResizeEvent* event) {
    QTextEdit::resizeEvent(event);
    place();
}

/// Only the lines on the screen are asked for: the first one is found by its place.
void CodeEdit::paint_numbers(QWidget* column) {
    QPainter painter(column);
    painter.setFont(font());
    QColor color = ink_;
    color.setAlphaF(NUMBER_STRENGTH);
    painter.setPen(color);
    const int top = verticalScrollBar()->value();
    const int line = fontMetrics().height();
    const int right = column->width() - NUMBER_GAP;
    QTextBlock block = cursorForPosition(QPoint(0, 0)).block();
    for (; block.isValid(); block = block.next()) {
        const QRectF place = document()->documentLayout()->blockBoundingRect(block);
        const int y = int(place.top()) - top;
        if (y > column->height())
            break;
        painter.drawText(0, y, right, line, Qt::AlignRight,
                         QString::number(block.blockNumber() + 1));
    }
}

void CodeEdit::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Find))
        return open_search();
    QTextEdit::keyPressEvent(event);
}

void CodeEdit::open_search() {
    if (!search_bar_) {
        search_bar_ = new QWidget(this);
        search_bar_->setAutoFillBackground(true);
        search_bar_->setBackgroundRole(QPalette::Button);
        search_bar_->setCursor(Qt::ArrowCursor);
        search_field_ = new QLineEdit(search_bar_);
        search_field_->setPlaceholderText(QStringLiteral("Find"));
        search_field_->setAccessibleName(QStringLiteral("Find"));
        search_field_->installEventFilter(this);
        search_count_ = new QLabel(search_bar_);
        auto* row = new QHBoxLayout(search_bar_);
        row->setContentsMargins(SEARCH_MARGIN, SEARCH_MARGIN, 2 * SEARCH_MARGIN, SEARCH_MARGIN);
        row->addWidget(search_field_, 1);
        row->addWidget(search_count_);
        connect(search_field_, &QLineEdit::textChanged, this, [this] {
            search(false, true);
            tell_matches();
        });
    }
    place();
    search_bar_->show();
    search_bar_->raise();
    search_field_->setFocus(Qt::ShortcutFocusReason);
    if (const QString chosen = textCursor().selectedText(); !chosen.isEmpty())
        search_field_->setText(chosen);
    search_field_->selectAll();
    tell_matches();
}

void CodeEdit::close_search() {
    search_bar_->hide();
    setFocus(Qt::OtherFocusReason);
}

/// Goes to the next place with the words, around the end of the text; `from_here` counts one that
/// begins where the selection does.
void CodeEdit::search(bool backwards, bool from_here) {
    const QString words = search_field_->text();
    QTextCursor start = textCursor();
    if (from_here)
        start.setPosition(start.selectionStart());
    if (words.isEmpty()) {
        setTextCursor(start);
        return;
    }
    const auto how = backwards ? QTextDocument::FindBackward : QTextDocument::FindFlag(0);
    QTextCursor found = document()->find(words, start, how);
    if (found.isNull()) {
        start.movePosition(backwards ? QTextCursor::End : QTextCursor::Start);
        found = document()->find(words, start, how);
    }
    if (!found.isNull())
        setTextCursor(found);
}

void CodeEdit::tell_matches() {
    const QString words = search_field_->text();
    const int count = words.isEmpty() ? 0 : int(toPlainText().count(words, Qt::CaseInsensitive));
    if (words.isEmpty())
        search_count_->clear();
    else if (count == 0)
        search_count_->setText(QStringLiteral("None"));
    else
        search_count_->setText(count > MOST_COUNTED ? QStringLiteral("%1+").arg(MOST_COUNTED)
                                                    : QString::number(count));
}

bool CodeEdit::eventFilter(QObject* watched, QEvent* event) {
    if (watched != search_field_ || event->type() != QEvent::KeyPress)
        return QTextEdit::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Escape) {
        close_search();
        return true;
    }
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        search(key->modifiers().testFlag(Qt::ShiftModifier), false);
        return true;
    }
    return QTextEdit::eventFilter(watched, event);
}

} // namespace Corvel
