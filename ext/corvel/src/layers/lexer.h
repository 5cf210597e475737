#pragma once

#include "layers/diagnostic.h"
#include "layers/token.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Layers {

/// Turns the text of one `.lyr` file into tokens, structural ones included. It reads bytes: outside
/// of strings and comments only ASCII is legal. Every problem becomes a diagnostic; the scan always
/// reaches the end of the text. One lexer serves one file.
class Lexer {
public:
    /// A byte-order mark at the start is skipped. `text` must outlive the tokens.
    explicit Lexer(std::string_view text);

    /// Scans the whole text. The list ends with an `EndOfFile`. To be called once.
    std::vector<Token> tokenize();
    /// Scans on in the text and appends some tokens to `tokens`, for a reader that does not need
    /// them all at once. False at the end of the text, when nothing was appended.
    bool scan_some(std::vector<Token>& tokens);
    /// The problems found so far, in order; complete at the end of the text.
    const std::vector<Diagnostic>& diagnostics() const { return diagnostics_; }

private:
    void finish();
    void begin_line();
    void indent_to(std::size_t width);
    void scan_token();
    void scan_name();
    void scan_word(std::string_view keyword_rest);
    void scan_number();
    void scan_string();
    void scan_color();
    void scan_slash();
    void scan_less();
    void end_line();
    void reject(char byte);

    std::size_t skip_blanks(bool& tab_seen);
    char peek(std::size_t offset = 0) const;
    void add(TokenKind kind);
    void report(std::string message);

    std::string_view text_;
    std::size_t position_ = 0;
    std::size_t token_start_ = 0;
    std::uint64_t line_ = 1;
    bool at_line_start_ = true;
    std::vector<std::size_t> indents_{0}; ///< widths of the open levels, growing
    bool line_has_tokens_ = false;        ///< no line end was added since the last other token
    bool finished_ = false;
    std::vector<Token>* tokens_ = nullptr; ///< where the scan under way puts them
    std::vector<Diagnostic> diagnostics_;
};

} // namespace Layers
