#include "layers/engine.h"

#include "layers/attribute_links.h"
#include "layers/base_resolution.h"
#include "layers/inheritance.h"
#include "layers/layer_builder.h"
#include "layers/lexer.h"
#include "layers/log.h"
#include "layers/parser.h"
#include "layers/style_folder.h"

#include <fstream>
#include <iostream>
#include <system_error>
#include <utility>
#include <vector>

namespace Layers {
namespace {

namespace fs = std::filesystem;

// An unreadable file counts as an empty one.
std::string read_file(const fs::path& path) {
    std::ifstream stream(path);
    if (!stream) {
        std::cerr << "read_file"
                  << ": Could not read file: " << path.string() << '\n';
        return {};
    }
    std::error_code unknown_size;
    const std::uintmax_t size = fs::file_size(path, unknown_size);
    std::string text(unknown_size ? 0 : size, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    return text;
}

void log_diagnostics(const std::string& pass, const std::string& path,
                     const std::vector<Diagnostic>& diagnostics) {
    for (const Diagnostic& diagnostic : diagnostics)
        log_line(pass + ": " + path + ":" + std::to_string(diagnostic.line) + ": " +
                 diagnostic.message);
}

// A file with lexer errors shows none of its parser errors, which mostly follow from them.
void load_file(const fs::path& file, LayerBuilder& builder, LoadLimits& limits) {
    const std::string text = read_file(file);
    Lexer lexer(text);
    Parser parser(lexer);
    const FileNode tree = parser.parse_file();
    const std::string path = file.string();
    if (lexer.diagnostics().empty() && parser.diagnostics().empty()) {
        const SharedName name(path);
        limits.begin_file(name, text.size());
        builder.pour(tree, name);
        return;
    }
    log_line("engine: " + path + ": Failed to load file.");
    if (lexer.diagnostics().empty())
        log_diagnostics("parser", path, parser.diagnostics());
    else
        log_diagnostics("lexer", path, lexer.diagnostics());
}

LLayer& target_layer(LLayer& root, const std::string& path) {
    if (LLayer* const found = root.find_layer(path))
        return *found;
    return *root.add_child(std::make_unique<LLayer>(path))->as_layer();
}

} // namespace

LayersEngine::LayersEngine(BuildObserver* observer)
    : root_(std::make_unique<LLayer>(""))
    , observer_(observer) {}

LayersEngine::~LayersEngine() = default;

LLayer& LayersEngine::root() const {
    return *root_;
}

LLayer* LayersEngine::find_layer(const std::string& path) const {
    return root_->find_layer(path);
}

void LayersEngine::load_directory(const fs::path& path, const std::string& layer) {
    const std::vector<fs::path> files = style_files(path);
    LLayer& target = layer.empty() || files.empty() ? *root_ : target_layer(*root_, layer);
    LayerBuilder builder(target, limits_, observer_);
    for (const fs::path& file : files)
        load_file(file, builder, limits_);
    resolve_bases(target);
    for (const std::unique_ptr<LObject>& child : target.children())
        if (LLayer* const child_layer = child->as_layer())
            link_layer(*child_layer, limits_);
}

void LayersEngine::link_attributes() {
    Layers::link_attributes(*root_);
}

} // namespace Layers
