#include "app/editing/editor_text.h"

#include "runtime/corvel_app.h"

namespace Lumenfold {

void fill_editor(Corvel::CorvelApp& app, const std::string& path, const std::string& text) {
    // A render compares with what was last rendered, so it does not see what the user typed.
    if (app.input_value(path) != text)
        app.queue_editor_text(path, text);
    app.set_text(path, text);
    app.set_input_value(path, text);
}

} // namespace Lumenfold
