#include "svg/keyframes.h"

#include "svg/css_declarations.h"
#include "svg/svg_values.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>
#include <utility>

namespace Corvel::Svg {
namespace {

/// Blocks can lie in blocks, so a few megabytes can name many times as many keyframes. One that is
/// written out takes more bytes than this; what lies beyond is left out.
constexpr std::size_t BYTES_PER_KEYFRAME = 2;

bool has_offset(const CssRule& rule) {
    return rule.prelude.find_first_not_of(", \t\r\n") != std::string_view::npos;
}

/// Collects the keyframes of one property and puts them in the order of their offsets.
class KeysBuilder {
public:
    void add(std::span<const double> offsets, std::span<const double> value, Easing easing) {
        for (const double offset : offsets) {
            offsets_.push_back(offset);
            numbers_.insert(numbers_.end(), value.begin(), value.end());
            easings_.push_back(easing);
        }
    }

    std::shared_ptr<const TrackKeys> build() const {
        const std::size_t count = offsets_.size();
        if (count < 2)
            return nullptr;
        std::vector<std::size_t> order(count);
        std::iota(order.begin(), order.end(), std::size_t{0});
        // An offset can be NaN, which must not upset the sort.
        std::ranges::stable_sort(order, [&](std::size_t left, std::size_t right) {
            if (std::isnan(offsets_[left]))
                return false;
            return std::isnan(offsets_[right]) || offsets_[left] < offsets_[right];
        });
        auto keys = std::make_shared<TrackKeys>();
        const std::size_t width = numbers_.size() / count;
        for (const std::size_t index : order) {
            const auto first = numbers_.begin() + static_cast<std::ptrdiff_t>(index * width);
            keys->times.push_back(offsets_[index]);
            keys->numbers.insert(keys->numbers.end(), first,
                                 first + static_cast<std::ptrdiff_t>(width));
            keys->end_value();
            keys->easings.push_back(easings_[index]);
        }
        keys->easings.pop_back();
        return keys;
    }

private:
    std::vector<double> offsets_;
    std::vector<double> numbers_; ///< as many for each keyframe
    std::vector<Easing> easings_;
};

} // namespace

KeyframesTable::KeyframesTable(std::string_view css, const std::vector<CssKeyframes>& blocks)
    : rules_(scan_rules(css))
    , keyframes_left_(css.size() / BYTES_PER_KEYFRAME) {
    std::erase_if(rules_, [](const CssRule& rule) { return !has_offset(rule); });
    keyframes_.resize(rules_.size());
    const auto rule_from = [&](std::size_t position) {
        const auto found = std::ranges::lower_bound(rules_, position, {}, &CssRule::begin);
        return static_cast<std::size_t>(found - rules_.begin());
    };
    for (const CssKeyframes& block : blocks) {
        const std::size_t first = rule_from(block.body_begin);
        const std::size_t last = rule_from(block.body_end);
        if (first < last)
            blocks_[block.name] = {first, last, false, {}};
    }
}

const KeyframeKeys& KeyframesTable::find(std::string_view name) {
    static const KeyframeKeys none;
    const auto found = blocks_.find(name);
    if (found == blocks_.end())
        return none;
    if (!found->second.is_read)
        read(found->second);
    return found->second.keys;
}

const Keyframe& KeyframesTable::keyframe(std::size_t rule) {
    std::unique_ptr<Keyframe>& known = keyframes_[rule];
    if (known)
        return *known;
    known = std::make_unique<Keyframe>();
    const Declarations declarations = parse_declarations(rules_[rule].body);
    known->offsets = parse_keyframe_offsets(rules_[rule].prelude);
    known->easing = parse_easing(declarations.timing);
    if (const auto* value = declarations.find("offset-distance"))
        known->distance = {parse_percentage(*value)};
    if (const auto* value = declarations.find("transform")) {
        const Affine m = parse_transform(*value);
        known->transform = {m.a, m.b, m.c, m.d, m.e, m.f};
    }
    if (const auto* value = declarations.find("opacity"))
        known->opacity = {parse_number(*value)};
    return *known;
}

void KeyframesTable::read(Block& block) {
    KeysBuilder distance;
    KeysBuilder transform;
    KeysBuilder opacity;
    for (std::size_t i = block.first_rule; i < block.last_rule && keyframes_left_ > 0; ++i) {
        const Keyframe& frame = keyframe(i);
        keyframes_left_ -=
            std::min(keyframes_left_, std::max<std::size_t>(frame.offsets.size(), 1));
        for (const auto& [keys, value] :
             {std::pair(&distance, &frame.distance), std::pair(&transform, &frame.transform),
              std::pair(&opacity, &frame.opacity)})
            if (!value->empty())
                keys->add(frame.offsets, *value, frame.easing);
    }
    block.keys = {distance.build(), transform.build(), opacity.build()};
    block.is_read = true;
}

} // namespace Corvel::Svg
