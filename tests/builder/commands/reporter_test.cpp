#include "builder/report/reporter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Lumenfold::Builder {
namespace {

const Messages ALL = {
    {Severity::Info, "", 0, "Built"},
    {Severity::Advanced, "a.md", 0, "seen"},
    {Severity::Complaint, "guides/a.md", 12, "no page \"b\""},
    {Severity::Fault, ".lumenfold-site", 0, "broken"},
};

std::string printed(const Messages& messages, ReportStyle style,
                    ReportDetail detail = ReportDetail::Normal) {
    std::ostringstream out;
    {
        Reporter reporter(out, style, detail);
        reporter.progress("pages", 1, 2);
        reporter.say(messages);
        reporter.output_folder("/srv/site");
        EXPECT_EQ(reporter.complaints() + reporter.faults(), messages.size() == 4 ? 2U : 0U);
    }
    return out.str();
}

TEST(Reporters, PrintForTheirReaders) {
    EXPECT_EQ(printed(ALL, ReportStyle::Porcelain), "I\tBuilt\nA\ta.md: seen\n"
                                                    "E\tguides/a.md:12: no page \"b\"\n"
                                                    "E\t.lumenfold-site: broken\nO\t/srv/site\n");
    EXPECT_EQ(printed(ALL, ReportStyle::Porcelain, ReportDetail::Quiet),
              "E\tguides/a.md:12: no page \"b\"\nE\t.lumenfold-site: broken\nO\t/srv/site\n");
    EXPECT_EQ(printed(ALL, ReportStyle::Plain),
              "Built\nguides/a.md:12: warning: no page \"b\"\n"
              ".lumenfold-site: error: broken\nThe site is in /srv/site\n");
    EXPECT_EQ(printed(ALL, ReportStyle::Plain, ReportDetail::Quiet),
              "guides/a.md:12: warning: no page \"b\"\n.lumenfold-site: error: broken\n");
    EXPECT_EQ(printed(ALL, ReportStyle::Terminal, ReportDetail::Verbose),
              "\r\x1b[K1 of 2 pages\r\x1b[KBuilt\n\x1b[2ma.md: seen\x1b[0m\n"
              "guides/a.md:12: \x1b[1;33mwarning: \x1b[0mno page \"b\"\n"
              ".lumenfold-site: \x1b[1;31merror: \x1b[0mbroken\nThe site is in /srv/site\n");
}

TEST(Reporters, PrintOneHarmlessLineWhateverATextHolds) {
    EXPECT_EQ(printed({{Severity::Info, "a\nb.md", 3,
                        "x\ty\r\n\x1b[2J\x7f \xC2\x85\xE2\x80\xA8"
                        "\xE2\x80\xAE \xFF\xC3 é 文"}},
                      ReportStyle::Porcelain),
              "I\ta␊b.md:3: x␉y␍␊␛[2J␡ ��� �� é 文\nO\t/srv/site\n");
}

} // namespace
} // namespace Lumenfold::Builder
