#pragma once

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace Bench {

/// A row of a form as a Qt programmer writes it by hand: what our rows are measured against.
inline QWidget* hand_row(int number) {
    auto* row = new QFrame;
    row->setFrameShape(QFrame::StyledPanel);
    auto* layout = new QHBoxLayout(row);
    auto* icon = new QLabel;
    icon->setPixmap(row->style()->standardIcon(QStyle::SP_FileIcon).pixmap(20, 20));
    layout->addWidget(icon);
    layout->addWidget(new QLabel(QStringLiteral("Field %1").arg(number)));
    layout->addWidget(new QLineEdit(QStringLiteral("Value %1").arg(number)), 1);
    layout->addWidget(new QPushButton(QStringLiteral("Remove")));
    return row;
}

/// Rows 0 to `rows` - 1, one below the other.
inline QWidget* hand_form(int rows) {
    auto* content = new QWidget;
    auto* list = new QVBoxLayout(content);
    for (int row = 0; row < rows; ++row)
        list->addWidget(hand_row(row));
    return content;
}

} // namespace Bench
