#include "builder/documents/html_piece.h"

#include "builder/documents/allowed_html.h"

#include <algorithm>

namespace Lumenfold::Builder {
namespace {

/// What a tag may have besides quoted values: the parser compares each attribute with all before.
constexpr std::size_t LONGEST_TAG = 1000;
constexpr std::string_view BLANKS = " \t\r\n\f";

bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::string lowered(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
    return lower;
}

class PieceCopier {
public:
    PieceCopier(std::string& html, std::string_view piece)
        : html_(html)
        , piece_(piece) {}

    std::size_t copy() {
        while (at_ < piece_.size()) {
            copy_to(std::min(piece_.find('<', at_), piece_.size()));
            if (at_ < piece_.size())
                copy_markup();
        }
        return tags_;
    }

private:
    char peek(std::size_t ahead) const {
        return at_ + ahead < piece_.size() ? piece_[at_ + ahead] : '\0';
    }

    void copy_to(std::size_t end) {
        html_.append(piece_, at_, end - at_);
        at_ = end;
    }

    void copy_markup() {
        if (piece_.substr(at_).starts_with("<!--"))
            copy_until("-->", at_ + 4);
        else if (peek(1) == '!' || peek(1) == '?')
            copy_until(">", at_ + 2);
        else if (is_letter(peek(1)) || (peek(1) == '/' && is_letter(peek(2))))
            copy_tag();
        else
            copy_to(at_ + 1);
    }

    /// Copies up to and with `end`; adds it if it never comes.
    void copy_until(std::string_view end, std::size_t from) {
        const std::size_t found = piece_.find(end, std::min(from, piece_.size()));
        copy_to(found == std::string_view::npos ? piece_.size() : found + end.size());
        if (found == std::string_view::npos)
            html_ += end;
    }

    void copy_tag() {
        ++tags_;
        const bool closing = peek(1) == '/';
        const std::size_t name_begin = at_ + (closing ? 2 : 1);
        const std::size_t name_end =
            std::min(piece_.find_first_of(" \t\r\n\f/>", name_begin), piece_.size());
        const std::string name = lowered(piece_.substr(name_begin, name_end - name_begin));
        const std::size_t tag_begin = html_.size();
        html_ += closing ? "</" : "<";
        if (is_formatting(name))
            html_ += FORMATTING_PREFIX;
        at_ = name_begin;
        copy_to(name_end);
        if (!copy_attributes())
            html_.resize(tag_begin);
        else if (!closing && is_raw_text(name))
            copy_raw_text(name);
    }

    /// Copies up to and with the ">" that ends a tag. False if the tag is too long.
    bool copy_attributes() {
        std::size_t bare = 0;
        bool value_begins = false;
        while (at_ < piece_.size()) {
            const char c = piece_[at_];
            if (value_begins && (c == '"' || c == '\'')) {
                copy_until(std::string_view(&c, 1), at_ + 1);
                value_begins = false;
                continue;
            }
            value_begins = c == '=' || (value_begins && BLANKS.find(c) != std::string_view::npos);
            ++bare;
            copy_to(at_ + 1);
            if (c == '>')
                return bare <= LONGEST_TAG;
        }
        html_ += '>';
        return bare <= LONGEST_TAG;
    }

    void copy_raw_text(const std::string& name) {
        const std::string end = "</" + name;
        const auto found = std::search(
            piece_.begin() + static_cast<std::ptrdiff_t>(at_), piece_.end(), end.begin(), end.end(),
            [](char c, char wanted) {
                return (c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c) == wanted;
            });
        copy_to(static_cast<std::size_t>(found - piece_.begin()));
        if (at_ == piece_.size())
            html_ += end + ">";
    }

    std::string& html_;
    std::string_view piece_;
    std::size_t at_ = 0;
    std::size_t tags_ = 0;
};

} // namespace

std::size_t append_html_piece(std::string& html, std::string_view piece) {
    return PieceCopier(html, piece).copy();
}

} // namespace Lumenfold::Builder
