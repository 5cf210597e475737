// Plays tests/desktop/view/stories/*.txt. "== " opens a story; a line is a step: a verb, a path
// and, behind " = ", a text, which is expected where the verb is a reading. Indented lines below a
// step are its nodes: a kind, a name and, each behind " | ", "text=" and attributes as in a style
// file. "~" behind a path means its scrim. Patches in a row reach the view together; "then" parts
// them. What was heard must have been read at the end.
#include "layers/attribute_table.h"
#include "support/story_line.h"
#include "view_fixture.h"

#include <QApplication>
#include <QGraphicsOpacityEffect>
#include <QPointer>
#include <QVariant>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>
#include <type_traits>

namespace ViewTest {
namespace {

using TestSupport::StoryLine;

struct Story {
    StoryLine title;
    std::vector<StoryLine> lines;
};

std::vector<Story> read_stories() {
    std::vector<Story> stories;
    for (const auto& file :
         std::filesystem::directory_iterator(SOURCE_ROOT "/tests/desktop/view/stories")) {
        std::ifstream in(file.path());
        int number = 0;
        for (std::string line; std::getline(in, line);) {
            const StoryLine read{file.path().string(), ++number, line};
            if (line.starts_with("== "))
                stories.push_back({read, {}});
            else if (!line.empty() && !line.starts_with("#"))
                stories.back().lines.push_back(read);
        }
    }
    return stories;
}

/// What stands before the separator and behind it.
std::pair<std::string, std::string> split(const std::string& text, const std::string& separator) {
    const std::size_t at = std::min(text.find(separator), text.size());
    return {text.substr(0, at), text.substr(std::min(at + separator.size(), text.size()))};
}

QString joined(const std::vector<std::string>& names) {
    QStringList list;
    for (const std::string& name : names)
        list += QString::fromStdString(name);
    return list.join(QLatin1Char(' '));
}

void set_attribute(NodeStyle& style, const std::string& name, const std::string& value) {
    const auto& table = Layers::attribute_table();
    const auto entry = std::ranges::find(table, name, [](const auto& e) { return e.info.name; });
    if (entry == table.end())
        throw std::invalid_argument("no attribute " + name);
    const auto set = [&](auto field) {
        if constexpr (std::is_same_v<decltype(field), std::string NodeStyle::*>)
            style.*field = value;
        else if constexpr (std::is_same_v<decltype(field), std::monostate>)
            throw std::invalid_argument("no field for " + name);
        else
            style.*field = static_cast<std::decay_t<decltype(style.*field)>>(std::stod(value));
    };
    std::visit(set, entry->field);
}

class ViewStory : public ViewFixture, public testing::WithParamInterface<Story> {
protected:
    using Text = const std::string&;

    /// The node of the next line with those that are indented below it.
    RenderNode read_node() {
        static const std::map<std::string, NodeKind> kinds = {
            {"Box", NodeKind::Box},   {"Text", NodeKind::Text},     {"Button", NodeKind::Button},
            {"Icon", NodeKind::Icon}, {"Editor", NodeKind::Editor}, {"Check", NodeKind::CheckBox}};
        const auto indent = [](Text line) { return line.find_first_not_of(' '); };
        Text line = lines.at(next++).text;
        auto [head, rest] = split(line.substr(indent(line)), " | ");
        const auto [kind, name] = split(head, " ");
        RenderNode made = node(kinds.at(kind), name);
        while (!rest.empty()) {
            const auto [part, others] = split(rest, " | ");
            const auto [key, value] = split(part, "=");
            if (key == "text")
                made.text = value;
            else
                set_attribute(made.style.edit(), key, value);
            rest = std::string(others);
        }
        while (next < lines.size() && indent(lines[next].text) > indent(line))
            made.children.push_back(read_node());
        return made;
    }

    void play(const StoryLine& line) {
        Text step = line.text;
        const auto [verb, rest] = split(step + (step.ends_with(" =") ? " " : ""), " ");
        const auto [path, value] = split(rest.starts_with("= ") ? " " + rest : rest, " = ");
        if (const auto patch = patches.find(verb); patch != patches.end())
            return waiting.push_back(patch->second(path, value));
        if (!waiting.empty())
            apply(std::exchange(waiting, {}));
        if (const auto reading = readings.find(verb); reading != readings.end())
            return TestSupport::expect_at(line, reading->second(path).toString().toStdString(),
                                          value);
        TestSupport::verb_of(actions, verb)(path, value);
    }

    QScrollBar* scroll_bar(Text path) {
        return record(path).arrangement.scroll_area->verticalScrollBar();
    }

    std::vector<StoryLine> lines = GetParam().lines;
    std::size_t next = 0;
    std::vector<RenderPatch> waiting;
    QString heard; ///< clicks and what was typed
    QPointer<QWidget> remembered;

    const std::map<std::string, std::function<RenderPatch(Text path, Text value)>> patches = {
        {"add",
         [this](Text path, Text index) { return add(path, read_node(), std::stoi("0" + index)); }},
        {"update", [this](Text path, Text) { return update(path, read_node()); }},
        {"replace", [this](Text path, Text) { return replace(path, read_node()); }},
        {"remove", [](Text path, Text) { return removal(path); }},
        {"push", [](Text path, Text words) { return editor_text(path, words); }},
    };

