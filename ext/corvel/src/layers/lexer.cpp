#include "layers/lexer.h"

#include <array>
#include <utility>

namespace Layers {
namespace {

constexpr std::size_t TOKENS_AT_ONCE = 512;
constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

constexpr bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool is_hex_digit(char c) {
    return is_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

constexpr std::array<bool, 256> make_name_bytes() {
    std::array<bool, 256> table{};
    for (int byte = 0; byte < 128; ++byte) {
        const char c = static_cast<char>(byte);
        table[static_cast<std::size_t>(byte)] = is_letter(c) || is_digit(c) || c == '-' || c == '_';
    }
    return table;
}

constexpr std::array<bool, 256> NAME_BYTES = make_name_bytes();

constexpr bool continues_name(char c) {
    return NAME_BYTES[static_cast<unsigned char>(c)];
}

} // namespace

Lexer::Lexer(std::string_view text)
    : text_(text) {
    if (text_.starts_with(BYTE_ORDER_MARK))
        text_.remove_prefix(BYTE_ORDER_MARK.size());
}

std::vector<Token> Lexer::tokenize() {
    std::vector<Token> tokens;
    tokens.reserve(text_.size() / 4 + 4);
    while (scan_some(tokens)) {
    }
    return tokens;
}

bool Lexer::scan_some(std::vector<Token>& tokens) {
    if (finished_)
        return false;
    tokens_ = &tokens;
    const std::size_t enough = tokens.size() + TOKENS_AT_ONCE;
    while (position_ < text_.size() && tokens.size() < enough) {
        if (at_line_start_) {
            begin_line();
            if (position_ == text_.size())
                break;
        }
        token_start_ = position_;
        scan_token();
    }
    if (position_ == text_.size())
        finish();
    return true;
}

// Closes what is open, so that the last line of a file needs no line end.
void Lexer::finish() {
    token_start_ = position_;
    if (line_has_tokens_)
        add(TokenKind::LineEnd);
    for (; indents_.size() > 1; indents_.pop_back())
        add(TokenKind::Dedent);
    add(TokenKind::EndOfFile);
    finished_ = true;
}

// Measures the indentation of a line. Lines without tokens leave it as it was.
void Lexer::begin_line() {
    at_line_start_ = false;
    token_start_ = position_;
    bool tab_seen = false;
    const std::size_t width = skip_blanks(tab_seen);
    if (position_ == text_.size())
        return;
    const char next = text_[position_];
    if (next == '\n' || next == '\r' || next == '\0' || (next == '/' && peek(1) == '/'))
        return;
    if (tab_seen)
        report("Found tab in indentation; indent with spaces instead.");
    indent_to(width);
}

void Lexer::indent_to(std::size_t width) {
    if (width > indents_.back()) {
        indents_.push_back(width);
        add(TokenKind::Indent);
        return;
    }
    while (width < indents_.back()) {
        indents_.pop_back();
        add(TokenKind::Dedent);
    }
    if (width != indents_.back())
        report("Found indentation mismatch; line has " + std::to_string(width) +
               " leading spaces but " + std::to_string(indents_.back()) + " were expected.");
}

void Lexer::scan_token() {
    const char c = text_[position_++];
    switch (c) {
    case ' ':
    case '\t':
        return;
    case '&':
        return add(TokenKind::Ampersand);
    case '(':
        return add(TokenKind::LeftParen);
    case ')':
        return add(TokenKind::RightParen);
    case ',':
        return add(TokenKind::Comma);
    case '.':
        return add(TokenKind::Dot);
    case ':':
        return add(TokenKind::Colon);
    case '@':
        return add(TokenKind::At);
    case '<':
        return scan_less();
    case '\n':
        return end_line();
    case '/':
        return scan_slash();
    case '"':
        return scan_string();
    case '#':
        return scan_color();
    case 't':
        return scan_word("rue");
    case 'f':
        return scan_word("alse");
    case '-':
        return is_digit(peek()) ? scan_number() : scan_name();
    case '\r':
        if (peek() != '\n')
            return reject(c);
        ++position_;
        return end_line();
    default:
        if (is_digit(c))
            return scan_number();
        return is_letter(c) || c == '_' ? scan_name() : reject(c);
    }
}

void Lexer::scan_name() {
    while (position_ < text_.size() && continues_name(text_[position_]))
        ++position_;
    add(TokenKind::Name);
}

// A keyword is recognised by its letters alone: "trueish" is the keyword and the name "ish".
void Lexer::scan_word(std::string_view keyword_rest) {
    if (!text_.substr(position_).starts_with(keyword_rest))
        return scan_name();
    position_ += keyword_rest.size();
    add(TokenKind::Boolean);
}

void Lexer::scan_number() {
    while (is_digit(peek()))
        ++position_;
    if (peek() == '.' && is_digit(peek(1))) {
        ++position_;
        while (is_digit(peek()))
            ++position_;
    }
    add(TokenKind::Number);
}

void Lexer::scan_string() {
    const auto stops = [this] { return peek() == '\n' || peek() == '\0'; };
    while (!stops() && peek() != '"') {
        const bool escape = text_[position_++] == '\\';
        if (escape && !stops())
            ++position_;
    }
    if (peek() == '"') {
        ++position_;
        return add(TokenKind::String);
    }
    add(TokenKind::Error);
    report("Found non-terminated string: " + std::string(tokens_->back().text));
}

void Lexer::scan_color() {
    while (is_hex_digit(peek()))
        ++position_;
    const std::size_t digits = position_ - token_start_ - 1;
    if (digits == 3 || digits == 4 || digits == 6 || digits == 8)
        return add(TokenKind::Color);
    add(TokenKind::Error);
    report("Found `#` with " + std::to_string(digits) +
           " hex digits; expected 3, 4, 6, or 8 for a color: " + std::string(tokens_->back().text));
}

void Lexer::scan_slash() {
    if (peek() != '/')
        return add(TokenKind::Slash);
    while (peek() != '\n' && peek() != '\0')
        ++position_;
}

void Lexer::scan_less() {
    if (peek() == '<') {
        ++position_;
        return add(TokenKind::Inherit);
    }
    add(TokenKind::Error);
    report("Found single `<`; did you mean `<<` for inheritance?");
}

void Lexer::end_line() {
    if (line_has_tokens_)
        add(TokenKind::LineEnd);
    ++line_;
    at_line_start_ = true;
}

void Lexer::reject(char byte) {
    add(TokenKind::Error);
    report(std::string("Found unexpected character '") + byte + "'");
}

std::size_t Lexer::skip_blanks(bool& tab_seen) {
    const std::size_t start = position_;
    for (; position_ < text_.size(); ++position_) {
        const char c = text_[position_];
        if (c == '\t')
            tab_seen = true;
        else if (c != ' ')
            break;
    }
    return position_ - start;
}

// The byte ahead, or a NUL at the end of the text, where no rule goes on either.
char Lexer::peek(std::size_t offset) const {
    const std::size_t index = position_ + offset;
    return index < text_.size() ? text_[index] : '\0';
}

void Lexer::add(TokenKind kind) {
    tokens_->push_back({text_.substr(token_start_, position_ - token_start_), kind, line_});
    line_has_tokens_ = kind != TokenKind::LineEnd;
}

void Lexer::report(std::string message) {
    diagnostics_.push_back(
        {line_, std::move(message), text_.substr(token_start_, position_ - token_start_)});
}

} // namespace Layers
