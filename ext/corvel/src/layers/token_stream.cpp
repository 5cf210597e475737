#include "layers/token_stream.h"

#include "layers/lexer.h"

#include <utility>

namespace Layers {

TokenStream::TokenStream(std::vector<Token> tokens)
    : window_(std::move(tokens)) {
    if (window_.empty() || window_.back().kind != TokenKind::EndOfFile)
        window_.push_back({{}, TokenKind::EndOfFile, window_.empty() ? 1 : window_.back().line});
}

TokenStream::TokenStream(Lexer& lexer)
    : lexer_(&lexer) {
    refill();
}

// Forgets what lies behind the cursor and reads on until a token lies ahead of it.
void TokenStream::refill() {
    window_.erase(window_.begin(), window_.begin() + static_cast<std::ptrdiff_t>(cursor_));
    cursor_ = 0;
    while (window_.size() < 2)
        if (!lexer_->scan_some(window_)) {
            lexer_ = nullptr;
            break;
        }
}

} // namespace Layers
