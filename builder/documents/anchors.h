#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Lumenfold::Builder {

/// The anchor that code forges make of a heading's text: lowercase, punctuation dropped, each blank
/// a dash. "section" for a text without any letter or digit.
std::string heading_slug(std::string_view text);

/// The anchors of one document, each once.
class Anchors {
public:
    /// Takes the anchor of a heading; a repeated one gets "-1", "-2" and so on.
    const std::string& add_heading(std::string_view text);
    /// Takes an anchor as its author wrote it. False if the document has it already, or it is none.
    bool add(std::string_view id);

    bool contains(std::string_view id) const;
    std::vector<std::string> take() { return std::move(order_); }
    const std::vector<std::string>& all() const { return order_; }

private:
    std::unordered_map<std::string, std::size_t> repeats_; ///< by anchor: the last number given
    std::vector<std::string> order_;
};

/// Of so many mistakes in one text a person wants to know what was meant; looking for it costs.
inline constexpr std::size_t MOST_SUGGESTIONS = 100;

/// What a person probably meant by `word`: the nearest of `candidates`, empty if none is near.
std::string_view nearest(std::string_view word, const std::vector<std::string>& candidates);

/// "no heading "#x" in PLACE; did you mean "#y"?"
std::string missing_anchor(std::string_view anchor, std::string_view place,
                           const std::vector<std::string>& anchors);

} // namespace Lumenfold::Builder
