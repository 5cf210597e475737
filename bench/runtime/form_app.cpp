#include "runtime/form_app.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <stdlib.h>

namespace Bench {
namespace {

namespace fs = std::filesystem;

constexpr int row_nodes = 5;

class Folders {
public:
    std::string make() {
        std::string pattern = (fs::temp_directory_path() / "corvel-bench-XXXXXX").string();
        if (!::mkdtemp(pattern.data()))
            throw std::runtime_error("cannot make a temporary folder");
        folders_.push_back(pattern);
        return pattern;
    }
    ~Folders() {
        std::error_code ignored;
        for (const std::string& folder : folders_)
            fs::remove_all(folder, ignored);
    }

private:
    std::vector<std::string> folders_;
};

void write_file(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

void append_row(std::string& text, const std::string& indent, const std::string& name) {
    const std::string inner = indent + "    ";
    const std::string value = inner + "    ";
    text += indent + name + " << Corvel/Box:\n";
    text += inner + "Fill: Theme/Secondary\n" + inner + "Layout.Direction: \"Row\"\n";
    text += inner + "Layout.Spacing: 8\n" + inner + "Padding.(Left, Right, Top, Bottom): 6\n";
    text += inner + "Label << Corvel/Text:\n" + value + "Text: \"A label\"\n";
    text += value + "Text Color: Theme/Foreground\n" + value + "Font.Size: 14\n";
    text += value + "Bind: \"Field:label\"\n";
    text += inner + "Editor << Corvel/Editor:\n" + value + "Fill: Theme/Tertiary\n";
    text += value + "Text Color: Theme/Foreground\n" + value + "Placeholder: \"A value\"\n";
    text += value + "Layout.Grow: 1\n" + value + "Read Only: 0 @Locked: 1\n";
    text += inner + "Button << Corvel/Button:\n" + value + "Fill: Theme/Primary\n";
    text += value + "Text: \"Remove\"\n" + value + "Intent: \"list:remove\"\n";
    text += value + "Size.Height: 32\n";
    text += inner + "Icon << Corvel/Icon:\n" + value + "Source: \"trash\"\n";
    text += value + "Text Color: Theme/Foreground\n" + value + "Size.(Width, Height): 18\n";
}

std::string theme(const std::string& name, const std::string& digit) {
    std::string text = "{\"" + name + "\": {";
    for (const char* key : {"Foreground", "Primary", "Secondary", "Tertiary"})
        text += std::string("\"") + key + "\": \"#" + digit + digit + digit + "\", ";
    return text + "\"_meta\": {}}}";
}

} // namespace

std::string write_form(FormShape shape, int nodes) {
    static Folders folders;
    const std::string folder = folders.make();
    write_file(folder + "/styles/widgets/kinds.lyr", "Box\nText\nEditor\nButton\nIcon\n");
    write_file(folder + "/styles/mounts/theme.lyr",
               "Theme:\n    (Foreground, Primary, Secondary, Tertiary): \"\"\n");
    write_file(folder + "/themes/dark.json", theme("Dark", "1"));
    write_file(folder + "/themes/light.json", theme("Light", "e"));

    const bool list = shape == FormShape::ListRows;
    std::string text = "App:\n    Form << Corvel/Box:\n        Fill: Theme/Primary\n";
    if (list)
        text += "        Bind: \"List:rows\"\n";
    for (int row = 0; row < (list ? 1 : nodes / row_nodes); ++row)
        append_row(text, "        ", "Row N" + std::to_string(row));
    // Rows of layers have no fields, which would hide their labels.
    if (!list) {
        const std::string bind = "                Bind: \"Field:label\"\n";
        for (std::size_t at = text.find(bind); at != std::string::npos; at = text.find(bind, at))
            text.erase(at, bind.size());
    }
    write_file(folder + "/app/form.lyr", text);
    return folder;
}

FormApp::FormApp(const std::string& folder, FormShape shape, int nodes) {
    app.set_root("App");
    if (!app.load_assets(folder + "/themes", folder + "/styles", "Dark", {folder + "/app"}))
        throw std::runtime_error("the form does not load");
    first_label = "App/Form/Row N0/Label";
    if (shape == FormShape::DistinctLayers)
        return;
    std::vector<Corvel::ListEntry> rows;
    for (int row = 0; row < nodes / row_nodes; ++row)
        rows.push_back({"Row N" + std::to_string(row), {{"label", "Row " + std::to_string(row)}}});
    app.set_rows("rows", rows);
}

} // namespace Bench
