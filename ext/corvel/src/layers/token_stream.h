#pragma once

#include "layers/token.h"

#include <cstddef>
#include <vector>

namespace Layers {

class Lexer;

/// A cursor over tokens that never passes the last one, an `EndOfFile`. It reads a list, or takes
/// from a lexer what it needs next, so that the tokens of a large file need no memory of their own.
class TokenStream {
public:
    /// A list without an `EndOfFile` at its end gets one.
    explicit TokenStream(std::vector<Token> tokens);
    /// The lexer must outlive the stream.
    explicit TokenStream(Lexer& lexer);

    /// The token at the cursor, and the one behind it; valid until the cursor moves.
    const Token& peek() const { return window_[cursor_]; }
    const Token& peek_next() const {
        return window_[cursor_ + 1 < window_.size() ? cursor_ + 1 : cursor_];
    }

    void advance() {
        if (cursor_ + 1 == window_.size())
            return;
        ++cursor_;
        ++position_;
        if (cursor_ + 1 == window_.size() && lexer_ != nullptr)
            refill();
    }

    /// How many tokens lie before the cursor.
    std::size_t position() const { return position_; }

private:
    void refill();

    std::vector<Token> window_; ///< with a lexer, the part of its tokens around the cursor
    std::size_t cursor_ = 0;
    std::size_t position_ = 0;
    Lexer* lexer_ = nullptr; ///< null once it has given all
};

} // namespace Layers
