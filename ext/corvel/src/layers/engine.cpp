#include "layers/engine.h"

#include "layers/layer_builder.h"
#include "layers/lexer.h"
#include "layers/linker.h"
#include "layers/log.h"
#include "layers/parser.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <system_error>
#include <utility>
#include <vector>

namespace Layers {
namespace {

namespace fs = std::filesystem;

struct ListedFile {
    fs::path path;
    std::string text;
};

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

// A leading underscore switches a file off, but not a directory.
bool is_layer_file(const fs::path& path) {
    return !path.filename().string().starts_with('_') && path.extension() == ".lyr";
}

void scan_directory(const fs::path& path, std::vector<ListedFile>& files) {
    if (!fs::is_directory(path)) {
        log_line("engine: " + path.string() +
                 ": Failed to read files because no directory was found at the given path.");
        return;
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
        if (entry.is_directory())
            scan_directory(entry.path(), files);
        else if (entry.is_regular_file() && is_layer_file(entry.path()))
            files.push_back({entry.path(), read_file(entry.path())});
    }
}

void log_diagnostics(const std::string& pass, const std::string& path,
                     const std::vector<Diagnostic>& diagnostics) {
    for (const Diagnostic& diagnostic : diagnostics)
        log_line(pass + ": " + path + ":" + std::to_string(diagnostic.line) + ": " +
                 diagnostic.message);
}

// A file with lexer errors shows none of its parser errors, which mostly follow from them.
void load_file(const ListedFile& file, LayerBuilder& builder) {
    Lexer lexer(file.text);
    Parser parser(lexer);
    const FileNode tree = parser.parse_file();
    if (lexer.diagnostics().empty() && parser.diagnostics().empty()) {
        builder.pour(tree);
        return;
    }
    const std::string path = file.path.string();
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

LayersEngine::LayersEngine()
    : root_(std::make_unique<LLayer>("")) {}

LayersEngine::~LayersEngine() = default;

LLayer& LayersEngine::root() const {
    return *root_;
}

LLayer* LayersEngine::find_layer(const std::string& path) const {
    return root_->find_layer(path);
}

void LayersEngine::load_directory(const fs::path& path, const std::string& layer) {
    std::vector<ListedFile> files;
    scan_directory(path, files);
    std::sort(files.begin(), files.end(),
              [](const ListedFile& a, const ListedFile& b) { return a.path < b.path; });
    LLayer& target = layer.empty() || files.empty() ? *root_ : target_layer(*root_, layer);
    LayerBuilder builder(target);
    for (const ListedFile& file : files)
        load_file(file, builder);
    resolve_bases(target);
    for (const std::unique_ptr<LObject>& child : target.children())
        if (LLayer* const child_layer = child->as_layer())
            link_layer(*child_layer);
}

void LayersEngine::link_attributes() {
    Layers::link_attributes(*root_);
}

} // namespace Layers
