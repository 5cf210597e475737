#include "desktop/tab_order.h"

#include "desktop/desktop_view_p.h"
#include "desktop/widgets/combo_widget.h"
#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/log_view.h"
#include "desktop/widgets/markdown_widget.h"
#include "desktop/widgets/root_container.h"
#include "desktop/widgets/vbox_widget.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QLineEdit>
#include <QTextEdit>

#include <algorithm>
#include <vector>

namespace Corvel {

namespace {

using Fields = std::vector<QWidget*>;

void add_field(const DNode& dnode, Fields& fields) {
    if (dnode.combo)
        fields.push_back(dnode.combo->combo);
    if (dnode.markdown)
        fields.push_back(dnode.markdown);
    if (dnode.box && dnode.box->focusPolicy() != Qt::NoFocus)
        fields.push_back(dnode.box);
    if (!dnode.editor)
        return;
    fields.push_back(dnode.editor->line_edit);
    if (dnode.editor->text_edit)
        fields.push_back(dnode.editor->text_edit);
    if (dnode.editor->log_view)
        fields.push_back(dnode.editor->log_view);
}

void add_layout(const ViewState& view, const QBoxLayout& layout, Fields& fields) {
    const bool reverse = layout.direction() == QBoxLayout::RightToLeft ||
                         layout.direction() == QBoxLayout::BottomToTop;
    for (int step = 0; step < layout.count(); ++step) {
        const int index = reverse ? layout.count() - 1 - step : step;
        const DNode* child = view.find_dnode_by_widget(layout.itemAt(index)->widget());
        if (!child)
            continue;
        add_field(*child, fields);
        if (child->layout)
            add_layout(view, *child->layout, fields);
    }
}

void chain(QWidget* window, const Fields& fields) {
    if (fields.empty())
        return;
    // From the window itself, which has the focus when no control has, Tab goes to the first one.
    // Qt takes a window into the order only while it looks like a control.
    window->setFocusPolicy(Qt::TabFocus);
    QWidget::setTabOrder(window, fields.front());
    window->setFocusPolicy(Qt::NoFocus);
    for (std::size_t next = 1; next < fields.size(); ++next)
        QWidget::setTabOrder(fields[next - 1], fields[next]);
}

} // namespace

QWidget* first_field(const ViewState& view, const DNode& top) {
    Fields fields;
    if (top.layout)
        add_layout(view, *top.layout, fields);
    const auto takes_input = [&top](QWidget* field) {
        const auto* text = qobject_cast<QTextEdit*>(field);
        return field->isVisibleTo(top.widget) && !(text && text->isReadOnly()) &&
               (text || qobject_cast<QLineEdit*>(field) || qobject_cast<QComboBox*>(field));
    };
    const auto first = std::ranges::find_if(fields, takes_input);
    return first == fields.end() ? nullptr : *first;
}

void renew_tab_order(ViewState& view) {
    // One walk when all of a long list is there, not one for each part of it.
    if (!view.tab_order_stale || !view.queue.later.empty())
        return;
    view.tab_order_stale = false;
    Fields fields;
    add_layout(view, *view.root_layout, fields);
    // What floats lies above the rest and comes last.
    for (const std::string& path : view.overlays.floating) {
        const DNode* dnode = view.find(path);
        if (!dnode || dnode->widget->window() != view.root)
            continue;
        add_field(*dnode, fields);
        if (dnode->layout)
            add_layout(view, *dnode->layout, fields);
    }
    chain(view.root, fields);
    for (const auto& [path, modal] : view.overlays.modals) {
        Fields inside;
        const DNode* dnode = view.find(path);
        if (dnode && dnode->layout)
            add_layout(view, *dnode->layout, inside);
        if (modal.window)
            chain(modal.window, inside);
    }
}

} // namespace Corvel
