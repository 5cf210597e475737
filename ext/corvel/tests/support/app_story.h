#pragma once

#include "runtime/app_fixture.h"
#include "support/fake_platform.h"
#include "support/story_line.h"

#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace TestSupport {

/// An application that a story in a file of text tells of. "== " opens a story; a line is a step:
/// "VERB WHAT", or "VERB WHAT => ANSWER". DIR is a folder of the story's own.
class AppStory {
public:
    explicit AppStory(const std::string& interface)
        : app(interface) {
        verbs["click"] = act([this](auto& path) { app->dispatch_event(path, "click"); });
        verbs["advance"] = act([this](auto& time) { platform.advance(std::stoi(time)); });
        verbs["shows"] = [this](auto& path) { return yes(app.shows(path)); };
        verbs["text"] = [this](auto& path) { return app.node(path).text.get(); };
        verbs["state"] = [this](auto& what) { // of a node, between "|"
            const std::size_t bar = what.find('|');
            return yes(app->has_state(what.substr(0, bar), what.substr(bar + 1)));
        };
        verbs["opened"] = [this](auto&) { // the addresses given to the system so far
            std::string urls;
            for (const std::string& url : platform.opened_urls)
                urls += url + ";";
            return urls;
        };
        verbs["openless"] = act([this](auto&) { app->open_url = {}; });
    }

    using Verb = std::function<std::string(const std::string& what)>;
    /// A verb without an answer.
    static Verb act(std::function<void(const std::string&)> does) {
        return [does = std::move(does)](const std::string& what) { return does(what), ""; };
    }
    static std::string yes(bool is) { return is ? "yes" : "no"; }

    std::map<std::string, Verb> verbs;
    TempDir dir;
    TestApp app;
    FakePlatform platform{app.app};
};

/// A story of such a file and its steps.
struct AppStoryText {
    StoryLine title;
    std::vector<StoryLine> steps;
};

inline std::vector<AppStoryText> read_app_stories(const std::string& name) {
    const std::string path = std::string(SOURCE_ROOT) + "/" + name;
    std::istringstream in(read_file(path));
    std::vector<AppStoryText> stories;
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (line.starts_with("== "))
            stories.push_back({{path, number, line.substr(3)}, {}});
        else if (!line.empty() && !line.starts_with("# "))
            stories.at(stories.size() - 1).steps.push_back({path, number, line});
    }
    return stories;
}

template <class Story>
void play_story(const AppStoryText& text) {
    Story story;
    for (const StoryLine& step : text.steps) {
        const std::string line = replaced(step.text, "DIR", story.dir.path().string());
        const std::size_t arrow = std::min(line.find(" =>"), line.size());
        const std::size_t blank = std::min(line.find(' '), arrow);
        const std::string what = blank < arrow ? line.substr(blank + 1, arrow - blank - 1) : "";
        try {
            expect_at(step, verb_of(story.verbs, line.substr(0, blank))(what),
                      arrow + 4 < line.size() ? line.substr(arrow + 4) : "");
        } catch (const std::exception& problem) {
            fail_at(step, problem.what());
            return;
        }
    }
}

/// Makes each story of a file a test of its own, played on a `Story` of its own.
template <class Story>
bool register_stories(const std::string& suite, const std::string& name) {
    const std::vector<AppStoryText> stories = read_app_stories(name);
    if (stories.empty())
        register_test(suite, "HasStories", {name, 1, ""},
                      [name] { FAIL() << "no stories in " << name; });
    for (const AppStoryText& story : stories)
        register_test(suite, story.title.text, story.title, [story] { play_story<Story>(story); });
    return true;
}

} // namespace TestSupport
