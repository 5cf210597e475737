#pragma once

#include "runtime/corvel_app.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TestSupport {

/// A prototype for every kind of node, and the one that marks details.
inline const std::string prototypes =
    "Box\nText\nButton\nIcon\nEditor\nImage\nVideo\nMarkdown\nQR\n"
    "Scanner\nCheck Box\nCombo Box\nLink\nHost\nDetail\n";

inline const std::string theme_layer = "Theme:\n"
                                       "    Foreground: \"\"\n"
                                       "    Gradient.Start: 0\n"
                                       "    Gradient.Start Color: \"\"\n"
                                       "    Gradient.End: 0\n"
                                       "    Gradient.End Color: \"\"\n"
                                       "    Primary: \"\"\n"
                                       "    Secondary: \"\"\n"
                                       "    Tertiary: \"\"\n";

inline std::string theme_text(const std::string& name, const std::string& members) {
    return "{\"" + name + "\": {" + members + "}}";
}

/// The node at `path` below `tree`; null if there is none.
inline const Corvel::RenderNode* find_node(const Corvel::RenderNode& tree,
                                           const std::string& path) {
    if (tree.path == path)
        return &tree;
    for (const Corvel::RenderNode& child : tree.children) {
        if (const Corvel::RenderNode* found = find_node(child, path))
            return found;
    }
    return nullptr;
}

/// "+path@index -path upath !path epath=text" for patches that add, remove, update, replace and set
/// the text of an editor.
inline std::string patches_text(const std::vector<Corvel::RenderPatch>& patches) {
    std::string text;
    for (const Corvel::RenderPatch& patch : patches) {
        text += text.empty() ? "" : " ";
        text += "+-u!e"[static_cast<int>(patch.kind)] + patch.path.get();
        if (patch.kind == Corvel::PatchKind::Add)
            text += "@" + std::to_string(patch.index);
        if (patch.kind == Corvel::PatchKind::SetEditorText)
            text += "=" + patch.node.text.get();
    }
    return text;
}

/// An application whose styles and themes are written by the test. Its root is "App".
class TestApp {
public:
    /// `interface` is the text of the application's own style file; each theme is a file's text.
    explicit TestApp(const std::string& interface,
                     const std::vector<std::string>& themes = {theme_text("Plain", "")}) {
        write_file(dir / "styles/widgets/widgets.lyr", prototypes);
        write_file(dir / "styles/mounts/theme.lyr", theme_layer);
        write_file(dir / "app/app.lyr", interface);
        std::filesystem::create_directories(dir / "themes");
        for (std::size_t i = 0; i < themes.size(); ++i)
            write_file(dir / ("themes/" + std::to_string(i) + ".json"), themes[i]);
        app.set_root("App");
        EXPECT_TRUE(app.load_assets((dir / "themes").string(), (dir / "styles").string(), "",
                                    {(dir / "app").string()}));
    }

    Corvel::CorvelApp* operator->() { return &app; }

    /// The node at `path` of a tree built now; one of another path if there is none.
    Corvel::RenderNode node(const std::string& path) {
        const Corvel::RenderNode tree = app.build_render_tree();
        const Corvel::RenderNode* found = find_node(tree, path);
        return found ? *found : Corvel::RenderNode();
    }
    bool shows(const std::string& path) { return node(path).path == path; }
    /// The names of the node's children, each followed by a semicolon.
    std::string children(const std::string& path) {
        std::string names;
        for (const Corvel::RenderNode& child : node(path).children)
            names += child.name.get() + ";";
        return names;
    }

    TempDir dir;
    Corvel::CorvelApp app;
};

} // namespace TestSupport
