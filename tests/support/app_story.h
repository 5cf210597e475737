#pragma once

#include "runtime/app_fixture.h"
#include "support/fake_platform.h"

#include <functional>
#include <map>
#include <memory>
#include <sstream>
#include <string>

namespace TestSupport {

/// An application that a story in a file of text tells of. "# " opens a story; a line is a step:
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

/// Plays the stories of a file, each on a `Story` of its own.
template <class Story>
void play_stories(const std::string& name) {
    std::istringstream in(read_file(std::filesystem::path(SOURCE_ROOT) / name));
    std::unique_ptr<Story> story;
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("# ")) {
            story = std::make_unique<Story>();
            continue;
        }
        if (line.empty())
            continue;
        SCOPED_TRACE(name + ": " + line);
        for (std::size_t at = 0; (at = line.find("DIR", at)) != std::string::npos;)
            line.replace(at, 3, story->dir.path().string());
        const std::size_t arrow = std::min(line.find(" =>"), line.size());
        const std::size_t blank = std::min(line.find(' '), arrow);
        const std::string what = blank < arrow ? line.substr(blank + 1, arrow - blank - 1) : "";
        EXPECT_EQ(story->verbs.at(line.substr(0, blank))(what),
                  arrow + 4 < line.size() ? line.substr(arrow + 4) : "");
    }
    EXPECT_TRUE(story) << "no stories in " << name;
}

} // namespace TestSupport
