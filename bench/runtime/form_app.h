#pragma once

#include "runtime/corvel_app.h"

#include <string>
#include <vector>

namespace Bench {

/// How the rows of the generated form come about.
enum class FormShape {
    DistinctLayers, ///< each row is layers of its own
    ListRows,       ///< one template, shown for the rows of a list
};

/// Writes the styles of a form of about `nodes` nodes in rows of a box, a label, an editor, a
/// button and an icon, whose every node shows a colour of the theme. Gives the folder, which is
/// removed at the end of the process.
std::string write_form(FormShape shape, int nodes);

/// An application with the form of `folder`, the themes "Dark" and "Light", and its rows set.
class FormApp {
public:
    FormApp(const std::string& folder, FormShape shape, int nodes);

    Corvel::CorvelApp app;
    std::string first_label; ///< path of a leaf that shows a text
};

} // namespace Bench
