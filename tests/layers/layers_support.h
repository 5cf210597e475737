#pragma once

#include "layers/diagnostic.h"
#include "layers/object_model.h"

#include <string>
#include <string_view>
#include <vector>

namespace Layers {

/// "line: message" for each diagnostic.
std::vector<std::string> lines_of(const std::vector<Diagnostic>& diagnostics);

/// Collects the log while it lives. A line that nobody took fails the test.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::vector<std::string> take();

private:
    std::vector<std::string> lines_;
};

/// A style tree made from texts, each taken as a file of one directory.
class StyleTree {
public:
    StyleTree() = default;
    explicit StyleTree(std::string_view text) { load({text}); }

    /// Pours the texts and composes inheritance, as the load of a directory does. A diagnostic
    /// fails the test.
    void load(const std::vector<std::string_view>& texts);
    void link();

    LLayer& layer(const std::string& path);
    /// The attribute at "Outer/Inner/Name".
    LAttribute& attribute(const std::string& path);
    /// The value of an attribute under states as text: 1.5, "text", true, or none.
    std::string value(const std::string& path, const std::vector<std::string>& states = {});

    LLayer root{""};
};

std::string show(const AttributeValue& value);

/// The tree below a layer, one object a line and two blanks a level: "Name = 1", "Name -> Path",
/// "Layer:", "Layer << Base:".
std::string show(const LObject& object);

} // namespace Layers
