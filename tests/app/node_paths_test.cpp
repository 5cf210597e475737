#include "app_driver.h"
#include "layers/engine.h"
#include "layers/object_model.h"
#include "site_paths.h"

#include <gtest/gtest.h>

#include <regex>

namespace TestSupport {
namespace {

TEST(NodePaths, EveryDialogStartsHidden) {
    AppDriver ui;
    ui.start();
    for (const char* dialog :
         {"New Website", "Message", "Confirm", "Add Policy", "Add Section", "Edit Section",
          "Add Social", "Add Project", "Promote", "Add Topic", "Add Dependency", "Add Fact",
          "Add Download", "Theme Directories", "Update"}) {
        const std::string path = std::string("App/") + dialog + " Dialog";
        EXPECT_NE(ui.app->engine().find_layer(path), nullptr) << path;
        EXPECT_FALSE(ui.shown(path)) << path;
    }
    EXPECT_TRUE(ui.shown(HOME));
}

} // namespace
} // namespace TestSupport
