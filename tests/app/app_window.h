#pragma once

#include "app_driver.h"
#include "desktop/desktop_view.h"

#include <QWidget>

namespace TestSupport {

/// The whole application in a real window, used by real mouse and key events.
class AppWindow : public AppDriver {
public:
    AppWindow();

    void start(const std::vector<std::filesystem::path>& files) override;
    /// Null if there is no such node on screen.
    QWidget* widget(const std::string& node) const;
    void click(const std::string& node) override;
    /// Selects all in a field and types over it; an empty text deletes.
    void type(const std::string& node, const std::string& text) override;
    void choose(const std::string& node, const std::string& value) override;
    void advance(int milliseconds) override;
    void quit() override { window.reset(); }
    std::string text(const std::string& node) const override;
    std::string chosen(const std::string& node) const override;

    Corvel::DesktopView view;
    std::unique_ptr<QWidget> window;

protected:
    const ModelView& screen() const override;
    void render() override;

private:
    mutable ModelView screen_;
};

} // namespace TestSupport
