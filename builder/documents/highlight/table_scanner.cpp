#include "builder/documents/highlight/characters.h"
#include "builder/documents/highlight/scanners.h"

#include <string>
#include <utility>

namespace Lumenfold::Builder {
namespace {

constexpr std::size_t LONGEST_KEYWORD = 32;

class TableScanner {
public:
    TableScanner(std::string_view code, const Language& language, Highlighted& out)
        : code_(code)
        , language_(language)
        , out_(out) {}

    void run() {
        while (at_ < code_.size()) {
            if (line_begins_)
                scan_line_begin();
            if (at_ < code_.size())
                scan_one();
        }
        flush();
    }

private:
    /// Writes [at_, end) as a part of its own.
    void write(CodePart part, std::size_t end) {
        flush();
        out_.part(part, code_.substr(at_, end - at_));
        at_ = plain_begin_ = end;
    }
    void flush() {
        out_.plain(code_.substr(plain_begin_, at_ - plain_begin_));
        plain_begin_ = at_;
    }

    char peek(std::size_t ahead = 0) const {
        return at_ + ahead < code_.size() ? code_[at_ + ahead] : '\0';
    }
    bool comes(std::string_view text) const {
        return !text.empty() && code_.substr(at_, text.size()) == text;
    }

    void scan_line_begin() {
        line_begins_ = false;
        command_begins_ = true;
        at_ = skip(code_, at_, is_blank);
        if (language_.has(COLON_KEYS))
            while (peek() == '-' && is_blank(peek(1)))
                at_ = skip(code_, at_ + 1, is_blank);
        const char c = peek();
        if (c == '#' && language_.has(DIRECTIVES))
            write(CodePart::Meta, skip(code_, skip(code_, at_ + 1, is_blank), is_word));
        else if (c == '[' && language_.has(SECTIONS))
            write(CodePart::Type, behind_in_line(code_, "]", at_));
        else if (const std::size_t key_end = find_key_end())
            write(language_.has(TARGETS) && code_[key_end] == ':' ? CodePart::Type
                                                                  : CodePart::Variable,
                  key_end);
    }

    /// Where the key ends that this line begins with; 0 if it has none.
    std::size_t find_key_end() const {
        const bool equals = language_.has(EQUALS_KEYS);
        const bool colon = language_.has(COLON_KEYS);
        const bool target = language_.has(TARGETS);
        if (!(equals || colon || target) || peek() == '#' || peek() == ';')
            return 0;
        for (std::size_t end = at_; end < code_.size() && code_[end] != '\n'; ++end) {
            const char c = code_[end];
            const char next = end + 1 < code_.size() ? code_[end + 1] : '\n';
            if (c == '#' && end > at_ && is_blank(code_[end - 1]))
                return 0;
            if (equals && c == '=')
                return without_operator(end);
            if ((colon && c == ':' && (is_blank(next) || next == '\n')) ||
                (target && c == ':' && next != '='))
                return without_blanks(end);
            if (target && c == '\t')
                return 0;
        }
        return 0;
    }

    /// The end of "key" in "key := value", "key += value".
    std::size_t without_operator(std::size_t end) const {
        const bool sign =
            end > at_ && std::string_view(":+?!").find(code_[end - 1]) != std::string_view::npos;
        return without_blanks(sign ? end - 1 : end);
    }

    std::size_t without_blanks(std::size_t end) const {
        while (end > at_ && is_blank(code_[end - 1]))
            --end;
        return end > at_ ? end : 0;
    }

    void scan_one() {
        const char c = peek();
        if (c == '\n') {
            ++at_;
            line_begins_ = true;
        } else if (is_blank(c)) {
            ++at_;
        } else if (comes(language_.comment_begin)) {
            write(CodePart::Comment, find_comment_end());
        } else if (begins_line_comment()) {
            write(CodePart::Comment, line_end(code_, at_));
        } else if (const std::size_t string_end = find_string_end()) {
            write(is_quoted_key(string_end) ? CodePart::Variable : CodePart::String, string_end);
            command_begins_ = false;
        } else if (is_letter(c) || begins_path(c)) {
            scan_word();
        } else if (is_digit(c)) {
            write(CodePart::Number, find_number_end());
        } else {
            scan_sign(c);
        }
    }

