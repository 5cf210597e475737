#include <gtest/gtest.h>

#include <QApplication>

#include <clocale>
#include <cstdlib>
#include <filesystem>

/// Entry of the tests that need widgets: offscreen unless told otherwise, with a home of its own
/// so that no test touches the user's settings, and with the fonts that the pictures were made
/// with.
int main(int argc, char** argv) {
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    std::string home = (std::filesystem::temp_directory_path() / "lumenfold-home-XXXXXX").string();
    if (!::mkdtemp(home.data()))
        return 1;
    ::setenv("FONTCONFIG_FILE", TEST_FONTS, 1);
    ::setenv("HOME", home.c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (home + "/config").c_str(), 1);
    ::setenv("XDG_RUNTIME_DIR", home.c_str(), 1);
    testing::InitGoogleTest(&argc, argv);
    int result = 0;
    {
        QApplication application(argc, argv);
        std::setlocale(LC_NUMERIC, "C");
        QApplication::setQuitOnLastWindowClosed(false);
        result = RUN_ALL_TESTS();
    }
    std::error_code ignored;
    std::filesystem::remove_all(home, ignored);
    return result;
}
