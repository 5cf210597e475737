#include "layers/object_records.h"

#include <algorithm>
#include <unordered_set>

namespace Layers {
namespace {

// Along longer chains of links every attribute keeps what it found, so that reading all of them
// does not walk from each to the end.
constexpr std::size_t WALKED_UNKEPT = 32;

const LLayer* base_of(const LLayer& layer) {
    return Records::of(layer).is_cut_off ? nullptr : layer.base();
}

const LLayer* layer_around(const LAttribute& attribute) {
    return attribute.parent() != nullptr ? attribute.parent()->as_layer() : nullptr;
}

// Whether linking has copied all variants of the bases into the attribute.
bool is_complete(const LAttribute& attribute) {
    return Records::of(attribute).inherited_in_load != 0 && !tree_revisions.late_variants;
}

/// Collects variants, of each name the first.
class VariantList {
public:
    void add_own(const LAttribute& attribute) {
        for (const std::unique_ptr<LObject>& child : attribute.children())
            if (LAttribute* const variant = child->as_attribute())
                add(*variant);
    }

    void add_missing(const LAttribute& attribute) {
        for (const std::unique_ptr<LObject>& child : attribute.children())
            if (LAttribute* const variant = child->as_attribute())
                if (!contains(variant->name()))
                    add(*variant);
    }

    std::vector<StateVariant> sorted() {
        if (variants_.size() > 1)
            std::stable_sort(variants_.begin(), variants_.end(), outranks);
        return std::move(variants_);
    }

private:
    static constexpr std::size_t SCANNED_AT_MOST = 16;

    void add(LAttribute& variant) {
        const std::string& name = variant.name();
        const auto colons = std::count(name.begin(), name.end(), ':');
        variants_.push_back({&variant, 0, static_cast<std::uint32_t>(colons) + 1});
    }

    // Equal names share one text.
    bool contains(const std::string& name) {
        if (variants_.size() <= SCANNED_AT_MOST)
            return std::any_of(variants_.begin(), variants_.end(), [&name](const StateVariant& v) {
                return &v.attribute->name() == &name;
            });
        for (; indexed_ < variants_.size(); ++indexed_)
            names_.insert(&variants_[indexed_].attribute->name());
        return names_.contains(&name);
    }

    static bool outranks(const StateVariant& a, const StateVariant& b) {
        if (a.state_count != b.state_count)
            return a.state_count > b.state_count;
        return a.attribute->name() < b.attribute->name();
    }

    std::vector<StateVariant> variants_;
    std::unordered_set<const std::string*> names_; ///< of the first `indexed_` variants
    std::size_t indexed_ = 0;
};

// The attribute's own variants, then those of the same attribute of each base that it lacks.
std::vector<StateVariant> variants_in_force(const LAttribute& attribute) {
    VariantList list;
    list.add_own(attribute);
    const LLayer* const layer = layer_around(attribute);
    if (layer == nullptr || is_complete(attribute))
        return list.sorted();
    for (const LLayer* base = base_of(*layer); base != nullptr; base = base_of(*base))
        if (const LAttribute* const same =
                Records::find_attribute(*base, Records::name(attribute))) {
            list.add_missing(*same);
            if (is_complete(*same))
                break;
        }
    return list.sorted();
}

void fill(StateCache& cache, std::vector<StateVariant> variants) {
    cache.variants = std::move(variants);
    cache.states.clear();
    for (StateVariant& variant : cache.variants) {
        variant.first_state = static_cast<std::uint32_t>(cache.states.size());
        all_states(variant.attribute->name(), [&cache](std::string_view state) {
            cache.states.emplace_back(state);
            return true;
        });
    }
    cache.shape_revision = tree_revisions.shape;
    cache.answered_for = 0;
}

const StateCache* present_cache(const LAttribute& attribute) {
    const AttributeExtras* const extras = Records::of(attribute).extras.get();
    const bool is_present = extras != nullptr && extras->states &&
                            extras->states->shape_revision == tree_revisions.shape;
    return is_present ? extras->states.get() : nullptr;
}

/// An attribute along a chain of links.
struct Stop {
    const LAttribute* attribute;
    std::vector<StateVariant> variants;
};

StateCache& keep(Stop& stop) {
    std::unique_ptr<StateCache>& cache = Records::of(*stop.attribute).more().states;
    if (!cache)
        cache = std::make_unique<StateCache>();
    fill(*cache, std::move(stop.variants));
    return *cache;
}

const StateCache* next_with_variants(const StateCache* cache) {
    while (cache != nullptr && cache->variants.empty())
        cache = cache->behind;
    return cache;
}

const LAttribute* target_of(const LAttribute& attribute) {
    const AttributeLink* const link = Records::of(attribute).link.get();
    return link != nullptr ? link->target : nullptr;
}

bool all_hold(const StateCache& cache, const StateVariant& variant, const ActiveStates& active) {
    const auto first = cache.states.begin() + variant.first_state;
    return std::all_of(first, first + variant.state_count,
                       [&active](const SharedName& state) { return active.holds(state); });
}

const LAttribute* variant_in(const StateCache& cache, const ActiveStates& active) {
    for (const StateVariant& variant : cache.variants)
        if (all_hold(cache, variant, active))
            return variant.attribute;
    return nullptr;
}

} // namespace

const ActiveStates& ActiveStates::of(const std::vector<std::string>& names) {
    static ActiveStates& last = *new ActiveStates;
    if (last.names_ != names) {
        last.names_ = names;
        last.shared_.clear();
        for (const std::string& name : names)
            last.shared_.emplace_back(name);
        ++last.number_;
    }
    return last;
}

std::size_t Records::variant_count(const LAttribute& attribute) {
    return attribute.children().size() + of(attribute).variants_of_bases;
}

const StateCache* Records::state_cache(const LAttribute& attribute) {
    std::vector<Stop> stops; // up to one whose cache is there, or to the end of the links
    const LAttribute* stop = &attribute;
    const StateCache* behind = present_cache(*stop);
    while (behind == nullptr) {
        stops.push_back({stop, variants_in_force(*stop)});
        if (stop->link_target() == nullptr)
            break;
        stop = stop->link_target();
        behind = present_cache(*stop);
    }
    const LAttribute* const terminal = behind != nullptr ? behind->terminal : stop;
    const bool keeps_all = stops.size() > WALKED_UNKEPT;
    for (; !stops.empty(); stops.pop_back()) {
        if (stops.back().variants.empty() && !keeps_all)
            continue;
        StateCache& cache = keep(stops.back());
        cache.terminal = terminal;
        cache.behind = next_with_variants(behind);
        behind = &cache;
    }
    return behind;
}

const LAttribute& Records::terminal(const LAttribute& attribute) {
    const LAttribute* end = &attribute;
    std::size_t steps = 0;
    while (const LAttribute* const target = target_of(*end)) {
        if (steps++ == WALKED_UNKEPT)
            return *state_cache(*end)->terminal;
        end = target;
    }
    return *end;
}

const LAttribute& Records::value_source(const StateCache& cache, const ActiveStates& active) {
    const LAttribute* found = variant_in(cache, active);
    const StateCache* stop = cache.behind;
    for (; found == nullptr && stop != nullptr; stop = stop->behind)
        found = stop->answered_for == active.number() ? stop->answer : variant_in(*stop, active);
    const LAttribute& source = found != nullptr ? terminal(*found) : *cache.terminal;
    for (const StateCache* passed = cache.behind; passed != stop; passed = passed->behind) {
        passed->answered_for = active.number();
        passed->answer = &source;
    }
    return source;
}

} // namespace Layers
