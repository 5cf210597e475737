#include "story_player.h"

#include "app_driver.h"
#include "site/favicon.h"
#include "site/json_file.h"
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

    void play(const std::string& verb, const std::string& written) {
        Words words;
        words.all = expand(written);
        std::tie(words.node, words.value) = split(words.all, " = ");
        std::tie(words.name, words.text) = split(words.all, " ");
        words.path = ui_.dir / words.name;
        verbs_.at(verb)(words);
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

    static void expect(const std::string& actual, const std::string& expected) {
        const std::string more = "…";
        if (expected.ends_with(more)) {
            const std::size_t size = expected.size() - more.size();
            EXPECT_EQ(actual.substr(0, size), expected.substr(0, size)) << "of: " << actual;
        } else {
            EXPECT_EQ(actual, expected);
        }
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
        {"builder", [this](auto& w) { answer(w.all); }},
        {"generator", // what the favicon generator answers from now on
         [this](auto& w) {
             generator_error_ = w.all;
             if (w.all == "missing")
                 Lumenfold::favicon_generator() = nullptr;
         }},

        {"text", [this](auto& w) { expect(ui_.text(w.node), w.value); }},
        {"reads", [this](auto& w) { expect(ui_.reading(w.node), w.value); }},
        {"rows", [this](auto& w) { EXPECT_EQ(ui_.rows(w.node), w.value); }},
        {"options", [this](auto& w) { EXPECT_EQ(ui_.options(w.node), w.value); }},
        {"chosen", [this](auto& w) { EXPECT_EQ(ui_.chosen(w.node), w.value); }},
        {"source", [this](auto& w) { EXPECT_EQ(source_of(ui_.node(w.node)), w.value); }},
        {"height",
         [this](auto& w) { EXPECT_EQ(ui_.node(w.node).style->height, std::stod(w.value)); }},
        {"is", [this](auto& w) { EXPECT_TRUE(ui_.has_state(w.node, w.value)); }},
        {"not", [this](auto& w) { EXPECT_FALSE(ui_.has_state(w.node, w.value)); }},
        {"shows", [this](auto& w) { EXPECT_TRUE(ui_.shown(w.all)); }},
        {"hides", [this](auto& w) { EXPECT_TRUE(!ui_.shown(w.all) && ui_.known(w.all)); }},

        {"says", [this](auto& w) { expect(ui_.take_message(), w.all); }},
        {"asks", [this](auto& w) { expect(ui_.question(), w.all); }},
        {"file", [](auto& w) { EXPECT_EQ(read_file(w.path), w.text); }},
        {"json", // as the application writes it
         [](auto& w) {
             const auto value = Lumenfold::Json::parse(w.text);
             EXPECT_EQ(read_file(w.path), Lumenfold::dump_config(value));
         }},
        {"holds",
         [](auto& w) { EXPECT_NE(read_file(w.path).find(w.text), std::string::npos) << w.path; }},
        {"files", [this](auto& w) { EXPECT_EQ(names_of(file_tree(ui_.dir.path())), w.all); }},
        {"there", [](auto& w) { EXPECT_TRUE(std::filesystem::exists(w.path)); }},
        {"gone", [](auto& w) { EXPECT_FALSE(std::filesystem::exists(w.path)); }},
        {"picker", // title, filter and folder of the last file dialog
         [this](auto& w) {
             const Corvel::PickRequest& p = ui_.platform.picks.back();
             EXPECT_EQ(p.mode + "|" + p.title + "|" + p.filter + "|" + p.directory, w.all);
         }},
        {"opened", // the addresses given to the system so far
         [this](auto& w) { EXPECT_EQ(joined(ui_.platform.opened_urls), w.all); }},
        {"ran", // the last process
         [this](auto& w) { EXPECT_EQ(joined(ui_.platform.processes.back().argv), w.all); }},
        {"processes",
         [this](auto& w) { EXPECT_EQ(ui_.platform.processes.size(), std::stoul(w.all)); }},
        {"generated", // what the favicon generator was last asked for
         [this](auto& w) { EXPECT_EQ(std::exchange(generated_, ""), w.all); }},
    };

    AppDriver& ui_;
    std::optional<ReadOnly> read_only_;
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
        for (std::string line; std::getline(in, line);) {
            const std::string where =
                file.path().filename().string() + ":" + std::to_string(++number);
            if (line.starts_with("# ")) {
                finish();
                story = {file.path().stem().string() + ": " + line.substr(2), {}, {}};
            } else if (line.starts_with("given")) {
                givens.push_back(line.substr(std::min<std::size_t>(6, line.size())));
            } else if (line.starts_with(" ")) {
                story.lines.back().second += line.substr(line.find_first_not_of(' ') - 1);
            } else if (!line.empty()) {
                story.lines.emplace_back(where, line);
            }
        }
        finish();
    }
    return stories;
}

void play(const Story& story, AppDriver& ui) {
    Player player(ui);
    for (const auto& [where, written] : story.lines) {
        std::string line = written;
        std::istringstream given(story.given);
        for (char number = '1'; number <= '9' && line.find('$') != std::string::npos; ++number) {
            std::string part;
            std::getline(given, part, '|');
            for (std::size_t at; (at = line.find({'$', number})) != std::string::npos;)
                line.replace(at, 2, part);
        }
        SCOPED_TRACE(where + ": " + line);
        const std::size_t blank = std::min(line.find(' '), line.size());
        try {
            if (!line.empty())
                player.play(line.substr(0, blank), line.substr(std::min(blank + 1, line.size())));
        } catch (const std::exception& problem) {
            FAIL() << problem.what();
        }
    }
    EXPECT_EQ(ui.question(), "");
    EXPECT_EQ(ui.take_message(), "");
}

std::string story_name(const testing::TestParamInfo<Story>& story) {
    std::string name = story.param.name;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

} // namespace TestSupport
