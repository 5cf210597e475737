#pragma once

#include "builder/report/message.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

namespace Lumenfold::Builder {

enum class ReportStyle : std::uint8_t {
    Porcelain, ///< one letter, a tab and the text: for the application
    Plain,     ///< lines for people, and for logs
    Terminal   ///< plain lines in colour, with a progress line
};

/// How much of what goes well is said. What goes wrong always is.
enum class ReportDetail : std::uint8_t {
    Quiet,  ///< nothing
    Normal, ///< information; in porcelain advanced details too, since their reader sorts them
    Verbose ///< advanced details in every style
};

/// Prints what a command has to say and counts what went wrong. Each message is one line, whatever
/// its text holds. Lines are flushed as they come, but for advanced details, which wait for the
/// next other line. One thread at a time.
class Reporter {
public:
    Reporter(std::ostream& out, ReportStyle style, ReportDetail detail = ReportDetail::Normal);
    ~Reporter();
    Reporter(const Reporter&) = delete;
    Reporter& operator=(const Reporter&) = delete;

    void say(const Message& message);
    void say(const Messages& messages);
    void info(std::string text);
    void fault(std::string file, std::string text);
    /// The folder of the built site, for the button that opens it.
    void output_folder(std::string_view path);
    /// "12 of 300 pages": shown on a terminal only, and not more often than an eye can follow.
    void progress(std::string_view what, std::size_t done, std::size_t all);

    std::size_t complaints() const { return complaints_; }
    std::size_t faults() const { return faults_; }

private:
    bool is_shown(Severity severity) const;
    void print(std::string_view line, bool flush);
    void clear_progress();

    std::ostream& out_;
    ReportStyle style_;
    ReportDetail detail_;
    std::size_t complaints_ = 0;
    std::size_t faults_ = 0;
    bool progress_shown_ = false;
    std::chrono::steady_clock::time_point last_progress_;
};

} // namespace Lumenfold::Builder
