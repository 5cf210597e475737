#include "story_player.h"

#include "app_driver.h"
#include "site/favicon.h"
#include "site/json_file.h"
#include "support/file_size_limit.h"
#include "support/read_only.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <tuple>

namespace TestSupport {
namespace {

std::pair<std::string, std::string> split(const std::string& text, const std::string& separator) {
    const std::size_t at = text.find(separator);
    if (at == std::string::npos)
        return {text.substr(0, text.size() - (text.ends_with(" =") ? 2 : 0)), ""};
    return {text.substr(0, at), text.substr(at + separator.size())};
}

class Player {
public:
    explicit Player(AppDriver& ui)
        : ui_(ui) {
        Lumenfold::favicon_generator() = [this](const Lumenfold::FaviconRequest& request) {
            generated_ = request.source + "|" + request.output_dir + "|" + request.background;
            if (generator_error_.empty())
                for (const char* name :
                     {"favicon-32x32.png", "favicon-16x16.png", "android-chrome-512x512.png"})
                    write_file(std::filesystem::path(request.output_dir) / name, "png");
            return generator_error_;
        };
    }
    ~Player() { Lumenfold::favicon_generator() = nullptr; }

    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;

    void play(const StoryLine& line) {
        line_ = line;
        const std::size_t blank = std::min(line.text.find(' '), line.text.size());
        const std::string verb = line.text.substr(0, blank);
        const std::string written = line.text.substr(std::min(blank + 1, line.text.size()));
        Words words;
        words.all = expand(written);
        std::tie(words.node, words.value) = split(words.all, " = ");
        std::tie(words.name, words.text) = split(words.all, " ");
        words.path = ui_.dir / words.name;
        verb_of(verbs_, verb)(words);
    }

private:
    /// The real text of one that stands in a story.
    std::string expand(const std::string& text) const {
        std::string result;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text.compare(i, 3, "DIR") == 0) {
                result += ui_.dir.path().string();
                i += 2;
            } else if (text[i] != '\\' || i + 1 == text.size()) {
                result += text[i];
            } else if (const char escape = text[++i]; escape == 'x') {
                result += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
                i += 2;
            } else if (escape == '*') {
                std::size_t digits = 0;
                const std::size_t count = std::stoul(text.substr(i + 1), &digits);
                i += digits + 1;
                result.append(count, text.at(i));
            } else {
                result += escape == 'n'   ? '\n'
                          : escape == 't' ? '\t'
                          : escape == 'r' ? '\r'
                                          : escape;
            }
        }
        return result;
    }

    void expect(const std::string& actual, const std::string& expected) const {
        const std::string more = "…";
        if (!expected.ends_with(more))
            expect_at(line_, actual, expected);
        else if (!actual.starts_with(expected.substr(0, expected.size() - more.size())))
            fail_at(line_, "expected: " + expected + "\n  actual: " + readable(actual));
    }
    void expect(std::size_t actual, const std::string& expected) const {
        expect_at(line_, std::to_string(actual), expected);
    }
    /// Fails with what is so instead.
    void expect(bool holds, const char* instead) const {
        if (!holds)
            fail_at(line_, instead);
    }

    void start(const std::string& names) {
        std::istringstream words(names);
        std::vector<std::filesystem::path> files;
        for (std::string name; words >> name;)
            files.push_back(ui_.dir / name);
        ui_.start(files);
    }

    /// "#2 ..." answers from the second process, else the last.
    void answer(const std::string& words) {
        const auto& all = ui_.platform.processes;
        const auto [number, told] =
            words.starts_with("#") ? split(words.substr(1), " ") : std::pair(std::string(), words);
        // A callback may start the next process, so copies are called.
        const FakePlatform::Process process =
            number.empty() ? all.back() : all.at(std::stoul(number) - 1);
        const auto [what, text] = split(told, " ");
        if (what == "prints")
            process.on_line(text);
        else
            process.on_exit(std::stoi(text));
        ui_.advance(0);
    }

    static std::string source_of(const Corvel::RenderNode& node) {
        return node.kind == Corvel::NodeKind::Icon ? node.style->source
                                                   : node.style->effective_source;
    }

    static std::string names_of(const std::map<std::string, std::string>& tree) {
        std::vector<std::string> names;
        for (const auto& [name, content] : tree)
            names.push_back(name);
        return joined(names);
    }

