#include "builder/support/program_run.h"
#include "support/case_file.h"

namespace {

using TestSupport::TempDir;

/// What a case's script prints, in a folder of its own.
std::string played(const std::string& script) {
    const TempDir dir;
    TestSupport::write_file(dir / "home/script",
                            "ROOT='" SOURCE_ROOT "' CLI='" LUMENFOLD_CLI
                            "'\n. \"$ROOT/tests/builder/commands/actions.sh\"\n" +
                                script);
    return TestSupport::output_of("cd '" + dir.path().string() +
                                  "' && mkdir work && cd work && HOME=\"$PWD/../home\" sh "
                                  "../home/script");
}

class Commands : public testing::TestWithParam<const char*> {};

TEST_P(Commands, SayAndMakeWhatIsWritten) {
    TestSupport::expect_cases(std::string("tests/builder/commands/cases/") + GetParam() + ".txt",
                              played);
}

INSTANTIATE_TEST_SUITE_P(Builder, Commands, testing::Values("use", "sites", "faults"),
                         [](const auto& name) { return std::string(name.param); });

} // namespace
