#include "desktop/widgets/accessible_box.h"

#include "desktop/widgets/vbox_widget.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QLabel>
#include <QStringList>

namespace Corvel {

namespace {

/// The text of the first label with one, in the order in which labels were made.
QString first_label(const QWidget& box) {
    for (const QLabel* label : box.findChildren<QLabel*>())
        if (!label->text().isEmpty())
            return label->text();
    return {};
}

class AccessibleBox : public QAccessibleWidget {
public:
    explicit AccessibleBox(VBoxWidget* box)
        : QAccessibleWidget(box, box->checkable ? QAccessible::CheckBox : QAccessible::Button) {}

    QString text(QAccessible::Text kind) const override {
        const QString set = QAccessibleWidget::text(kind);
        if (kind != QAccessible::Name || !set.isEmpty())
            return set;
        const QString label = first_label(*box());
        return label.isEmpty() ? box()->objectName() : label;
    }

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = box()->checkable;
        state.checked = box()->checkable && box()->checked;
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

QAccessibleInterface* make_interface(const QString& class_name, QObject* object) {
    if (class_name != QLatin1String(VBoxWidget::staticMetaObject.className()))
        return nullptr;
    auto* box = qobject_cast<VBoxWidget*>(object);
    return box && box->on_click ? new AccessibleBox(box) : nullptr;
}

} // namespace

void install_accessible_boxes() {
    static const bool installed = [] {
        QAccessible::installFactory(make_interface);
        return true;
    }();
    static_cast<void>(installed);
}

} // namespace Corvel
