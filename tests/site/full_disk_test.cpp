// Operations on a disk that is really full: a small file system in memory, which takes the
// super-user to mount. What such a disk does is tried without one by the "limit" steps of
// cases/*.txt.
#include "site/config_files.h"
#include "site/import_file.h"
#include "site/new_project.h"
#include "site/new_site.h"
#include "site/promotion.h"
#include "site/records.h"
#include "site/registry.h"
#include "site/site_support.h"
#include "site/versions.h"

#include <fcntl.h>
#include <functional>
#include <sys/mount.h>
#include <unistd.h>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;
using TestSupport::file_tree;
using TestSupport::read_file;
using TestSupport::TempDir;
using TestSupport::write_file;

/// A disk of 64 KiB.
class SmallDisk {
public:
    SmallDisk()
        : is_mounted_(::mount("lumenfold-test", root().c_str(), "tmpfs", 0, "size=64k") == 0) {}
    ~SmallDisk() {
        if (is_mounted_)
            ::umount2(root().c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool is_mounted() const { return is_mounted_; }
    const fs::path& root() const { return place_.path(); }

    void fill() const {
        const int file = ::open((root() / "filler").c_str(), O_CREAT | O_WRONLY, 0600);
        for (const std::size_t size : {4096, 1})
            while (::write(file, std::string(size, 'x').data(), size) > 0) {
            }
        ::close(file);
    }
    void make_room() const { fs::remove(root() / "filler"); }

    /// All files but the filler.
    std::map<std::string, std::string> files() const {
        auto tree = file_tree(root());
        std::erase_if(tree, [](const auto& file) {
            return file.first == "filler" || file.first.ends_with("/");
        });
        return tree;
    }

private:
    TempDir place_;
    bool is_mounted_;
};

/// A configuration that has just room for itself in its one block.
std::string padded(const std::string& members) {
    Json json = Json::parse("{" + members + ", \"pad\": \"\"}");
    json["pad"] = std::string(4096 - dump_config(json)->size(), 'x');
    return *dump_config(json);
}

struct Operation {
    const char* name;
    std::function<bool(const fs::path& root)> run;
};

const Operation OPERATIONS[] = {
    {"a new text", [](auto& d) { return bool(write_text_file(d / "new", "text")); }},
    {"a longer text",
     [](auto& d) { return bool(write_text_file(d / "site", std::string(9000, 'x'))); }},
    {"add_social",
     [](auto& d) {
         return add_social(d / "site", {"l", "", "u", "", false}, nullptr);
     }},
    {"add_policy",
     [](auto& d) {
         return add_policy(d / "site", {"s", "", "", "", false}, nullptr);
     }},
    {"add_topic",
     [](auto& d) {
         return add_topic(d / "new", {"s", "", "", "", "f"}, nullptr);
     }},
    {"add_home_section",
     [](auto& d) { return bool(add_home_section(d / "site", Json::object())); }},
    {"a fragment", [](auto& d) { return !create_home_section_fragment(d, "id").empty(); }},
    {"add_project_entry", [](auto& d) { return bool(add_project_entry(d / "site", "other")); }},
    {"include_version", [](auto& d) { return bool(include_version(d / "p/project", "1.1", "D")); }},
    {"exclude_version", [](auto& d) { return bool(exclude_version(d / "p/project", "1.1")); }},
    {"create_site", [](auto& d) { return create_site(d / "s", "T", nullptr); }},
    {"create_project",
     [](auto& d) {
         return create_project(d / "site", {"N", "n", "", "", ""}, nullptr, nullptr);
     }},
    {"promote",
     [](auto& d) {
         return promote_to_family(d / "site", d / "p/project", "m", "", nullptr, nullptr, nullptr);
     }},
    {"import",
     [](auto& d) {
         ImportedFile copy;
         return bool(import_file(d, "images", d / "site", NameTaken::FreeName, copy));
     }},
};

TEST(FullDisk, TakesNothingAwayAndTheNextTryWorks) {
    for (const Operation& operation : OPERATIONS) {
        SCOPED_TRACE(operation.name);
        const SmallDisk disk;
        if (!disk.is_mounted())
            GTEST_SKIP() << "no small disk can be mounted here; that takes the super-user";
        write_file(disk.root() / "site", padded(R"("projects": [{"config": "p/project"}])"));
        write_file(disk.root() / "p/project", padded(R"("slug": "p")"));
        const auto before = disk.files();
        disk.fill();
        EXPECT_FALSE(operation.run(disk.root()));
        EXPECT_EQ(disk.files(), before);
        disk.make_room();
        EXPECT_TRUE(operation.run(disk.root()));
    }
}

TEST(FullDisk, StillTakesWhatNeedsNoRoom) {
    const SmallDisk disk;
    if (!disk.is_mounted())
        GTEST_SKIP() << "no small disk can be mounted here; that takes the super-user";
    const fs::path file = disk.root() / "file";
    write_file(file, padded(R"("facts": [{"label": "a"}, {"label": "b"}])"));
    disk.fill();
    EXPECT_TRUE(remove_record(file, "facts", {0, {{"label", "a"}}}));
    EXPECT_EQ((*read_json_file(file))["facts"].dump(), R"([{"label":"b"}])");
}

} // namespace
} // namespace Lumenfold
