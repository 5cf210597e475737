#include "start/screenshot_run.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPixmap>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <algorithm>
#include <memory>
#include <utility>

namespace Corvel {
namespace {

int delay_from_environment(const char* name, int fallback) {
    if (!qEnvironmentVariableIsSet(name))
        return fallback;
    const int value = std::atoi(qgetenv(name).constData());
    return value < 1 ? fallback : value;
}

/// Every top-level window in an order that does not change from run to run: the main window, the
/// windows that it owns, then the others by name.
QWidgetList top_level_windows(QWidget* main_window) {
    QWidgetList windows{main_window};
    const auto owned = main_window->findChildren<QWidget*>();
    for (QWidget* widget : owned)
        if (widget->isWindow())
            windows.append(widget);
    QWidgetList others = QApplication::topLevelWidgets();
    std::sort(others.begin(), others.end(),
              [](QWidget* a, QWidget* b) { return a->objectName() < b->objectName(); });
    for (QWidget* widget : std::as_const(others))
        if (!windows.contains(widget))
            windows.append(widget);
    return windows;
}

QWidget* first_descendant(QWidget* from, const QString& part) {
    const bool by_prefix = part.endsWith(u'*');
    const QString prefix = part.chopped(by_prefix ? 1 : 0);
    const auto descendants = from->findChildren<QWidget*>();
    for (QWidget* widget : descendants) {
        const QString name = widget->objectName();
        if (by_prefix ? name.startsWith(prefix) : name == part)
            return widget;
    }
    return nullptr;
}

QWidget* find_target(QWidget* main_window, const QString& path) {
    const QStringList parts = path.trimmed().split(u'/', Qt::SkipEmptyParts);
    const QWidgetList windows = top_level_windows(main_window);
    for (QWidget* window : windows) {
        QWidget* target = window;
        for (const QString& part : parts)
            if (target)
                target = first_descendant(target, part);
        if (target)
            return target;
    }
    return nullptr;
}

void press(QWidget* target) {
    const QPointF position(5, 5);
    QMouseEvent event(QEvent::MouseButtonPress, position, target->mapToGlobal(position),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &event);
}

void type(QWidget* target, const QString& value) {
    auto* edit = qobject_cast<QLineEdit*>(target);
    if (!edit)
        edit = target->findChild<QLineEdit*>();
    if (!edit)
        return;
    edit->selectAll();
    QKeyEvent event(QEvent::KeyPress, 0, Qt::NoModifier, value);
    QApplication::sendEvent(edit, &event);
}

void perform_step(QWidget* main_window, const QString& step, const std::function<void()>& finish) {
    const qsizetype equals = step.indexOf(u'=');
    const QString path = equals < 0 ? step : step.left(equals);
    QWidget* target = find_target(main_window, path);
    if (!target) {
        finish();
        target = find_target(main_window, path);
    }
    if (!target)
        return;
    if (equals < 0)
        press(target);
    else
        type(target, step.mid(equals + 1));
}

/// The unattended run, step by step on timers of its own. It ends by leaving the event loop: a
/// request to quit would be refused by an open dialog.
class ScreenshotRun : public QObject {
public:
    ScreenshotRun(QWidget* window, std::function<void()> finish)
        : QObject(window)
        , window_(window)
        , finish_(std::move(finish))
        , first_path_(qEnvironmentVariable("CORVEL_SHOT"))
        , second_path_(qEnvironmentVariable("CORVEL_SHOT2"))
        , steps_(qEnvironmentVariable("CORVEL_CLICK", QStringLiteral("Toggle"))
                     .split(u',', Qt::SkipEmptyParts))
        , click_delay_(delay_from_environment("CORVEL_CLICK_DELAY", 1))
        , second_delay_(delay_from_environment("CORVEL_SHOT2_DELAY", 100)) {
        after(delay_from_environment("CORVEL_SHOT_DELAY", 200), &ScreenshotRun::take_first);
    }

private:
    void after(int milliseconds, void (ScreenshotRun::*next)()) {
        QTimer::singleShot(milliseconds, this, next);
    }

    void take_first() {
        window_->grab().save(first_path_);
        if (second_path_.isEmpty())
            QCoreApplication::exit();
        else
            next_step();
    }

    void next_step() {
        if (steps_.isEmpty()) {
            after(second_delay_, &ScreenshotRun::take_second);
            return;
        }
        // The next step is armed first: a step may open a dialog that waits in an event loop.
        const QString step = steps_.takeFirst();
        after(click_delay_, &ScreenshotRun::next_step);
        perform_step(window_, step, finish_);
    }

    void take_second() {
        window_->grab().save(second_path_);
        const qsizetype dot = second_path_.lastIndexOf(u'.');
        const QString stem = dot < 0 ? second_path_ : second_path_.left(dot);
        int count = 0;
        const QWidgetList windows = top_level_windows(window_);
        for (QWidget* window : windows)
            if (window != window_ && window->isVisible())
                window->grab().save(QStringLiteral("%1.win%2.png").arg(stem).arg(count++));
        QCoreApplication::exit();
    }

    QWidget* window_;
    std::function<void()> finish_;
    QString first_path_;
    QString second_path_;
    QStringList steps_;
    int click_delay_;
    int second_delay_;
};

} // namespace

void arm_screenshot_run(QWidget* window, std::function<void()> finish) {
    if (qEnvironmentVariableIsSet("CORVEL_SHOT"))
        new ScreenshotRun(window, std::move(finish));
}

} // namespace Corvel
