#include "builder/documents/highlight/characters.h"
#include "builder/documents/highlight/scanners.h"

#include <utility>

namespace Lumenfold::Builder {
namespace {

bool is_name(char c) {
    return is_word(c) || c == '-';
}

class StyleScanner {
public:
    StyleScanner(std::string_view code, Highlighted& out)
        : code_(code)
        , out_(out) {}

    void run() {
        while (at_ < code_.size())
            scan_one();
    }

private:
    void write(CodePart part, std::size_t end) {
        out_.part(part, code_.substr(at_, end - at_));
        at_ = end;
    }
    void plain(std::size_t end) {
        out_.plain(code_.substr(at_, end - at_));
        at_ = end;
    }
    char peek(std::size_t ahead) const {
        return at_ + ahead < code_.size() ? code_[at_ + ahead] : '\0';
    }

    void scan_one() {
        const char c = code_[at_];
        if (is_blank(c) || c == '\n')
            plain(at_ + 1);
        else if (c == '/' && peek(1) == '*')
            write(CodePart::Comment, behind(code_, "*/", at_ + 2));
        else if (c == '/' && peek(1) == '/')
            write(CodePart::Comment, line_end(code_, at_));
        else if (c == '"' || c == '\'')
            write(CodePart::String, behind_in_line(code_, code_.substr(at_, 1), at_ + 1));
        else if (c == ';' || c == '{' || c == '}')
            end_statement();
        else if (c == '@')
            write(CodePart::Keyword, skip(code_, at_ + 1, is_name));
        else
            scan_statement(c);
    }

    void end_statement() {
        plain(at_ + 1);
        begins_ = true;
    }

    void scan_statement(char c) {
        if (begins_ && brace_ <= at_)
            brace_ = std::min(code_.find('{', at_), code_.size());
        if (begins_)
            is_selector_ = std::min(code_.find_first_of(";}", at_), code_.size()) > brace_;
        const bool begins = std::exchange(begins_, false);
        const bool sign = c == '.' || c == '#' || c == '&' || c == ':' || c == '*';
        if (is_selector_ && (sign || is_name(c)))
            write(CodePart::Type, skip(code_, at_ + 1, is_name));
        else if (is_digit(c) || (c == '#' && is_word(peek(1))))
            write(CodePart::Number, skip(code_, at_ + 1, [](char each) {
                      return is_word(each) || each == '.' || each == '%';
                  }));
        else if (is_name(c) || c == '$')
            scan_name(begins);
        else
            plain(at_ + 1);
    }

    void scan_name(bool begins) {
        const std::size_t end = skip(code_, at_ + 1, is_name);
        if (begins || code_.substr(at_, 2) == "--" || code_[at_] == '$')
            write(CodePart::Variable, end);
        else if (end < code_.size() && code_[end] == '(')
            write(CodePart::Function, end);
        else
            plain(end);
    }

    std::string_view code_;
    Highlighted& out_;
    std::size_t at_ = 0;
    std::size_t brace_ = 0;    ///< the next "{", looked for when it lies behind
    bool begins_ = true;       ///< a statement begins here
    bool is_selector_ = false; ///< the statement ends with a block
};

} // namespace

void highlight_style_sheet(std::string_view code, Highlighted& out) {
    StyleScanner(code, out).run();
}

} // namespace Lumenfold::Builder
