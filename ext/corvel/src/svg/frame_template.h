#pragma once

#include "svg/animation_track.h"
#include "svg/svg_document.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Corvel::Svg {

/// A document cut at the places where its animation writes. All that does not change from frame to
/// frame is settled here once, so that a frame only samples, formats and joins.
class FrameTemplate {
public:
    /// Later tracks win over earlier ones on the same property of an element. Nothing of the
    /// document is needed afterwards.
    FrameTemplate(const SvgDocument& document, std::vector<AnimationTrack> tracks);

    /// The frame `ms` milliseconds after the start.
    std::string at(double ms) const;

private:
    /// A place in the text that gets an attribute value, or a whole attribute.
    struct Hole {
        std::size_t literal_end; ///< the literal text ahead of it ends here
        std::size_t first_writer;
        std::size_t last_writer; ///< one past the last
        std::string lead;        ///< goes ahead of a value
        std::string tail;        ///< goes behind it
        std::string fallback;    ///< stands here while no writer has a value
    };
    friend class FrameTemplateBuilder;
    friend class FrameWriter;

    std::vector<AnimationTrack> tracks_;
    std::string literals_;
    std::vector<Hole> holes_;
    std::vector<std::size_t>
        writers_; ///< indices of tracks; within a hole the first with a value wins
};

} // namespace Corvel::Svg
