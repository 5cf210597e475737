#include "layers/engine.h"
#include "layers/layers_support.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

namespace Layers {
namespace {

using TestSupport::write_file;

class EngineTest : public testing::Test {
protected:
    std::string path(const std::string& name) { return (dir / name).string(); }

    /// The tree after the test's folder was loaded into the layer `target`.
    std::string load(const std::string& target = "") {
        engine.load_directory(dir.path(), target);
        return show(engine.root());
    }

    TestSupport::TempDir dir;
    LogCapture log;
    LayersEngine engine;
};

TEST_F(EngineTest, LoadsLayerFilesInOrderOfTheirPaths) {
    write_file(dir / "b/inner.lyr", "A:\n  from: \"b/inner\"\n");
    write_file(dir / "a.lyr", "A:\n  from: \"a\"\n  only a: 1\n");
    write_file(dir / "b.lyr", "A:\n  from: \"b\"\n"); // behind "b" by components
    write_file(dir / "_folder/c.lyr", "A:\n  _folder: 1\n");
    write_file(dir / "_off.lyr", "off: 1\n");
    write_file(dir / "capitals.LYR", "capitals: 1\n");
    write_file(dir / "note.txt", "?\n");
    write_file(dir / ".lyr", "hidden: 1\n");
    EXPECT_EQ(load(), "A:\n  _folder = 1\n  from = \"b\"\n  only a = 1\n");
}

TEST_F(EngineTest, LoadsIntoALayerThatItMakes) {
    EXPECT_EQ(load("Corvel"), ""); // nothing to load
    write_file(dir / "w.lyr", "Button:\n  x: 1\nBig << Button\nBigger << Corvel/Big\n");
    // Only paths from the root reach the layer's children.
    EXPECT_EQ(load("Corvel"), "Corvel:\n  Button:\n    x = 1\n  Big:\n  Bigger << Big:\n");
    EXPECT_EQ(engine.find_layer("Corvel/Bigger"), engine.root().find_layer("Corvel/Bigger"));
    EXPECT_EQ(engine.find_layer("Button"), nullptr);
}

TEST_F(EngineTest, AMissingDirectoryIsLogged) {
    write_file(dir / "file", "");
    for (const char* name : {"missing", "file"}) {
        engine.load_directory(dir / name, "Corvel");
        EXPECT_EQ(log.take(), "engine: " + path(name) +
                                  ": Failed to read files because no directory was found at the "
                                  "given path.\n");
    }
}

TEST_F(EngineTest, AFileWithFaultsIsDroppedWholeAndTheOthersLoad) {
    write_file(dir / "a.lyr", "A << B:\n  x: 1\n");
    write_file(dir / "b.lyr", "B:\n  y: 1 2\n  z: 3\n  w: ,\nA:\n  x: 4\n");
    write_file(dir / "c.lyr", "\xEF\xBB\xBF"
                              "C:\r\n\ty: ?\r\n\tz: 1 2\r\n");
    write_file(dir / "d.lyr", "D:\n  y: 1\n");
    EXPECT_EQ(load(), "A:\n  x = 1\nD:\n  y = 1\n");
    const std::string b = path("b.lyr");
    const std::string c = path("c.lyr");
    const std::string tab = ": Found tab in indentation; indent with spaces instead.\n";
    // Errors of the lexer hide those of the parser.
    EXPECT_EQ(log.take(), "engine: " + b + ": Failed to load file.\nparser: " + b +
                              ":2: Found unexpected `2`; expected a line end after attribute.\n"
                              "parser: " +
                              b + ":4: Found `,` where expression was expected.\nengine: " + c +
                              ": Failed to load file.\nlexer: " + c + ":2" + tab + "lexer: " + c +
                              ":2: Found unexpected character '?'\nlexer: " + c + ":3" + tab);
}

TEST_F(EngineTest, AnUnreadableFileCountsAsEmpty) {
    write_file(dir / "b.lyr", "x: 1\n");
    std::filesystem::permissions(dir / "b.lyr", std::filesystem::perms::none);
    if (std::ifstream(dir / "b.lyr"))
        GTEST_SKIP() << "this user may read everything";
    testing::internal::CaptureStderr();
    EXPECT_EQ(load(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "read_file: Could not read file: " + path("b.lyr") + "\n");
}

TEST_F(EngineTest, LinksReachOtherDirectoriesOnceAllAreIn) {
    write_file(dir / "widgets/w.lyr", "Button:\n  Fill: Theme/Primary\n");
    write_file(dir / "app/a.lyr",
               "Theme:\n  Primary: \"#123456\"\nApp:\n  Win:\n    OK << Corvel/Button\n");
    engine.load_directory(dir / "widgets", "Corvel");
    engine.load_directory(dir / "app", "");
    engine.link_attributes();
    const LLayer* ok = engine.find_layer("App/Win/OK");
    ASSERT_NE(ok, nullptr);
    EXPECT_EQ(show(ok->find_attribute("Fill")->terminal_value()), "\"#123456\"");
}

} // namespace
} // namespace Layers