    const std::map<std::string, std::function<void(Text path, Text value)>> actions = {
        {"then", [](Text, Text) {}},
        {"show", [this](Text, Text) { show(read_node()); }},
        {"wait", [](Text time, Text) { QTest::qWait(std::stoi(time)); }},
        {"rest", [this](Text path, Text) { EXPECT_TRUE(still(path)); }},
        {"remember", [this](Text path, Text) { remembered = widget_at(path); }},
        {"input", [this](Text path, Text value) { app.set_input_value(path, value); }},
        {"press", [this](Text path, Text) { press(path); }},
        {"focus", [this](Text path, Text) { line(path)->setFocus(); }},
        {"scroll", [this](Text path, Text to) { scroll_bar(path)->setValue(std::stoi(to)); }},
        {"resize",
         [this](Text width, Text height) {
             window->resize(std::stoi(width), std::stoi(height));
             settle();
         }},
        {"listen",
         [this](Text path, Text) {
             const auto hear = [this](Text what) {
                 heard += QStringLiteral("<%1>").arg(QString::fromStdString(what));
             };
             app.on_click(path, [hear, path] { hear(path); });
             app.on_input(path, hear);
         }},
        {"click",
         [this](Text path, Text number) {
             const auto button = static_cast<Qt::MouseButton>(std::stoi(number));
             QTest::mouseClick(window->windowHandle(), button, {}, place(path).center());
         }},
        {"key",
         [this](Text name, Text) {
             const QKeyCombination key = QKeySequence(QString::fromStdString(name))[0];
             QTest::keyClick(window->focusWidget(), key.key(), key.keyboardModifiers());
         }},
        {"popup", // takes the focus for as long as it is open
         [this](Text path, Text) {
             QFocusEvent out(QEvent::FocusOut, Qt::PopupFocusReason);
             QCoreApplication::sendEvent(line(path), &out);
         }},
        {"end", // of the program
         [this](Text, Text) {
             window.reset();
             settle();
             EXPECT_FALSE(app.on_async_change);
         }},
    };

    const std::map<std::string, std::function<QVariant(Text path)>> readings = {
        {"x", [this](Text path) { return place(path).x(); }},
        {"y", [this](Text path) { return place(path).y(); }},
        {"width", [this](Text path) { return place(path).width(); }},
        {"height", [this](Text path) { return place(path).height(); }},
        {"inset", [this](Text path) { return record(path).layout->contentsMargins().bottom(); }},
        {"floating", [this](Text path) { return record(path).arrangement.floating_children; }},
        {"slid", [this](Text path) { return record(path).overlay.position; }},
        {"opacity", [this](Text path) { return record(path).overlay.effect->opacity(); }},
        {"fades", [this](Text path) { return record(path).overlay.effect->isEnabled(); }},
        {"effect", [this](Text path) { return record(path).outer->graphicsEffect() != nullptr; }},
        {"shown", [this](Text path) { return widget_at(path)->isVisible(); }},
        {"known", [this](Text path) { return view.widget_at(path) != nullptr; }},
        {"same", [this](Text path) { return remembered == widget_at(path); }},
        {"gone", [this](Text) { return remembered.isNull(); }},
        {"order", [this](Text path) { return joined(laid_out(path)); }},
        {"nodes", [this](Text) { return static_cast<int>(state.nodes.size()); }},
        {"windows", [](Text) { return static_cast<int>(windows()); }},
        {"scrolls", [this](Text) { return window->findChildren<QScrollArea*>().size(); }},
        {"scrolled", [this](Text path) { return scroll_bar(path)->value(); }},
        {"words", [this](Text path) { return widget<WrapLabel>(path)->text(); }},
        {"field", [this](Text path) { return line(path)->text(); }},
        {"caret", [this](Text path) { return line(path)->cursorPosition(); }},
        {"selected", [this](Text path) { return line(path)->selectedText(); }},
        {"secret", [this](Text path) { return line(path)->echoMode() == QLineEdit::Password; }},
        {"typed", [this](Text path) { return QString::fromStdString(app.input_value(path)); }},
        {"focused", [this](Text) { return window->focusWidget()->parentWidget()->objectName(); }},
        {"heard", [this](Text) { return std::exchange(heard, {}); }},
        {"open", [this](Text) { return window->isVisible(); }},
        {"minimized", [this](Text) { return window->isMinimized(); }},
        {"maximized", // and the application knows
         [this](Text) { return window->isMaximized() && !app.set_maximized(true); }},
    };
};

TEST_P(ViewStory, Plays) {
    while (next < lines.size()) {
        const StoryLine step = lines[next++];
        try {
            play(step);
        } catch (const std::exception& problem) {
            return TestSupport::fail_at(step, problem.what());
        }
    }
    apply(waiting);
    TestSupport::expect_at(GetParam().title, heard.toStdString(), "");
}

std::string name_of(const testing::TestParamInfo<Story>& story) {
    return TestSupport::test_name(story.param.title.text.substr(3));
}

INSTANTIATE_TEST_SUITE_P(Stories, ViewStory, testing::ValuesIn(read_stories()), name_of);

} // namespace
} // namespace ViewTest
