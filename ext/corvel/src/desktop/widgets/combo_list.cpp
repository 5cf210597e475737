#include "desktop/widgets/combo_list.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QScreen>

#include <algorithm>

namespace Corvel {

namespace {

constexpr int ROW_HEIGHT = 32;
constexpr int ROWS_AT_ONCE = 10;
constexpr int INDENT = 12;    ///< of a row's words, in pixels
constexpr int MARK_WIDTH = 3; ///< of the line before the chosen row
constexpr int GAP = 4;        ///< between the box and its list

/// Rows on the list's own surface: the one under the pointer or the keyboard is highlighted, the
/// chosen one is bold behind a mark.
class Rows : public QStyledItemDelegate {
public:
    explicit Rows(QComboBox* combo)
        : QStyledItemDelegate(combo)
        , combo_(combo) {}

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
        return {0, ROW_HEIGHT};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const QPalette& colors = option.palette;
        const bool chosen = index.row() == combo_->currentIndex();
        if (option.state & (QStyle::State_Selected | QStyle::State_MouseOver))
            painter->fillRect(option.rect, colors.color(QPalette::Active, QPalette::Highlight));
        const QColor words = colors.color(QPalette::Active, QPalette::Text);
        if (chosen)
            painter->fillRect(QRect(option.rect.topLeft(), QSize(MARK_WIDTH, ROW_HEIGHT)), words);
        QFont font = combo_->font();
        font.setWeight(chosen ? QFont::DemiBold : QFont::Normal);
        painter->setFont(font);
        painter->setPen(words);
        const QRect room = option.rect.adjusted(INDENT, 0, -INDENT, 0);
        painter->drawText(
            room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
            QFontMetrics(font).elidedText(index.data().toString(), Qt::ElideRight, room.width()));
    }

private:
    QComboBox* combo_;
};

} // namespace

ListCombo::ListCombo(QWidget* frame)
    : QComboBox(frame)
    , frame_(frame) {
    setItemDelegate(new Rows(this));
    setMaxVisibleItems(ROWS_AT_ONCE);
}

void ListCombo::showPopup() {
    QComboBox::showPopup();
    QWidget* list = view()->window();
    if (list == window() || !screen())
        return;
    const QRect room = screen()->availableGeometry();
    const QPoint corner = frame_->mapToGlobal(QPoint());
    const int around = list->height() - view()->viewport()->height();
    const int rows = std::clamp(count(), 1, ROWS_AT_ONCE);
    const int wanted = rows * ROW_HEIGHT + std::max(around, 0);
    const int below = room.bottom() + 1 - (corner.y() + frame_->height() + GAP);
    const int above = corner.y() - GAP - room.top();
    const bool up = below < wanted && above > below;
    const int height = std::min(wanted, std::max(up ? above : below, ROW_HEIGHT));
    const int width = frame_->width();
    const int left =
        std::clamp(corner.x(), room.left(), std::max(room.left(), room.right() + 1 - width));
    list->setGeometry(left, up ? corner.y() - GAP - height : corner.y() + frame_->height() + GAP,
                      width, height);
    view()->scrollTo(view()->currentIndex());
}

} // namespace Corvel
