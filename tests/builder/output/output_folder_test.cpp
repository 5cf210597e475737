#include "builder/output/output_folder.h"
#include "support/case_file.h"
#include "support/file_size_limit.h"
#include "support/read_only.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <fstream>
#include <map>
#include <sys/file.h>
#include <thread>
#include <unistd.h>

namespace Lumenfold::Builder {
namespace {

namespace fs = std::filesystem;
using TestSupport::file_tree;
using TestSupport::read_file;
using TestSupport::TempDir;
using TestSupport::write_file;

struct Page {
    std::string path;
    std::string bytes;
};

/// "a: a.html=A a/t.html=T"
struct Unit {
    std::string text;
    std::string name;
    std::vector<Page> pages;
};

std::vector<Unit> units_of(const std::string& text) {
    std::vector<Unit> units;
    std::istringstream parts(text);
    for (std::string part; std::getline(parts, part, ';');) {
        Unit& unit = units.emplace_back();
        unit.text = part.substr(part.find_first_not_of(' '));
        std::istringstream words(unit.text);
        words >> unit.name;
        unit.name.pop_back();
        for (std::string page; words >> page;)
            unit.pages.push_back({page.substr(0, page.find('=')), page.substr(page.find('=') + 1)});
        for (Page& page : unit.pages)
            if (page.bytes == "BIG")
                page.bytes.assign(5000, 'x');
    }
    return units;
}

/// Makes units as a site's build does, but for what the last build made of the same text.
class Build {
public:
    explicit Build(OutputFolder& output, std::vector<Unit> units)
        : output_(output)
        , units_(std::move(units)) {
        for (const Unit& unit : units_)
            if (output_.is_current(unit.name, unit.text))
                output_.keep(unit.name);
        for (const Unit& unit : units_)
            if (!output_.is_current(unit.name, unit.text))
                claim(unit);
    }

    std::string run(std::size_t most = 1000, bool notes = true) {
        std::string problem;
        EXPECT_TRUE(output_.begin(problem)) << problem;
        for (const Unit* unit : claimed_) {
            for (const Page& page : unit->pages)
                if (most-- > 0)
                    output_.write(unit->name, page.path, page.bytes);
                else
                    return {};
            if (notes)
                output_.set_note(unit->name, unit->text);
        }
        OutputCounts counts;
        if (!output_.finish(counts, problem))
            return "failed: " + problem;
        return words(counts);
    }

private:
    void claim(const Unit& unit) {
        std::vector<std::string> paths;
        for (const Page& page : unit.pages)
            paths.push_back(page.path);
        output_.claim(unit.name, unit.text, paths, messages_);
        claimed_.push_back(&unit);
    }

    std::string words(const OutputCounts& counts) const {
        std::string text;
        for (const auto& [count, word] : {std::pair(counts.written, "written"),
                                          {counts.kept, "kept"},
                                          {counts.removed, "removed"}})
            if (count > 0)
                text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + word;
        for (const Message& message : messages_)
            text += (&message == messages_.data() ? ": " : " ") + message.text;
        return text;
    }

    OutputFolder& output_;
    std::vector<Unit> units_;
    std::vector<const Unit*> claimed_;
    Messages messages_;
};

class Player {
public:
    explicit Player(fs::path folder)
        : site_(std::move(folder)) {}

    std::string play(const std::string& verb, const std::string& rest) {
        if (verb == "build")
            return with_output([&](OutputFolder& out) { return Build(out, units_of(rest)).run(); });
        if (verb == "build-without-notes")
            return with_output(
                [&](OutputFolder& out) { return Build(out, units_of(rest)).run(1000, false); });
        if (verb == "full-build")
            return with_output([&](OutputFolder& out) {
                Build build(out, units_of(rest));
                const TestSupport::FileSizeLimit full_disk(4000);
                return build.run();
            });
        if (verb == "stop")
            return with_output([&](OutputFolder& out) {
                return Build(out, units_of(rest.substr(2))).run(std::stoul(rest));
            });
        if (verb == "current")
            return with_output([&](OutputFolder& out) {
                const Unit unit = units_of(rest).front();
                return std::string(out.is_current(unit.name, unit.text) ? "yes" : "no");
            });
        if (verb == "note")
            return with_output([&](OutputFolder& out) { return out.note(rest).value_or("none"); });
        if (verb == "open" || verb == "open-at")
            return with_output([](OutputFolder&) { return std::string("fine"); },
                               rest.empty() ? "out" : rest);
        if (verb == "outside")
            return read_file(site_ / rest);
        if (verb == "files" || verb == "folders")
            return listed(verb == "folders");
        change(verb, site_ / rest.substr(0, rest.find(' ')),
               rest.find(' ') < rest.size() ? rest.substr(rest.find(' ') + 1) : "");
        return {};
    }

private:
    template <class Act>
    std::string with_output(Act act, const std::string& name = "out") {
        std::string problem;
        std::optional<OutputFolder> output = OutputFolder::open(site_ / name, site_, problem);
        if (!output) {
            read_only_.reset();
            return hidden(problem);
        }
        return hidden(act(*output));
    }

