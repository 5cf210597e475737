#pragma once

#include "desktop/desktop_view.h"
#include "desktop/media/asset_paths.h"
#include "form_style.h"
#include "runtime/corvel_app.h"
#include "support/temp_dir.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace Bench {

/// Tells when the window has been painted.
class PaintWatch : public QObject {
public:
    bool eventFilter(QObject*, QEvent* event) override {
        painted = painted || event->type() == QEvent::UpdateRequest;
        return false;
    }
    void wait() {
        for (painted = false; !painted;)
            QCoreApplication::processEvents();
    }
    bool painted = false;
};

/// A window of 1000 by 700 with a panel of form rows that scrolls.
class PanelApp {
public:
    explicit PanelApp(int rows) {
        const std::string head = "App:\n    Panel << Corvel/Box:\n        Bind: \"List:rows\"\n"
                                 "        Layout.Scroll: \"Vertical\"\n"
                                 "        Layout.Align: \"Stretch\"\n        Layout.Grow: 1\n";
        TestSupport::TempDir folder;
        TestSupport::write_file(folder / "panel.lyr", head + Bench::form_rows(0, 0, "        "));
        const std::string root = SOURCE_ROOT "/ext/corvel";
        Corvel::set_icon_dirs({root + "/icons"});
        app.set_root("App");
        if (!app.load_assets(root + "/themes", root + "/styles", "Dark (orrinworkshopllc)",
                             {folder.path().string()}))
            throw std::runtime_error("the panel does not load");
        set_rows(rows);
        window.reset(view.build());
        window->installEventFilter(&watch);
        window->resize(1000, 700);
        window->show();
        watch.wait();
    }
    void set_rows(int rows) {
        std::vector<Corvel::ListEntry> entries;
        for (int row = 0; row < rows; ++row)
            entries.push_back({"r" + std::to_string(row), {}});
        app.set_rows("rows", entries);
    }
    void render() {
        view.schedule_render();
        watch.wait();
    }

    Corvel::CorvelApp app;
    Corvel::DesktopView view{app};
    PaintWatch watch;
    std::unique_ptr<QWidget> window;
};

} // namespace Bench
