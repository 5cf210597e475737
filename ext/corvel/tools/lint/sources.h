#pragma once

#include "findings.h"
#include "layers/diagnostic.h"
#include "layers/syntax_tree.h"
#include "options.h"

#include <filesystem>
#include <string>
#include <vector>

namespace CorvelLint {

/// One style file: its text and what it says.
struct StyleSource {
    std::string file;
    std::string target;    ///< path of the layer that it is loaded into; empty for the root
    std::size_t directory; ///< counts the folders in the order of loading
    std::string text;
    Layers::FileNode tree; ///< refers to `text`
    std::vector<Layers::Diagnostic> diagnostics;
};

/// The style files of all folders, in the order of loading. Files that are switched off by a
/// leading underscore are left out. The sources stay where they are: trees refer to their texts.
std::vector<std::unique_ptr<StyleSource>> read_style_sources(const Options& options);

/// Every file with this extension below a folder, sorted.
std::vector<std::filesystem::path> files_below(const std::filesystem::path& folder,
                                               const std::string& extension);

std::string read_text(const std::filesystem::path& file);

/// Walks the declarations of style files. Names are unfolded: one declaration may be visited under
/// several paths. Paths go from the root, as those of the loaded tree.
class SourceVisitor {
public:
    virtual ~SourceVisitor() = default;
    void visit(const StyleSource& source);

protected:
    /// A layer that a file declares, or passes through in the path of a declaration.
    virtual void on_layer(const std::string& /*path*/, const Layers::LayerNode* /*node*/,
                          const Place& /*place*/) {}
    /// A value given to an attribute, for some states or for none. `path` ends in its name.
    virtual void on_value(const std::string& /*path*/, const std::string& /*name*/,
                          const Layers::ValueNode& /*value*/, const Place& /*place*/) {}

private:
    void visit_body(const Layers::LayerNode& node, const std::string& path);
    void visit_attribute(const Layers::DeclarationName& declaration,
                         const Layers::AttributeNode& attribute, const std::string& path);
    void visit_group_set(const Layers::GroupSetNode& node, const std::string& path);
    std::vector<std::string> unfold_path(const Layers::DeclarationName& declaration,
                                         const std::string& path);

    const StyleSource* source_ = nullptr;
};

} // namespace CorvelLint