    static std::string joined(const std::vector<std::string>& words) {
        std::string text;
        for (const std::string& word : words)
            text += (text.empty() ? "" : " ") + word;
        return text;
    }

    /// What stands behind a verb: all of it, parted by " = ", parted by a blank.
    struct Words {
        std::string all;
        std::string node;
        std::string value;
        std::string name;
        std::string text;
        std::filesystem::path path; ///< of `name`
    };
    using Verbs = std::map<std::string, std::function<void(const Words&)>>;

    const Verbs verbs_ = {
        {"write", [](auto& w) { write_file(w.path, w.text); }},
        {"mkdir", [](auto& w) { std::filesystem::create_directories(w.path); }},
        {"link", [](auto& w) { std::filesystem::create_symlink(w.text, w.path); }},
        {"delete", [](auto& w) { std::filesystem::remove_all(w.path); }},
        {"read-only", [this](auto&) { read_only_.emplace(ui_.dir.path()); }},
        {"writable", [this](auto&) { read_only_.reset(); }},
        {"full", [this](auto& w) { limit_.emplace(std::stoul(w.all)); }}, // bytes a file may have
        {"room", [this](auto&) { limit_.reset(); }},

        {"start", [this](auto& w) { start(w.all); }},
        {"open", [this](auto& w) { ui_.open(ui_.dir / w.all); }},
        {"quit", [this](auto&) { ui_.quit(); }},
        {"click", [this](auto& w) { ui_.click(w.node); }},
        {"type", [this](auto& w) { ui_.type(w.node, w.value); }},
        {"choose", [this](auto& w) { ui_.choose(w.node, w.value); }},
        {"row", [this](auto& w) { ui_.row_action(w.node, w.value); }},
        {"browse", // with the file, none or "-" for cancelled, that is picked
         [this](auto& w) {
             ui_.platform.next_picks = {w.value == "-" ? "" : w.value};
             ui_.click(w.node);
         }},
        {"wait", [this](auto& w) { ui_.advance(std::stoi(w.all)); }},
        {"confirm", [this](auto&) { ui_.click("Confirm Dialog/Body/Actions/Confirm Button"); }},
        {"cancel", [this](auto&) { ui_.click("Confirm Dialog/Body/Actions/Cancel Button"); }},
        {"activate", // another program was in front until now
         [this](auto&) {
             ui_.app->on_activate();
             ui_.advance(0);
         }},
        {"builder", [this](auto& w) { answer(w.all); }},
        {"generator", // what the favicon generator answers from now on
         [this](auto& w) {
             generator_error_ = w.all;
             if (w.all == "missing")
                 Lumenfold::favicon_generator() = nullptr;
         }},

        {"text", [this](auto& w) { expect(ui_.text(w.node), w.value); }},
        {"reads", [this](auto& w) { expect(ui_.reading(w.node), w.value); }},
        {"rows", [this](auto& w) { expect(ui_.rows(w.node), w.value); }},
        {"options", [this](auto& w) { expect(ui_.options(w.node), w.value); }},
        {"chosen", [this](auto& w) { expect(ui_.chosen(w.node), w.value); }},
        {"source", [this](auto& w) { expect(source_of(ui_.node(w.node)), w.value); }},
        {"height",
         [this](auto& w) {
             expect(ui_.node(w.node).style->height == std::stod(w.value), "another height");
         }},
        {"is",
         [this](auto& w) { expect(ui_.has_state(w.node, w.value), "the node lacks the state"); }},
        {"not",
         [this](auto& w) { expect(!ui_.has_state(w.node, w.value), "the node has the state"); }},
        {"shows", [this](auto& w) { expect(ui_.shown(w.all), "not on screen"); }},
        {"hides",
         [this](auto& w) {
             expect(!ui_.shown(w.all) && ui_.known(w.all), "on screen, or no such node");
         }},

        {"says", [this](auto& w) { expect(ui_.take_message(), w.all); }},
        {"asks", [this](auto& w) { expect(ui_.question(), w.all); }},
        {"file", [this](auto& w) { expect(read_file(w.path), w.text); }},
        {"json", // as the application writes it
         [this](auto& w) {
             const auto value = Lumenfold::Json::parse(w.text);
             expect(read_file(w.path), Lumenfold::dump_config(value).value_or(""));
         }},
        {"holds",
         [this](auto& w) {
             const std::string content = read_file(w.path);
             if (content.find(w.text) == std::string::npos)
                 fail_at(line_, "the file holds: " + readable(content));
         }},
        {"files", [this](auto& w) { expect(names_of(file_tree(ui_.dir.path())), w.all); }},
        {"there", [this](auto& w) { expect(std::filesystem::exists(w.path), "not there"); }},
        {"gone", [this](auto& w) { expect(!std::filesystem::exists(w.path), "still there"); }},
        {"picker", // title, filter and folder of the last file dialog
         [this](auto& w) {
             const Corvel::PickRequest& p = ui_.platform.picks.back();
             expect(p.mode + "|" + p.title + "|" + p.filter + "|" + p.directory, w.all);
         }},
        {"opened", // the addresses given to the system so far
         [this](auto& w) { expect(joined(ui_.platform.opened_urls), w.all); }},
        {"ran", // the last process
         [this](auto& w) { expect(joined(ui_.platform.processes.back().argv), w.all); }},
        {"stopped", // how many processes were not waited for
         [this](auto& w) {
             const auto& all = ui_.platform.processes;
             const auto stopped = [](const auto& process) { return process.stopped; };
             expect(std::count_if(all.begin(), all.end(), stopped), w.all);
         }},
        {"processes", [this](auto& w) { expect(ui_.platform.processes.size(), w.all); }},
        {"kept", // the unsaved text that lies in the application's folder
         [this](auto& w) {
             std::string texts;
             for (const auto& [name, content] : file_tree(ui_.data.path()))
                 if (name.ends_with(".kept"))
                     texts += Lumenfold::text_at(Lumenfold::Json::parse(content), "text");
             expect(texts, w.all);
         }},
        {"generated", // what the favicon generator was last asked for
         [this](auto& w) { expect(std::exchange(generated_, ""), w.all); }},
    };

