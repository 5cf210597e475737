#include "desktop/widgets/accessible_box.h"

#include "desktop/widgets/vbox_widget.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>
#include <QString>
#include <QStringList>

namespace Corvel {

namespace {

/// How many boxes above a control may name the row that it stands in.
constexpr int ROW_REACH = 2;

/// The text of the first label with one, in the order in which labels were made.
QString first_label(const QWidget& box) {
    for (const QLabel* label : box.findChildren<QLabel*>())
        if (!label->text().isEmpty() && label->isVisibleTo(&box))
            return label->text();
    return {};
}

/// "Remove Button" is "Remove"; a few names say more in other words.
QString plain_name(const VBoxWidget& box) {
    QString name = box.objectName();
    for (const char* kind : {" Button", " Tab", " Checkbox"})
        if (name.endsWith(QLatin1String(kind)))
            name.chop(qsizetype(qstrlen(kind)));
    static const QStringList ours{QStringLiteral("Exit"), QStringLiteral("Up"),
                                  QStringLiteral("Down")};
    static const QStringList words{QStringLiteral("Close"), QStringLiteral("Move up"),
                                   QStringLiteral("Move down")};
    const qsizetype index = ours.indexOf(name);
    return index < 0 ? name : words[index];
}

/// The first words of the row around a control; a title bar is no row.
QString row_words(const VBoxWidget& box) {
    int reach = ROW_REACH;
    for (const QWidget* above = box.parentWidget(); above && reach > 0 && !above->isWindow();
         above = above->parentWidget()) {
        const auto* around = qobject_cast<const VBoxWidget*>(above);
        if (!around)
            continue;
        if (around->window_drag)
            return {};
        const QString words = first_label(*around);
        if (!words.isEmpty())
            return words;
        --reach;
    }
    return {};
}

QAccessible::Role role_of(const VBoxWidget& box) {
    if (box.checkable)
        return QAccessible::CheckBox;
    return box.tab ? QAccessible::PageTab : QAccessible::Button;
}

class AccessibleBox : public QAccessibleWidget {
public:
    explicit AccessibleBox(VBoxWidget* box)
        : QAccessibleWidget(box, role_of(*box)) {}

    QString text(QAccessible::Text kind) const override {
        const QString set = QAccessibleWidget::text(kind);
        if (kind != QAccessible::Name || !set.isEmpty())
            return set;
        const QString label = first_label(*box());
        return label.isEmpty() ? words_of_wordless(*box()) : label;
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = box()->checkable;
        state.checked = box()->checkable && box()->checked;
        state.selectable = box()->tab;
        state.selected = box()->selected;
        state.disabled = state.disabled || box()->disabled;
        return state;
    }

    QStringList actionNames() const override {
        QStringList names{box()->checkable ? toggleAction() : pressAction()};
        names += QAccessibleWidget::actionNames();
        names.removeDuplicates();
        return names;
    }

    void doAction(const QString& name) override {
        if (name == pressAction() || name == toggleAction())
            box()->click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    VBoxWidget* box() const { return static_cast<VBoxWidget*>(widget()); }
};

class AccessibleDialog : public QAccessibleWidget {
public:
    explicit AccessibleDialog(QWidget* window)
        : QAccessibleWidget(window, QAccessible::Dialog, window->windowTitle()) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? widget()->windowTitle() : QAccessibleWidget::text(kind);
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.modal = widget()->isModal();
        return state;
    }
};

QAccessibleInterface* make_interface(const QString& class_name, QObject* object) {
    if (class_name == QLatin1String(VBoxWidget::staticMetaObject.className())) {
        auto* box = qobject_cast<VBoxWidget*>(object);
        return box && box->on_click ? new AccessibleBox(box) : nullptr;
    }
    if (class_name == QLatin1String(QWidget::staticMetaObject.className()) &&
        object->metaObject() == &QWidget::staticMetaObject) {
        auto* window = static_cast<QWidget*>(object);
        return window->windowType() == Qt::Dialog ? new AccessibleDialog(window) : nullptr;
    }
    return nullptr;
}

} // namespace

QString words_of_wordless(const VBoxWidget& box) {
    if (!first_label(box).isEmpty())
        return {};
    const QString name = plain_name(box);
    const QString row = box.tab ? QString() : row_words(box);
    return row.isEmpty() ? name : name + QLatin1Char(' ') + row;
}

void install_accessible_boxes() {
    static const bool installed = [] {
        QAccessible::installFactory(make_interface);
        return true;
    }();
    static_cast<void>(installed);
}

} // namespace Corvel
