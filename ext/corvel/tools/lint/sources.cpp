#include "sources.h"

#include "layers/lexer.h"
#include "layers/name_unfolding.h"
#include "layers/parser.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <memory>

namespace CorvelLint {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t MOST_BYTES = 1'000'000; // of all texts that one name stands for

std::string joined(const std::string& path, const std::string& name) {
    return path.empty() ? name : path + '/' + name;
}

std::unique_ptr<StyleSource> read_source(const fs::path& file, const std::string& target,
                                         std::size_t directory) {
    auto source = std::make_unique<StyleSource>();
    source->file = file.string();
    source->target = target;
    source->directory = directory;
    source->text = read_text(file);
    Layers::Lexer lexer(source->text);
    Layers::Parser parser(lexer);
    source->tree = parser.parse_file();
    // What the parser says of a file with lexical errors mostly follows from them.
    source->diagnostics = lexer.diagnostics().empty() ? parser.diagnostics() : lexer.diagnostics();
    return source;
}

} // namespace

std::vector<std::unique_ptr<StyleSource>> read_style_sources(const Options& options) {
    std::vector<std::unique_ptr<StyleSource>> sources;
    std::size_t directory = 0;
    const auto read_folders = [&](const std::vector<fs::path>& folders, const std::string& target) {
        for (const fs::path& folder : folders) {
            for (const fs::path& file : files_below(folder, ".lyr"))
                if (!file.filename().string().starts_with('_'))
                    sources.push_back(read_source(file, target, directory));
            ++directory;
        }
    };
    read_folders(options.widgets, "Corvel");
    read_folders(options.mounts, "");
    read_folders(options.styles, "");
    return sources;
}

std::vector<fs::path> files_below(const fs::path& folder, const std::string& extension) {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && entry.path().extension() == extension)
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::string read_text(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void SourceVisitor::visit(const StyleSource& source) {
    source_ = &source;
    visit_body(source.tree, source.target);
}

void SourceVisitor::visit_body(const Layers::LayerNode& node, const std::string& path) {
    for (const Layers::AttributeNode& attribute : node.attributes)
        visit_attribute(attribute.declaration, attribute, path);
    for (const Layers::GroupSetNode& group_set : node.group_sets)
        visit_group_set(group_set, path);
    for (const Layers::StateSetNode& state_set : node.state_sets) {
        for (const Layers::AttributeNode& attribute : state_set.attributes)
            visit_attribute(attribute.declaration, attribute, path);
        for (const Layers::GroupSetNode& group_set : state_set.group_sets)
            visit_group_set(group_set, path);
    }
    for (const Layers::LayerNode& layer : node.layers)
        for (const std::string& outer : unfold_path(layer.declaration, path))
            for (const std::string& name : Layers::unfold(layer.declaration.name, MOST_BYTES)) {
                const std::string layer_path = joined(outer, name);
                on_layer(layer_path, &layer, {source_->file, layer.declaration.name.line});
                visit_body(layer, layer_path);
            }
}

void SourceVisitor::visit_group_set(const Layers::GroupSetNode& node, const std::string& path) {
    for (const Layers::AttributeNode& attribute : node.attributes) {
        Layers::DeclarationName declaration = node.declaration;
        declaration.name = attribute.declaration.name;
        visit_attribute(declaration, attribute, path);
    }
}

void SourceVisitor::visit_attribute(const Layers::DeclarationName& declaration,
                                    const Layers::AttributeNode& attribute,
                                    const std::string& path) {
    std::vector<std::string> groups = Layers::unfold(declaration.group, MOST_BYTES);
    if (declaration.group.empty())
        groups.assign(1, "");
    const Place place{source_->file, declaration.name.line};
    for (const std::string& layer_path : unfold_path(declaration, path))
        for (const std::string& group : groups)
            for (const std::string& word : Layers::unfold(declaration.name, MOST_BYTES)) {
                const std::string name = group.empty() ? word : group + '.' + word;
                on_value(joined(layer_path, name), name, attribute.value, place);
                for (const Layers::StateNode& state : attribute.states)
                    on_value(joined(layer_path, name), name, state.value, place);
            }
}

// The layers that a declaration's path leads to.
std::vector<std::string> SourceVisitor::unfold_path(const Layers::DeclarationName& declaration,
                                                    const std::string& path) {
    std::vector<std::string> reached{path};
    for (const Layers::NameNode& entry : declaration.traversal) {
        std::vector<std::string> next;
        for (const std::string& outer : reached)
            for (const std::string& name : Layers::unfold(entry, MOST_BYTES)) {
                next.push_back(joined(outer, name));
                on_layer(next.back(), nullptr, {source_->file, entry.line});
            }
        reached = std::move(next);
    }
    return reached;
}

} // namespace CorvelLint
