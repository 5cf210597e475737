#include "app_driver.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace TestSupport {

namespace {

const std::string MESSAGE_DIALOG = "App/Message Dialog";
const std::string CONFIRM_DIALOG = "App/Confirm Dialog";

} // namespace

AppDriver::AppDriver()
    : app(load_app())
    , platform(*app) {}

void AppDriver::start(const std::vector<std::filesystem::path>& files) {
    build_with_files(*app, files);
    render();
}

void AppDriver::click(const std::string& path) {
    ASSERT_TRUE(shown(path)) << "click on " << path;
    app->dispatch_event(path, "click");
    render();
}

void AppDriver::type(const std::string& path, const std::string& text) {
    const auto editor = editors_.find(path);
    ASSERT_TRUE(editor != editors_.end()) << "typing into " << path;
    editor->second.content = text;
    app->dispatch_event(path, "input:" + text);
    render();
}

void AppDriver::choose(const std::string& path, const std::string& value) {
    ASSERT_TRUE(shown(path)) << "choice in " << path;
    app->dispatch_event(path, "select:" + value);
    render();
}

void AppDriver::row_action(const std::string& row_path, const std::string& action) {
    ASSERT_TRUE(shown(row_path)) << "row " << row_path;
    const std::string below = row_path + "/";
    for (const auto& [path, entry] : view_.nodes()) {
        if ((path == row_path || path.starts_with(below)) &&
            entry.shown.style->intent == "list:" + action) {
            click(std::string(path));
            return;
        }
    }
    FAIL() << "nothing below " << row_path << " does " << action;
}

void AppDriver::advance(int milliseconds) {
    platform.advance(milliseconds);
    render();
}

bool AppDriver::shown(const std::string& path) const {
    const auto found = view_.nodes().find(path);
    return found != view_.nodes().end() && found->second.shown.style->visible;
}

const Corvel::RenderNode& AppDriver::node(const std::string& path) const {
    const auto found = view_.nodes().find(path);
    if (found == view_.nodes().end())
        throw std::runtime_error("not on screen: " + path);
    return found->second.shown;
}

std::string AppDriver::text(const std::string& path) const {
    const auto editor = editors_.find(path);
    return editor != editors_.end() ? editor->second.content : node(path).text.get();
}

std::string AppDriver::reading(const std::string& path) const {
    std::string words = text(path);
    for (const std::string& child : view_.nodes().at(path).children)
        if (std::string below = shown(child) ? reading(child) : std::string(); !below.empty())
            words += (words.empty() ? "" : "|") + below;
    return words;
}

std::string AppDriver::source(const std::string& path) const {
    return node(path).style->effective_source;
}

double AppDriver::height(const std::string& path) const {
    return node(path).style->height;
}

bool AppDriver::has_state(const std::string& path, const std::string& state) const {
    return app->has_state(path, state);
}

std::vector<std::string> AppDriver::rows(const std::string& list_path) const {
    std::vector<std::string> names;
    const auto found = view_.nodes().find(list_path);
    if (found == view_.nodes().end())
        return names;
    for (const std::string& path : found->second.children)
        names.push_back(path.substr(list_path.size() + 1));
    return names;
}

std::vector<std::string> AppDriver::options(const std::string& path) const {
    std::vector<std::string> labels;
    const Corvel::RenderNode& combo = node(path);
    for (const Corvel::ComboItem& item : combo.items.get())
        labels.push_back(item.label);
    return labels;
}

std::string AppDriver::selected(const std::string& path) const {
    return node(path).selected;
}

Corvel::NodeKind AppDriver::kind(const std::string& path) const {
    return node(path).kind;
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

void AppDriver::confirm() {
    click(CONFIRM_DIALOG + "/Body/Actions/Confirm Button");
}

void AppDriver::cancel() {
    click(CONFIRM_DIALOG + "/Body/Actions/Cancel Button");
}

void AppDriver::render() {
    const std::vector<Corvel::RenderPatch> patches = app->render_patches();
    for (const Corvel::RenderPatch& patch : patches)
        apply_to_editors(patch);
    EXPECT_EQ(view_.apply(patches), "");
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
    const auto editor = editors_.find(path);
    switch (patch.kind) {
    case Corvel::PatchKind::Add:
    case Corvel::PatchKind::Replace:
        add_editors(patch.node);
        break;
    case Corvel::PatchKind::Remove:
        std::erase_if(editors_, [&](const auto& entry) {
            return entry.first == path || entry.first.starts_with(path + "/");
        });
        break;
    case Corvel::PatchKind::Update:
        if (editor != editors_.end() && patch.node.text.get() != editor->second.rendered)
            push(editor->second, patch.node.text);
        break;
    case Corvel::PatchKind::SetEditorText:
        if (editor != editors_.end())
            push(editor->second, patch.node.text);
        break;
    }
}

void AppDriver::push(Editor& editor, const std::string& text) const {
    editor.content = text;
    editor.rendered = text;
}

} // namespace TestSupport
