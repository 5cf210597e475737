#include "layers/parser.h"

#include <algorithm>
#include <unordered_set>

namespace Layers {
namespace {

std::size_t joined_size(std::span<const std::string_view> words) {
    std::size_t size = words.size() - 1;
    for (const std::string_view word : words)
        size += word.size();
    return size;
}

// Whether the words follow each other in memory with one blank between.
bool stand_together(std::span<const std::string_view> words) {
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (words[i - 1].empty())
            return false; // a name that is missing has no place
        const char* const end = words[i - 1].data() + words[i - 1].size();
        if (words[i].data() != end + 1 || *end != ' ')
            return false;
    }
    return !words.empty();
}

} // namespace

// declaration-name: name-path (Dot name-path?)?
// name-path: name (Slash name)*
DeclarationName Parser::parse_declaration_name() {
    DeclarationName declaration;
    const std::size_t first_segment = pending_names_.size();
    NameNode last = parse_name();
    while (expect(TokenKind::Slash)) {
        pending_names_.push_back(last);
        last = parse_name();
    }
    if (at(TokenKind::Dot)) {
        declaration.group = last;
        parse_grouped_name(declaration);
    } else {
        declaration.name = last;
    }
    keep_traversal(first_segment);
    declaration.traversal = store(pending_names_, first_segment);
    return declaration;
}

// The part of a declaration-name from the Dot on.
void Parser::parse_grouped_name(DeclarationName& declaration) {
    advance();
    declaration.name = parse_name();
    if (at(TokenKind::Slash)) {
        report("Found `/` after `.`; traversal must precede grouping.");
        while (expect(TokenKind::Slash))
            parse_name();
    }
    if (declaration.group.empty())
        report_at(declaration.group.line, "Expected a name in group.");
}

// Drops the empty segments of a traversal, each with a message.
void Parser::keep_traversal(std::size_t first_segment) {
    const auto is_missing = [this](const NameNode& segment) {
        if (!segment.empty())
            return false;
        report_at(segment.line, "Expected a name in traversal.");
        return true;
    };
    const auto begin = pending_names_.begin() + static_cast<std::ptrdiff_t>(first_segment);
    const auto kept_end = std::remove_if(begin, pending_names_.end(), is_missing);
    pending_names_.erase(kept_end, pending_names_.end());
}

// name: (Name | expansion)*
NameNode Parser::parse_name() {
    NameNode name;
    name.line = peek().line;
    const std::size_t first_part = pending_parts_.size();
    for (;;) {
        if (at(TokenKind::Name)) {
            pending_texts_.push_back(peek().text);
            pending_parts_.push_back({store(pending_texts_, pending_texts_.size() - 1)});
            advance();
        } else if (at(TokenKind::LeftParen)) {
            pending_parts_.push_back(parse_expansion());
        } else {
            break;
        }
    }
    name.parts = store(pending_parts_, first_part);
    return name;
}

// expansion: LeftParen alternative (Comma alternative)* RightParen
NamePart Parser::parse_expansion() {
    const std::size_t first = pending_texts_.size();
    std::unordered_set<std::string_view> seen;
    do {
        advance(); // past the "(" or the ","
        const std::string_view alternative = parse_alternative();
        if (seen.insert(alternative).second)
            pending_texts_.push_back(alternative);
        else
            report("Found duplicate expansion alternative `" + std::string(alternative) + "`.");
    } while (at(TokenKind::Comma));
    if (!expect(TokenKind::RightParen))
        report_unexpected("expected `)` to close the expansion.");
    return {store(pending_texts_, first)};
}

// alternative: Name*
std::string_view Parser::parse_alternative() {
    const std::size_t first = pending_texts_.size();
    for (; at(TokenKind::Name); advance())
        pending_texts_.push_back(peek().text);
    return join_words(first);
}

// reference: declaration-name without expansions
ReferenceNode Parser::parse_reference() {
    const DeclarationName declaration = parse_declaration_name();
    ReferenceNode reference;
    const std::size_t first = pending_texts_.size();
    for (const NameNode& segment : declaration.traversal) {
        const std::string_view text = plain_text(segment);
        pending_texts_.push_back(text);
    }
    reference.traversal = store(pending_texts_, first);
    if (!declaration.group.empty())
        reference.group = plain_text(declaration.group);
    reference.name = plain_text(declaration.name);
    return reference;
}

// The text of a name, of which the first alternative of each part counts.
std::string_view Parser::plain_text(const NameNode& name) {
    if (name.empty())
        report_at(name.line, "Expected a name in reference.");
    const std::size_t first = pending_texts_.size();
    for (const NamePart& part : name.parts) {
        if (part.alternatives.size() > 1)
            report("Found expansion in reference; expansions are only allowed in declaration "
                   "names.");
        pending_texts_.push_back(part.alternatives.front());
    }
    return join_words(first);
}

// Takes the pending texts from `first` on and joins them with one blank each. Words that stand so
// in the source are not copied.
std::string_view Parser::join_words(std::size_t first) {
    const std::span<const std::string_view> words(pending_texts_.data() + first,
                                                  pending_texts_.size() - first);
    std::string_view joined;
    if (stand_together(words))
        joined = {words.front().data(), joined_size(words)};
    else if (!words.empty())
        joined = copy_joined(words);
    pending_texts_.resize(first);
    return joined;
}

std::string_view Parser::copy_joined(std::span<const std::string_view> words) {
    const std::size_t size = joined_size(words);
    char* const text = allocate_text(size);
    char* end = text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (i > 0)
            *end++ = ' ';
        end = std::copy(words[i].begin(), words[i].end(), end);
    }
    return {text, size};
}

char* Parser::allocate_text(std::size_t size) {
    return static_cast<char*>(storage_->allocate(size, 1));
}

} // namespace Layers
