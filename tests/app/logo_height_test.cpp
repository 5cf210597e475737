#include "app/site_panels/tab_preview.h"
#include "support/case_file.h"

namespace {

TEST(LogoHeight, IsCheckedWhenTypedAndReadWithAFallback) {
    TestSupport::expect_lines("tests/app/heights.txt", [](const std::string& line) {
        const std::string text = line.substr(line.find(' ') + 1);
        if (line.starts_with("read"))
            return std::to_string(Lumenfold::parse_height(text, 25));
        return std::string(Lumenfold::is_valid_height(text) ? "good" : "bad");
    });
}

} // namespace
