#pragma once

#include "svg/animation_track.h"
#include "svg/css_scanner.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

namespace Corvel::Svg {

/// The keys that a keyframes block gives for each property it can animate; null for a property
/// with fewer than two keyframes.
struct KeyframeKeys {
    std::shared_ptr<const TrackKeys> distance; ///< "offset-distance", from 0 to 1
    std::shared_ptr<const TrackKeys> transform;
    std::shared_ptr<const TrackKeys> opacity;
};

/// One rule of a keyframes block: what it says of each property; no number if it says nothing.
struct Keyframe {
    std::vector<double> offsets; ///< from 0 to 1
    Easing easing;
    std::vector<double> distance;
    std::vector<double> transform; ///< the six numbers of a matrix
    std::vector<double> opacity;
};

/// The keyframes blocks of a style sheet by name. Blocks are read when a rule first names them.
class KeyframesTable {
public:
    /// `css` must outlive the table.
    KeyframesTable(std::string_view css, const std::vector<CssKeyframes>& blocks);

    bool contains(std::string_view name) const { return blocks_.contains(name); }

    /// The keys of a block; all null if there is no block of that name.
    const KeyframeKeys& find(std::string_view name);

private:
    struct Block {
        std::size_t first_rule = 0;
        std::size_t last_rule = 0; ///< one past the last
        bool is_read = false;
        KeyframeKeys keys;
    };
    void read(Block& block);
    const Keyframe& keyframe(std::size_t rule);

    std::vector<CssRule> rules_;
    std::vector<std::unique_ptr<Keyframe>> keyframes_; ///< by rule; null until first read
    std::map<std::string_view, Block> blocks_;
    std::size_t keyframes_left_;
};

} // namespace Corvel::Svg