    AppDriver& ui_;
    StoryLine line_; ///< being played
    std::optional<ReadOnly> read_only_;
    std::optional<FileSizeLimit> limit_;
    std::string generator_error_;
    std::string generated_;
};

} // namespace

std::vector<Story> read_stories(const std::string& folder) {
    std::vector<Story> stories;
    for (const auto& file :
         std::filesystem::directory_iterator(std::string(SOURCE_ROOT) + "/tests/app/" + folder)) {
        std::ifstream in(file.path());
        std::vector<std::string> givens;
        Story story;
        const auto finish = [&] {
            if (givens.empty() && !story.lines.empty())
                stories.push_back(story);
            for (std::size_t i = 0; i < givens.size(); ++i)
                stories.push_back(
                    {story.name + " " + std::to_string(i + 1), givens[i], story.lines});
            givens.clear();
        };
        int number = 0;
        bool behind_blank = true;
        for (std::string line; std::getline(in, line); behind_blank = line.empty()) {
            ++number;
            if (line.starts_with("== ")) {
                finish();
                story = {file.path().stem().string() + ": " + line.substr(3), {}, {}};
            } else if (line.starts_with("given")) {
                givens.push_back(line.substr(std::min<std::size_t>(6, line.size())));
            } else if (line.starts_with(" ")) {
                story.lines.back().text += line.substr(line.find_first_not_of(' ') - 1);
            } else if (!line.empty() && (behind_blank || !line.starts_with("# "))) {
                // A remark in a title's place is played, and fails as the slip that it is.
                story.lines.push_back({file.path().string(), number, line});
            }
        }
        finish();
    }
    return stories;
}

void play(const Story& story, AppDriver& ui) {
    Player player(ui);
    for (StoryLine line : story.lines) {
        std::istringstream given(story.given);
        for (char number = '1'; number <= '9' && line.text.find('$') != std::string::npos;
             ++number) {
            std::string part;
            std::getline(given, part, '|');
            line.text = replaced(line.text, {'$', number}, part);
        }
        if (line.text.empty())
            continue; // a part of "given" that stands for no step
        try {
            player.play(line);
        } catch (const std::exception& problem) {
            return fail_at(line, problem.what());
        }
    }
    EXPECT_EQ(ui.question(), "");
    EXPECT_EQ(ui.take_message(), "");
}

std::string story_name(const testing::TestParamInfo<Story>& story) {
    return test_name(story.param.name);
}

} // namespace TestSupport