    /// "./run", "/bin/sh" and "~/x" where a command may stand.
    bool begins_path(char c) const {
        return language_.has(COMMANDS) && command_begins_ && (c == '.' || c == '/' || c == '~');
    }

    bool begins_line_comment() const {
        if (!comes(language_.line_comment) && !comes(language_.other_line_comment))
            return false;
        return !language_.has(COMMENT_NEEDS_BLANK) || at_ == 0 || is_blank(code_[at_ - 1]) ||
               code_[at_ - 1] == '\n';
    }

    std::size_t find_comment_end() const {
        const std::string_view begin = language_.comment_begin;
        const std::string_view end = language_.comment_end;
        if (!language_.has(NESTED_COMMENTS))
            return behind(code_, end, at_ + begin.size());
        std::size_t depth = 0;
        for (std::size_t at = at_; at < code_.size();) {
            if (code_.substr(at, end.size()) == end) {
                at += end.size();
                if (--depth == 0)
                    return at;
            } else if (code_.substr(at, begin.size()) == begin) {
                at += begin.size();
                ++depth;
            } else {
                ++at;
            }
        }
        return code_.size();
    }

    /// Where the text ends that begins here; 0 if none does.
    std::size_t find_string_end() const {
        const char quote = peek();
        const Quotes quotes = language_.quotes;
        if (quotes == Quotes::None || (quote != '"' && quote != '\'' && quote != '`'))
            return 0;
        if (quote == '`')
            return quotes == Quotes::BothBackticks || quotes == Quotes::GoLike ? quoted_end(true)
                                                                               : 0;
        if (quotes == Quotes::Triple && peek(1) == quote && peek(2) == quote)
            return behind(code_, code_.substr(at_, 3), at_ + 3);
        if (quote == '\'' && quotes == Quotes::Double)
            return 0;
        if (quote == '\'' && (quotes == Quotes::Characters || quotes == Quotes::GoLike))
            return character_end();
        return quoted_end(language_.has(COMMANDS));
    }

    std::size_t quoted_end(bool many_lines) const {
        const char quote = peek();
        const bool escapes =
            language_.quotes != Quotes::Doubled && !(quote == '\'' && language_.has(COMMANDS));
        for (std::size_t at = at_ + 1; at < code_.size(); ++at) {
            const char c = code_[at];
            if (c == '\\' && escapes)
                ++at;
            else if (c == quote)
                return at + 1;
            else if (c == '\n' && !many_lines)
                return at;
        }
        return code_.size();
    }

    /// 'a' or '\n', but not the ' of a lifetime.
    std::size_t character_end() const {
        if (peek(1) == '\\')
            return quoted_end(false);
        std::size_t end = at_ + 2;
        while (end < code_.size() && (static_cast<unsigned char>(code_[end]) & 0xC0) == 0x80)
            ++end;
        return end < code_.size() && code_[end] == '\'' && peek(1) != '\n' ? end + 1 : 0;
    }

    bool is_quoted_key(std::size_t end) const {
        end = skip(code_, end, is_blank);
        return language_.has(QUOTED_KEYS) && end < code_.size() && code_[end] == ':';
    }

    std::size_t find_number_end() const {
        std::size_t end = at_;
        while (end < code_.size()) {
            const char c = code_[end];
            const char next = end + 1 < code_.size() ? code_[end + 1] : '\0';
            const bool exponent = (c == '+' || c == '-') && (code_[end - 1] | 0x20) == 'e' &&
                                  is_digit(next) && peek(1) != 'x';
            const bool inside = (c == '.' || c == '\'') && is_digit(next);
            if (!is_word(c) && !inside && !exponent)
                break;
            ++end;
        }
        return end;
    }

