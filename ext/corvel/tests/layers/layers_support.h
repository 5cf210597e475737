#pragma once

#include "layers/diagnostic.h"
#include "layers/load_limits.h"
#include "layers/object_model.h"

#include <string>
#include <string_view>
#include <vector>

namespace Layers {

/// "line: message" for each diagnostic, a line each.
std::string lines_of(const std::vector<Diagnostic>& diagnostics);

/// Collects the log while it lives. What nobody took fails the test.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// The lines so far.
    std::string take();

private:
    std::string lines_;
};

/// A style tree made from texts as a load of files makes it.
class StyleTree {
public:
    StyleTree() = default;
    /// Loads and links a text that has no faults.
    explicit StyleTree(std::string_view text);

    /// Pours the files of `text`, parted by lines "---", and composes inheritance, faults or not.
    /// Gives the diagnostics.
    std::string load(std::string_view text);
    void link();

    LLayer& layer(const std::string& path);
    /// The attribute at "Outer/Inner/Name".
    LAttribute& attribute(const std::string& path);
    /// The value of an attribute under states as text: 1.5, "text", true, or none.
    std::string value(const std::string& path, const std::vector<std::string>& states = {});

    LLayer root{""};
    LoadLimits limits;
    int files = 0; ///< so far, named "a", "b" and so on
};

std::string show(const AttributeValue& value);

/// The tree below a layer, one object a line and two blanks a level: "Name = 1", "Name -> Path",
/// "Layer:", "Layer << Base:".
std::string show(const LObject& object, std::size_t depth = 0);

} // namespace Layers
