#pragma once

#include <QWidget>

#include <functional>

namespace Corvel {

/// The window that holds the interface; it tells when its width or its maximized state changes.
class RootContainer : public QWidget {
    Q_OBJECT
public:
    explicit RootContainer(QWidget* parent = nullptr);
    ~RootContainer() override;

    std::function<void(int)> on_width_changed; ///< after every resize, with the width in pixels
    std::function<void(bool)> on_maximized_changed;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
};

} // namespace Corvel
