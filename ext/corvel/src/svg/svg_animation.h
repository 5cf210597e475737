#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace Corvel {

/// An SVG document (SVG 1.1) with the animation of a subset of SMIL and CSS keyframes, played by
/// rewriting it as static SVG text. Immutable once made.
class SvgAnimation {
public:
    explicit SvgAnimation(std::string text);
    ~SvgAnimation();
    SvgAnimation(SvgAnimation&&) noexcept;
    SvgAnimation& operator=(SvgAnimation&&) noexcept;

    /// Whether anything in the document moves.
    bool is_animated() const;
    /// The length of the longest animation in milliseconds; 0 if nothing moves.
    double duration() const;
    /// When the last animation has come to its end, in milliseconds after the start; frames from
    /// then on are all the same. Infinite for one that repeats for ever.
    double end() const;
    /// The document as it stands `ms` milliseconds after its start, as a static SVG text.
    std::string frame_at(double ms) const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace Corvel