    void scan_word() {
        const bool dashed = language_.has(DASHED_WORDS);
        const std::size_t end =
            skip(code_, at_, [dashed](char c) { return is_word(c) || (dashed && c == '-'); });
        const std::string_view word = code_.substr(at_, end - at_);
        const bool begins_command = std::exchange(command_begins_, false);
        if (is_keyword(word) && (begins_command || !language_.has(COMMANDS))) {
            write(CodePart::Keyword, end);
            command_begins_ = language_.has(COMMANDS);
        } else if (language_.types.contains(word)) {
            write(CodePart::Type, end);
        } else if (language_.has(COMMANDS)) {
            scan_shell_word(begins_command);
        } else if (language_.has(CALLS) && end < code_.size() && code_[end] == '(') {
            write(CodePart::Function, end);
        } else if (language_.has(CAPITAL_TYPES) && word.front() >= 'A' && word.front() <= 'Z') {
            write(CodePart::Type, end);
        } else {
            at_ = end;
        }
    }

    bool is_keyword(std::string_view word) const {
        if (!language_.has(ANY_CASE) || word.size() > LONGEST_KEYWORD)
            return language_.keywords.contains(word);
        std::string small(word);
        for (char& c : small)
            c = c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
        return language_.keywords.contains(small);
    }

    /// A command's name, an assignment or an argument; paths and file names are one word.
    void scan_shell_word(bool begins_command) {
        const std::size_t end = skip(code_, at_, [](char c) {
            return is_word(c) || std::string_view("-./:+@%,~").find(c) != std::string_view::npos;
        });
        const bool assigns = end < code_.size() && code_[end] == '=';
        if (assigns && begins_command) {
            write(CodePart::Variable, end);
            command_begins_ = true;
        } else if (begins_command) {
            write(CodePart::Function, end);
        } else {
            at_ = end;
        }
    }

    void scan_sign(char c) {
        if (c == '$' && language_.has(DOLLAR_VARIABLES)) {
            scan_variable();
        } else if (c == '@' && language_.has(ANNOTATIONS) && is_letter(peek(1))) {
            write(CodePart::Meta,
                  skip(code_, at_ + 1, [](char each) { return is_word(each) || each == '.'; }));
        } else if (c == '@' && language_.has(AT_VARIABLES) && is_letter(peek(1))) {
            write(CodePart::Variable, skip(code_, at_ + 1, is_word));
        } else if (c == '-' && language_.has(COMMANDS) && at_ > 0 && is_blank(code_[at_ - 1])) {
            write(CodePart::Variable,
                  skip(code_, at_, [](char each) { return is_word(each) || each == '-'; }));
        } else {
            if (language_.has(COMMANDS))
                command_begins_ = c == '|' || c == '&' || c == ';' || c == '(' || c == '{' ||
                                  (command_begins_ && c == '!');
            at_ += c == '\\' && at_ + 1 < code_.size() && peek(1) != '\n' ? 2 : 1;
        }
    }

    void scan_variable() {
        const char next = peek(1);
        command_begins_ = false;
        if (next == '{')
            write(CodePart::Variable, behind_in_line(code_, "}", at_));
        else if (next == '(' && language_.has(TARGETS))
            write(CodePart::Variable, behind_in_line(code_, ")", at_));
        else if (is_letter(next))
            write(CodePart::Variable, skip(code_, at_ + 1, is_word));
        else if (next != '\0' &&
                 std::string_view("@<^*#?!$0123456789").find(next) != std::string_view::npos)
            write(CodePart::Variable, at_ + 2);
        else
            ++at_;
    }

    std::string_view code_;
    const Language& language_;
    Highlighted& out_;
    std::size_t at_ = 0;
    std::size_t plain_begin_ = 0; ///< what stands from here to at_ is not written yet
    bool line_begins_ = true;
    bool command_begins_ = true;
};

} // namespace

void highlight_table(std::string_view code, const Language& language, Highlighted& out) {
    TableScanner(code, language, out).run();
}

} // namespace Lumenfold::Builder
