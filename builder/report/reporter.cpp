#include "builder/report/reporter.h"

#include "builder/report/interruption.h"
#include "builder/report/visible_text.h"

#include <ostream>
#include <utility>

namespace Lumenfold::Builder {

namespace {

constexpr std::chrono::milliseconds BETWEEN_PROGRESS_LINES(80);

constexpr const char* CLEAR_LINE = "\r\x1b[K";
constexpr const char* RESET = "\x1b[0m";

/// How a severity is spelled in each style.
struct Spelling {
    char letter;
    const char* word; ///< before the text; empty for what is no trouble
    const char* colour;
};

const Spelling& spelling_of(Severity severity) {
    static constexpr Spelling INFO{'I', "", ""};
    static constexpr Spelling ADVANCED{'A', "", "\x1b[2m"};
    static constexpr Spelling COMPLAINT{'E', "warning: ", "\x1b[1;33m"};
    static constexpr Spelling FAULT{'E', "error: ", "\x1b[1;31m"};
    switch (severity) {
    case Severity::Info:
        return INFO;
    case Severity::Advanced:
        return ADVANCED;
    case Severity::Complaint:
        return COMPLAINT;
    case Severity::Fault:
        break;
    }
    return FAULT;
}

/// "guides/units.md:12: ", the form that editors and logs make a link of.
std::string place_of(const Message& message) {
    if (message.file.empty())
        return {};
    std::string place = visible_text(message.file) + ":";
    if (message.line > 0)
        place += std::to_string(message.line) + ":";
    return place + " ";
}

std::string line_of(const Message& message, ReportStyle style) {
    const Spelling& spelling = spelling_of(message.severity);
    const std::string place = place_of(message);
    const std::string text = visible_text(message.text);
    if (style == ReportStyle::Porcelain)
        return std::string(1, spelling.letter) + "\t" + place + text;
    if (style == ReportStyle::Plain || *spelling.colour == '\0')
        return place + spelling.word + text;
    if (*spelling.word == '\0')
        return spelling.colour + place + text + RESET;
    return place + spelling.colour + spelling.word + RESET + text;
}

} // namespace

Reporter::Reporter(std::ostream& out, ReportStyle style, ReportDetail detail)
    : out_(out)
    , style_(style)
    , detail_(detail) {}

Reporter::~Reporter() {
    clear_progress();
    out_.flush();
}

void Reporter::say(const Message& message) {
    if (message.severity == Severity::Complaint)
        ++complaints_;
    if (message.severity == Severity::Fault)
        ++faults_;
    if (is_shown(message.severity))
        print(line_of(message, style_), message.severity != Severity::Advanced);
}

void Reporter::say(const Messages& messages) {
    for (const Message& message : messages)
        say(message);
}

void Reporter::info(std::string text) {
    say(Message{Severity::Info, {}, 0, std::move(text)});
}

void Reporter::fault(std::string file, std::string text) {
    say(Message{Severity::Fault, std::move(file), 0, std::move(text)});
}

void Reporter::output_folder(std::string_view path) {
    // The button opens what stands here, so not a byte of it is changed. A path with a line feed
    // cannot be told in a line.
    if (style_ == ReportStyle::Porcelain && path.find_first_of("\r\n") == std::string_view::npos)
        print("O\t" + std::string(path), true);
    else if (style_ != ReportStyle::Porcelain && detail_ != ReportDetail::Quiet)
        print("The site is in " + visible_text(path), true);
}

void Reporter::progress(std::string_view what, std::size_t done, std::size_t all) {
    if (style_ != ReportStyle::Terminal || detail_ == ReportDetail::Quiet)
        return;
    const auto now = std::chrono::steady_clock::now();
    if (progress_shown_ && now - last_progress_ < BETWEEN_PROGRESS_LINES)
        return;
    last_progress_ = now;
    progress_shown_ = true;
    out_ << CLEAR_LINE << done << " of " << all << ' ' << visible_text(what) << std::flush;
}

bool Reporter::is_shown(Severity severity) const {
    switch (severity) {
    case Severity::Info:
        return detail_ != ReportDetail::Quiet;
    case Severity::Advanced:
        return detail_ == ReportDetail::Verbose ||
               (detail_ == ReportDetail::Normal && style_ == ReportStyle::Porcelain);
    case Severity::Complaint:
    case Severity::Fault:
        break;
    }
    return true;
}

void Reporter::print(std::string_view line, bool flush) {
    clear_progress();
    out_ << line << '\n';
    if (flush)
        out_.flush();
    if (!out_)
        request_interruption(); // nobody listens any more
}

void Reporter::clear_progress() {
    if (std::exchange(progress_shown_, false))
        out_ << CLEAR_LINE;
}

} // namespace Lumenfold::Builder
