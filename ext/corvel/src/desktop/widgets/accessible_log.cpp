#include "desktop/widgets/accessible_log.h"

#include "desktop/widgets/log_view.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QScrollBar>

#include <algorithm>

namespace Corvel {

namespace {

QString qt_text(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// Offsets are units of UTF-16, as everywhere in Qt.
class AccessibleLog : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit AccessibleLog(LogView* log)
        : QAccessibleWidget(log, QAccessible::EditableText) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        state.multiLine = true;
        state.selectableText = true;
        return state;
    }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? qt_text(bytes()) : QAccessibleWidget::text(kind);
    }

    int characterCount() const override { return static_cast<int>(log()->lines().units(bytes())); }
    QString text(int start, int end) const override {
        const std::size_t first = byte_of(start);
        return qt_text(bytes().substr(first, std::max(byte_of(end), first) - first));
    }

    int selectionCount() const override { return log()->has_selection() ? 1 : 0; }
    void selection(int index, int* start, int* end) const override {
        const auto [first, last] = log()->selection();
        *start = index == 0 ? unit_of(first) : 0;
        *end = index == 0 ? unit_of(last) : 0;
    }
    void addSelection(int start, int end) override { setSelection(0, start, end); }
    void removeSelection(int) override { log()->select(0, 0); }
    void setSelection(int, int start, int end) override {
        log()->select(byte_of(start), byte_of(end));
    }

    int cursorPosition() const override { return unit_of(log()->selection().second); }
    void setCursorPosition(int position) override {
        log()->select(byte_of(position), byte_of(position));
        log()->show_byte(byte_of(position));
    }
    void scrollToSubstring(int start, int) override { log()->show_byte(byte_of(start)); }
    QRect characterRect(int offset) const override {
        return log()
            ->letter_rect(byte_of(offset))
            .translated(log()->viewport()->mapToGlobal(QPoint()));
    }
    int offsetAtPoint(const QPoint& point) const override {
        return unit_of(log()->byte_at(log()->viewport()->mapFromGlobal(point)));
    }
    QString attributes(int, int* start, int* end) const override {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    LogView* log() const { return static_cast<LogView*>(widget()); }
    std::string_view bytes() const { return log()->text().view(); }
    std::size_t byte_of(int unit) const {
        if (unit < 0)
            return bytes().size();
        return log()->lines().byte_of_unit(bytes(), static_cast<std::size_t>(unit));
    }
    int unit_of(std::size_t byte) const {
        return static_cast<int>(log()->lines().units_before(bytes(), byte));
    }
};

QAccessibleInterface* make_interface(const QString& class_name, QObject* object) {
    if (class_name != QLatin1String(LogView::staticMetaObject.className()))
        return nullptr;
    return new AccessibleLog(static_cast<LogView*>(object));
}

} // namespace

void install_accessible_logs() {
    static const bool installed = [] {
        QAccessible::installFactory(make_interface);
        return true;
    }();
    static_cast<void>(installed);
}

void tell_log_changed(LogView& log, const GrowingText& earlier) {
    if (!QAccessible::isActive())
        return;
    const std::string_view text = log.text().view();
    if (log.text().continues(earlier)) {
        const std::size_t before = log.lines().units_before(text, earlier.size());
        QAccessibleTextInsertEvent event(&log, static_cast<int>(before),
                                         qt_text(text.substr(earlier.size())));
        QAccessible::updateAccessibility(&event);
    } else {
        QAccessibleTextUpdateEvent event(&log, 0, qt_text(earlier.view()), qt_text(text));
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace Corvel