    std::string hidden(std::string text) const {
        const std::string site = site_.string();
        for (std::size_t at = 0; (at = text.find(site)) != std::string::npos;)
            text.replace(at, site.size(), "SITE");
        return text;
    }

    /// Without the builder's own.
    std::string listed(bool folders) const {
        std::string text;
        for (const auto& [name, bytes] : file_tree(site_ / "out")) {
            if (name.starts_with(".lumenfold-") || name.ends_with("/") != folders)
                continue;
            text += text.empty() ? "" : " ";
            text += folders ? name.substr(0, name.size() - 1) : name + "=" + bytes;
        }
        return text;
    }

    void change(const std::string& verb, const fs::path& path, const std::string& text) {
        if (verb == "write")
            write_file(path, text);
        else if (verb == "append")
            write_file(path, read_file(path) + text);
        else if (verb == "remove")
            fs::remove_all(path);
        else if (verb == "mkdir")
            fs::create_directories(path);
        else if (verb == "link")
            fs::create_symlink(text, path);
        else if (verb == "damage-notes")
            for (const auto& entry : fs::directory_iterator(site_ / "out/.lumenfold-notes"))
                write_file(entry.path(), "other");
        else if (verb == "readonly")
            read_only_.emplace(path);
        else if (verb == "hold") {
            held_ = ::open(path.c_str(), O_RDONLY | O_DIRECTORY);
            EXPECT_EQ(::flock(held_, LOCK_EX), 0);
        } else if (verb == "release")
            ::close(held_);
        else
            ADD_FAILURE() << "no such step: " << verb;
    }

    fs::path site_;
    std::optional<TestSupport::ReadOnly> read_only_;
    int held_ = -1;
};

TEST(OutputFolders, GoAsWritten) {
    std::ifstream in(SOURCE_ROOT "/tests/builder/output/cases.txt");
    std::optional<TempDir> dir;
    std::optional<Player> player;
    int number = 0;
    int answers = 0;
    for (std::string line; std::getline(in, line);) {
        SCOPED_TRACE("line " + std::to_string(++number) + ": " + line.substr(0, 200));
        if (line.empty() || line.starts_with("#")) {
            player.reset();
            continue;
        }
        if (!player) {
            dir.emplace();
            player.emplace(dir->path());
        }
        line = TestSupport::without_pictures(line + " ");
        const std::size_t arrow = std::min(line.find(" => "), line.size() - 1);
        const std::string step = line.substr(0, arrow);
        const std::size_t blank = std::min(step.find(' '), step.size());
        const std::string answer =
            player->play(step.substr(0, blank), step.substr(std::min(blank + 1, step.size())));
        const std::string expected =
            arrow + 4 < line.size() ? line.substr(arrow + 4, line.size() - arrow - 5) : "";
        EXPECT_EQ(answer, expected);
        answers += expected.empty() ? 0 : 1;
    }
    EXPECT_GT(answers, 50);
}

TEST(OutputFolders, TakeFilesFromSeveralThreads) {
    const TempDir dir;
    Unit unit{"many", "many", {}};
    for (int i = 0; i < 400; ++i)
        unit.pages.push_back({"f" + std::to_string(i % 20) + "/" + std::to_string(i),
                              std::string(static_cast<std::size_t>(i), 'x')});
    std::string problem;
    std::optional<OutputFolder> output = OutputFolder::open(dir / "out", dir.path(), problem);
    ASSERT_TRUE(output) << problem;
    std::vector<std::string> paths;
    for (const Page& page : unit.pages)
        paths.push_back(page.path);
    Messages messages;
    output->claim("many", "1", paths, messages);
    ASSERT_TRUE(output->begin(problem)) << problem;
    const auto write_half = [&](std::size_t first) {
        for (std::size_t i = first; i < unit.pages.size(); i += 2)
            output->write("many", unit.pages[i].path, unit.pages[i].bytes);
    };
    std::thread other(write_half, 1);
    write_half(0);
    other.join();
    OutputCounts counts;
    ASSERT_TRUE(output->finish(counts, problem)) << problem;
    EXPECT_EQ(counts.written, 400U);
    for (const Page& page : unit.pages)
        EXPECT_EQ(read_file(dir / ("out/" + page.path)), page.bytes);
}

} // namespace
} // namespace Lumenfold::Builder
