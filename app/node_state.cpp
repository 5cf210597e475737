#include "app/node_state.h"

#include "runtime/corvel_app.h"

namespace Lumenfold {

void set_state(Corvel::CorvelApp& app, const std::string& path, const std::string& state, bool on) {
    if (on)
        app.add_state(path, state);
    else
        app.remove_state(path, state);
}

} // namespace Lumenfold
