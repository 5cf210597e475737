#include "story_player.h"

#include "app_driver.h"
#include "site/favicon.h"
#include "site/json_file.h"
#include "support/read_only.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <optional>
#include <sstream>

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

    void play(const std::string& verb, const std::string& text) {
        const std::string rest = expand(text);
        const auto [node, value] = split(rest, " = ");
        if (!change_files(verb, rest) && !act(verb, node, value) && !check_node(verb, node, value))
            check(verb, rest);
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

    bool change_files(const std::string& verb, const std::string& rest) {
        const auto [name, text] = split(rest, " ");
        const std::filesystem::path path = ui_.dir / name;
        if (verb == "write")
            write_file(path, text);
        else if (verb == "mkdir")
            std::filesystem::create_directories(path);
        else if (verb == "link")
            std::filesystem::create_symlink(text, path);
        else if (verb == "delete")
            std::filesystem::remove_all(path);
        else if (verb == "read-only")
            read_only_.emplace(ui_.dir.path());
        else
            return false;
        return true;
    }

    bool act(const std::string& verb, const std::string& node, const std::string& value) {
        if (verb == "start") {
            std::vector<std::filesystem::path> files;
            std::istringstream names(node);
            for (std::string name; names >> name;)
                files.push_back(ui_.dir / name);
            ui_.start(files);
        } else if (verb == "open") {
            ui_.open(ui_.dir / node);
        } else if (verb == "click") {
            ui_.click(node);
        } else if (verb == "type") {
            ui_.type(node, value);
        } else if (verb == "choose") {
            ui_.choose(node, value);
        } else if (verb == "row") {
            ui_.row_action(node, value);
        } else if (verb == "browse") { // with the file, none or "-" for cancelled, that is picked
            ui_.platform.next_picks = {value == "-" ? "" : value};
            ui_.click(node);
        } else if (verb == "wait") {
            ui_.advance(std::stoi(node));
        } else if (verb == "confirm" || verb == "cancel") {
            ui_.click(verb == "confirm" ? "Confirm Dialog/Body/Actions/Confirm Button"
                                        : "Confirm Dialog/Body/Actions/Cancel Button");
        } else if (verb == "quit") {
            ui_.quit();
        } else if (verb == "builder") { // "#2 ..." answers from the second process, else the last
            const auto& all = ui_.platform.processes;
            const auto [number, told] =
                node.starts_with("#") ? split(node.substr(1), " ") : std::pair(std::string(), node);
            // A callback may start the next process, so copies are called.
            const FakePlatform::Process process =
                number.empty() ? all.back() : all.at(std::stoul(number) - 1);
            const auto [what, text] = split(told, " ");
            if (what == "prints")
                process.on_line(text);
            else
                process.on_exit(std::stoi(text));
            ui_.advance(0);
        } else if (verb == "generator") { // what the favicon generator answers from now on
            generator_error_ = node;
            if (node == "missing")
                Lumenfold::favicon_generator() = nullptr;
        } else {
            return false;
        }
        return true;
    }

    bool check_node(const std::string& verb, const std::string& node, const std::string& value) {
        if (verb == "text")
            expect(ui_.text(node), value);
        else if (verb == "reads")
            expect(ui_.reading(node), value);
        else if (verb == "rows")
            EXPECT_EQ(ui_.rows(node), value);
        else if (verb == "options")
            EXPECT_EQ(ui_.options(node), value);
        else if (verb == "chosen")
            EXPECT_EQ(ui_.chosen(node), value);
        else if (verb == "source")
            EXPECT_EQ(source_of(ui_.node(node)), value);
        else if (verb == "height")
            EXPECT_EQ(ui_.node(node).style->height, std::stod(value));
        else if (verb == "is")
            EXPECT_TRUE(ui_.has_state(node, value)) << node;
        else if (verb == "not")
            EXPECT_FALSE(ui_.has_state(node, value)) << node;
        else if (verb == "shows")
            EXPECT_TRUE(ui_.shown(node)) << node;
        else if (verb == "hides")
            EXPECT_TRUE(!ui_.shown(node) && ui_.known(node)) << node;
        else
            return false;
        return true;
    }

    void check(const std::string& verb, const std::string& rest) {
        const auto [name, text] = split(rest, " ");
        const std::filesystem::path path = ui_.dir / name;
        if (verb == "says")
            expect(ui_.take_message(), rest);
        else if (verb == "asks")
            expect(ui_.question(), rest);
        else if (verb == "file")
            EXPECT_EQ(read_file(path), text);
        else if (verb == "json") // as the application writes it
            EXPECT_EQ(read_file(path), Lumenfold::dump_config(Lumenfold::Json::parse(text)));
        else if (verb == "holds")
            EXPECT_NE(read_file(path).find(text), std::string::npos) << read_file(path);
        else if (verb == "files")
            EXPECT_EQ(names_of(file_tree(ui_.dir.path())), rest);
        else if (verb == "there")
            EXPECT_TRUE(std::filesystem::exists(path));
        else if (verb == "gone")
            EXPECT_FALSE(std::filesystem::exists(path));
        else if (verb == "picker") { // title, filter and folder of the last file dialog
            const Corvel::PickRequest& pick = ui_.platform.picks.back();
            EXPECT_EQ(pick.mode + "|" + pick.title + "|" + pick.filter + "|" + pick.directory,
                      rest);
        } else if (verb == "opened") // the addresses given to the system so far
            EXPECT_EQ(joined(ui_.platform.opened_urls), rest);
        else if (verb == "ran") // the last process
            EXPECT_EQ(joined(ui_.platform.processes.back().argv), rest);
        else if (verb == "processes")
            EXPECT_EQ(ui_.platform.processes.size(), std::stoul(rest));
        else if (verb == "generated") // what the favicon generator was last asked for
            EXPECT_EQ(std::exchange(generated_, ""), rest);
        else
            ADD_FAILURE() << "no such verb: " << verb;
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
