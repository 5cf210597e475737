// A number that a button counts up. What it looks like stands in styles/counter.lyr; this file
// writes state under node paths and never touches a widget.
#include "runtime/corvel_app.h"
#include "runtime/desktop_app.h"

#include <memory>

namespace {

constexpr const char* NUMBER = "App/Window/Page/Tally/Number";
constexpr const char* ROWS = "counts";

struct Counter {
    Corvel::CorvelApp& app;
    int number = 0;
    std::vector<Corvel::ListEntry> rows = {};

    void show() {
        app.set_text(NUMBER, std::to_string(number));
        app.set_rows(ROWS, rows);
    }

    void count() {
        ++number;
        rows.push_back({std::to_string(number), {{"title", "Number " + std::to_string(number)}}});
        show();
    }

    void remove(const std::string& id) {
        std::erase_if(rows, [&](const Corvel::ListEntry& row) { return row.id == id; });
        show();
    }
};

} // namespace

void Corvel::build_app(CorvelApp& app) {
    app.set_root("App");
    const auto counter = std::make_shared<Counter>(Counter{app});
    app.on_click("App/Window/Page/Tally/Count Button", [counter] { counter->count(); });
    app.on_row_click(ROWS, [counter](const std::string&, const std::string& id,
                                     const std::string&) { counter->remove(id); });
    counter->show();
}

int main(int argc, char** argv) {
    Corvel::DesktopAppConfig config;
    config.application_name = "Counter";
    config.window_title = "Counter";
    config.framework_root = CORVEL_ROOT;
    config.style_dirs = {COUNTER_STYLES};
    return Corvel::run_desktop(argc, argv, config);
}
