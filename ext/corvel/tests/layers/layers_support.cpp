#include "layers/layers_support.h"

#include "layers/attribute_links.h"
#include "layers/base_resolution.h"
#include "layers/inheritance.h"
#include "layers/layer_builder.h"
#include "layers/lexer.h"
#include "layers/log.h"
#include "layers/parser.h"
#include "support/show_value.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <utility>

namespace Layers {

std::string lines_of(const std::vector<Diagnostic>& diagnostics) {
    std::string lines;
    for (const Diagnostic& diagnostic : diagnostics)
        lines += std::to_string(diagnostic.line) + ": " + diagnostic.message + "\n";
    return lines;
}

LogCapture::LogCapture() {
    set_log_sink([this](const std::string& line) { lines_ += line + "\n"; });
}

LogCapture::~LogCapture() {
    set_log_sink({});
    EXPECT_EQ(lines_, "") << "unexpected in the log";
}

std::string LogCapture::take() {
    return std::exchange(lines_, {});
}

StyleTree::StyleTree(std::string_view text) {
    EXPECT_EQ(load(text), "");
    link();
}

std::string StyleTree::load(std::string_view text) {
    constexpr std::string_view next_file = "---\n";
    std::string diagnostics;
    LayerBuilder builder(root, limits);
    for (bool more = true; more;) {
        const std::size_t end = text.find(next_file);
        more = end != std::string_view::npos;
        Lexer lexer(text.substr(0, end));
        Parser parser(lexer);
        const FileNode file = parser.parse_file();
        diagnostics += lines_of(lexer.diagnostics()) + lines_of(parser.diagnostics());
        const SharedName name(std::string(1, static_cast<char>('a' + files++)));
        limits.begin_file(name, std::min(end, text.size()));
        builder.pour(file, name);
        text.remove_prefix(more ? end + next_file.size() : 0);
    }
    resolve_bases(root);
    for (const std::unique_ptr<LObject>& child : root.children())
        if (LLayer* const layer = child->as_layer())
            link_layer(*layer, limits);
    return diagnostics;
}

void StyleTree::link() {
    link_attributes(root);
}

LLayer& StyleTree::layer(const std::string& path) {
    LLayer* const found = path.empty() ? &root : root.find_layer(path);
    if (found == nullptr)
        throw std::runtime_error("no layer " + path);
    return *found;
}

LAttribute& StyleTree::attribute(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const bool at_root = slash == std::string::npos;
    LLayer& owner = layer(at_root ? "" : path.substr(0, slash));
    LAttribute* const found = owner.find_attribute(at_root ? path : path.substr(slash + 1));
    if (found == nullptr)
        throw std::runtime_error("no attribute " + path);
    return *found;
}

std::string StyleTree::value(const std::string& path, const std::vector<std::string>& states) {
    const LAttribute& found = attribute(path);
    if (const double* const number = found.number_value(states))
        return show(*number);
    if (const std::string* const text = found.string_value(states))
        return show(*text);
    return states.empty() ? show(found.terminal_value()) : "none";
}

std::string show(const AttributeValue& value) {
    return TestSupport::show_value(value);
}

std::string show(const LObject& object, std::size_t depth) {
    std::string text;
    for (const std::unique_ptr<LObject>& child : object.children()) {
        text += std::string(depth * 2, ' ') + child->name();
        if (const LLayer* const layer = child->as_layer())
            text += layer->base() ? " << " + layer->base()->name() + ":" : ":";
        else if (const LAttribute* const attribute = child->as_attribute())
            text += attribute->has_link() ? " -> " + attribute->link_path()
                                          : " = " + show(attribute->value());
        text += "\n" + show(*child, depth + 1);
    }
    return text;
}

} // namespace Layers
