#include "app_driver.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace TestSupport {

namespace {

const std::string MESSAGE_DIALOG = "App/Message Dialog";
const std::string CONFIRM_DIALOG = "App/Confirm Dialog";

bool is_named(std::string_view path, std::string_view name) {
    return path.ends_with(name) &&
           (path.size() == name.size() || path[path.size() - name.size() - 1] == '/');
}

} // namespace

AppDriver::AppDriver()
    : app(load_app())
    , platform(*app) {
    app->data_folder = data.path().string();
}

void AppDriver::start(const std::vector<std::filesystem::path>& files) {
    build_with_files(*app, files);
    render();
}

void AppDriver::open(const std::filesystem::path& file) {
    platform.next_picks = {file.string()};
    click("Right Tabs/App Tab");
    click("Home/Open Button");
}

std::string AppDriver::path_of(const std::string& node) const {
    std::string found;
    for (const auto& [path, entry] : screen().nodes()) {
        if (!is_named(path, node) || !entry.shown.style->visible)
            continue;
        if (!found.empty())
            throw std::runtime_error(node + " is both " + found + " and " + path);
        found = path;
    }
    if (found.empty())
        throw std::runtime_error("not on screen: " + node);
    return found;
}

void AppDriver::click(const std::string& node) {
    app->dispatch_event(path_of(node), "click");
    render();
}

void AppDriver::type(const std::string& node, const std::string& text) {
    const std::string path = path_of(node);
    editors_.at(path).content = text;
    app->dispatch_event(path, "input:" + text);
    render();
}

void AppDriver::choose(const std::string& node, const std::string& value) {
    app->dispatch_event(path_of(node), "select:" + value);
    render();
}

void AppDriver::row_action(const std::string& row, const std::string& action) {
    const std::string row_path = path_of(row);
    for (const auto& [path, entry] : screen().nodes())
        if ((path == row_path || path.starts_with(row_path + "/")) &&
            entry.shown.style->intent == "list:" + action)
            return click(std::string(path));
    throw std::runtime_error("nothing below " + row_path + " does " + action);
}

void AppDriver::advance(int milliseconds) {
    platform.advance(milliseconds);
    render();
}

bool AppDriver::shown(const std::string& node) const {
    for (const auto& [path, entry] : screen().nodes())
        if (is_named(path, node) && entry.shown.style->visible)
            return true;
    return false;
}

bool AppDriver::known(const std::string& node) const {
    for (const std::string& path : seen_)
        if (is_named(path, node))
            return true;
    for (const auto& [path, uses] : app->path_uses())
        if (is_named(path, node))
            return true;
    return false;
}

const Corvel::RenderNode& AppDriver::node(const std::string& node) const {
    return screen().nodes().at(path_of(node)).shown;
}

std::string AppDriver::text(const std::string& node) const {
    const std::string path = path_of(node);
    const auto editor = editors_.find(path);
    return editor != editors_.end() ? editor->second.content
                                    : screen().nodes().at(path).shown.text.get();
}

std::string AppDriver::reading(const std::string& node) const {
    const std::string path = path_of(node);
    std::string words = text(path);
    const std::vector<std::string> children = screen().nodes().at(path).children;
    for (const std::string& child : children)
        if (std::string below = shown(child) ? reading(child) : std::string(); !below.empty())
            words += (words.empty() ? "" : "|") + below;
    return words;
}

bool AppDriver::has_state(const std::string& node, const std::string& state) const {
    return app->has_state(path_of(node), state);
}

std::string AppDriver::rows(const std::string& list) const {
    std::string names;
    const std::string list_path = path_of(list);
    for (const std::string& path : screen().nodes().at(list_path).children)
        if (!path.ends_with(":sep"))
            names += (names.empty() ? "" : " ") + path.substr(list_path.size() + 1);
    return names;
}

std::string AppDriver::chosen(const std::string& node) const {
    return this->node(node).selected;
}

std::string AppDriver::options(const std::string& node) const {
    std::string labels;
    for (const Corvel::ComboItem& item : this->node(node).items.get())
        labels += (labels.empty() ? "" : "|") + item.label;
    return labels;
}

std::string AppDriver::take_message() {
    if (!shown(MESSAGE_DIALOG))
        return {};
    std::string message =
        text(MESSAGE_DIALOG + "/Titlebar/Title") + ": " + text(MESSAGE_DIALOG + "/Body/Message");
    click(MESSAGE_DIALOG + "/Body/OK Button");
    EXPECT_FALSE(shown(MESSAGE_DIALOG));
    return message;
}

std::string AppDriver::question() const {
    if (!shown(CONFIRM_DIALOG))
        return {};
    return text(CONFIRM_DIALOG + "/Titlebar/Title") + ": " +
           text(CONFIRM_DIALOG + "/Body/Message") + " [" +
           text(CONFIRM_DIALOG + "/Body/Actions/Confirm Button/Label") + "]";
}

void AppDriver::render() {
    const std::vector<Corvel::RenderPatch> patches = app->render_patches();
    for (const Corvel::RenderPatch& patch : patches)
        apply_to_editors(patch);
    EXPECT_EQ(view_.apply(patches), "");
    note_seen();
}

void AppDriver::note_seen() {
    for (const auto& [path, entry] : screen().nodes())
        seen_.insert(path);
}

void AppDriver::add_editors(const Corvel::RenderNode& node) {
    if (node.kind == Corvel::NodeKind::Editor) {
        const bool typed = app->has_input_value(node.path);
        editors_[node.path] = {typed ? app->input_value(node.path) : node.text.get(), node.text};
    }
    for (const Corvel::RenderNode& child : node.children)
        add_editors(child);
}

void AppDriver::apply_to_editors(const Corvel::RenderPatch& patch) {
    const std::string& path = patch.path;
    if (patch.kind == Corvel::PatchKind::Add || patch.kind == Corvel::PatchKind::Replace)
        return add_editors(patch.node);
    if (patch.kind == Corvel::PatchKind::Remove) {
        std::erase_if(editors_, [&](const auto& entry) {
            return entry.first == path || entry.first.starts_with(path + "/");
        });
        return;
    }
    const auto editor = editors_.find(path);
    if (editor != editors_.end() && (patch.kind == Corvel::PatchKind::SetEditorText ||
                                     patch.node.text.get() != editor->second.rendered))
        editor->second = {patch.node.text, patch.node.text};
}

} // namespace TestSupport
