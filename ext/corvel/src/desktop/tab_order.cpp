#include "desktop/tab_order.h"

#include "desktop/desktop_view_p.h"
#include "desktop/widgets/combo_widget.h"
#include "desktop/widgets/editor_widget.h"
#include "desktop/widgets/markdown_widget.h"
#include "desktop/widgets/root_container.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QLineEdit>
#include <QTextEdit>

#include <vector>

namespace Corvel {

namespace {

using Fields = std::vector<QWidget*>;

void add_field(const DNode& dnode, Fields& fields) {
    if (dnode.combo)
        fields.push_back(dnode.combo->combo);
    if (dnode.markdown)
        fields.push_back(dnode.markdown);
    if (!dnode.editor)
        return;
    fields.push_back(dnode.editor->line_edit);
    if (dnode.editor->text_edit)
        fields.push_back(dnode.editor->text_edit);
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

void chain(const Fields& fields) {
    for (std::size_t next = 1; next < fields.size(); ++next)
        QWidget::setTabOrder(fields[next - 1], fields[next]);
}

} // namespace

void renew_tab_order(ViewState& view) {
    if (!view.tab_order_stale)
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
    chain(fields);
    for (const auto& [path, modal] : view.overlays.modals) {
        Fields inside;
        const DNode* dnode = view.find(path);
        if (dnode && dnode->layout)
            add_layout(view, *dnode->layout, inside);
        chain(inside);
    }
}

} // namespace Corvel
