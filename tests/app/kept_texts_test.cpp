#include "app/editing/kept_texts.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace Lumenfold {
namespace {

namespace fs = std::filesystem;

fs::path only_file(const fs::path& folder) {
    const fs::directory_iterator files(folder);
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
    return fs::directory_iterator(folder)->path();
}

TEST(KeptTexts, ComeBackWithWhatTheyWereBegunOnAndAreReadByTheirUserOnly) {
    const TestSupport::TempDir dir;
    const std::string folder = (dir / "unsaved").string();
    keep_text(folder, "/a/f.md", "older", "base");
    keep_text(folder, "/a/f.md", "typed \xc3\xa9\n", "base");
    const auto kept = find_kept_text(folder, "/a/f.md");
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->text, "typed \xc3\xa9\n");
    EXPECT_EQ(kept->begun_on, "base");
    EXPECT_FALSE(find_kept_text(folder, "/a/g.md"));
    EXPECT_EQ(fs::status(only_file(folder)).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
    drop_kept_text(folder, "/a/f.md");
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST(KeptTexts, GoAfterThirtyDays) {
    const TestSupport::TempDir dir;
    const std::string folder = (dir / "unsaved").string();
    keep_text(folder, "f", "text", "");
    const fs::path file = only_file(folder);
    for (const auto& [days, stays] : {std::pair(29, true), {31, false}}) {
        fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(24 * days));
        drop_old_texts(folder);
        EXPECT_EQ(fs::exists(file), stays) << days;
    }
}

} // namespace
} // namespace Lumenfold
