#include "qt_form.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

namespace {

constexpr int ROWS = 50;

QWidget* make_row(int number) {
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

} // namespace

int run_qt_form(int argc, char** argv, void (*about_to_show)()) {
    QApplication application(argc, argv);
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* area = new QScrollArea;
    area->setWidgetResizable(true);
    auto* content = new QWidget;
    auto* rows = new QVBoxLayout(content);
    for (int i = 0; i < ROWS; ++i)
        rows->addWidget(make_row(i));
    area->setWidget(content);
    layout->addWidget(area);
    window.resize(1000, 700);
    about_to_show();
    window.show();
    return QApplication::exec();
}
