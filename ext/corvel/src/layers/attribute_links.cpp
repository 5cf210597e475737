#include "layers/attribute_links.h"

#include "layers/chain_ends.h"
#include "layers/load_limits.h"
#include "layers/log.h"
#include "layers/object_records.h"
#include "layers/tree_paths.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Layers {
namespace {

bool is_bare(const SharedName& path) {
    return !path.empty() && path.text().find('/') == std::string::npos;
}

template <class Visit>
void for_each_attribute(const LObject& parent, Visit visit) {
    for (const std::unique_ptr<LObject>& child : parent.children())
        if (LAttribute* const attribute = child->as_attribute())
            visit(*attribute);
}

/// The attributes in sight that a link without a path may mean: for each such name those of the
/// layers around, the innermost last.
class Scopes {
public:
    ~Scopes() {
        for (const SharedName& name : names_)
            name.mark() = 0;
    }

    /// Makes known which names the links below a layer look for.
    void collect_names(LLayer& start) {
        std::vector<LLayer*> pending{&start};
        while (!pending.empty()) {
            const LLayer& layer = *pending.back();
            pending.pop_back();
            collect_from(layer);
            push_child_layers(pending, layer);
        }
    }

    void enter(const LLayer& layer) {
        for_each_attribute(layer, [&](LAttribute& attribute) {
            if (std::vector<LAttribute*>* const scope = scope_of(Records::name(attribute)))
                if (scope->empty() || scope->back()->parent() != &layer) // of two the first counts
                    scope->push_back(&attribute);
        });
    }

    void leave(const LLayer& layer) {
        for_each_attribute(layer, [&](LAttribute& attribute) {
            std::vector<LAttribute*>* const scope = scope_of(Records::name(attribute));
            if (scope != nullptr && !scope->empty() && scope->back()->parent() == &layer)
                scope->pop_back();
        });
    }

    LAttribute* find(const SharedName& name) {
        const std::vector<LAttribute*>* const scope = scope_of(name);
        return scope != nullptr && !scope->empty() ? scope->back() : nullptr;
    }

private:
    void collect_from(const LObject& parent) {
        for_each_attribute(parent, [this](LAttribute& attribute) {
            if (attribute.has_link())
                collect(Records::link_path(attribute));
            collect_from(attribute); // its variants
        });
    }

    void collect(const SharedName& path) {
        if (!is_bare(path) || path.mark() != 0)
            return;
        names_.push_back(path);
        path.mark() = static_cast<std::uint32_t>(names_.size());
        scopes_.emplace_back();
    }

    std::vector<LAttribute*>* scope_of(const SharedName& name) {
        const std::uint32_t mark = name.empty() ? 0 : name.mark();
        return mark != 0 ? &scopes_[mark - 1] : nullptr;
    }

    std::vector<SharedName> names_;
    std::vector<std::vector<LAttribute*>> scopes_; ///< by mark - 1
};

/// Resolves links layer by layer, outer ones first, and knows the way to the present layer.
class LinkResolver {
public:
    void run(LLayer& start) {
        scopes_.collect_names(start);
        enter_around(start);
        const std::size_t outer_count = path_.size();
        enter(start);
        while (path_.size() > outer_count)
            step();
        if (untold_ > 0)
            log_line("engine: " + std::to_string(untold_) + " more links lead nowhere.");
    }

private:
    struct Step {
        LLayer* layer;
        std::size_t next_child = 0;
    };

    void enter_around(LLayer& start) {
        for (LLayer* outer = enclosing_layer(start); outer != nullptr;
             outer = enclosing_layer(*outer))
            path_.push_back({outer});
        std::reverse(path_.begin(), path_.end());
        for (const Step& step : path_)
            scopes_.enter(*step.layer);
    }

    void enter(LLayer& layer) {
        path_.push_back({&layer});
        scopes_.enter(layer);
        for_each_attribute(layer, [this](LAttribute& attribute) { resolve(attribute); });
    }

    void step() {
        Step& step = path_.back();
        const std::vector<LLayer*>& children = Records::child_layers(*step.layer);
        if (step.next_child < children.size())
            return enter(*children[step.next_child++]);
        scopes_.leave(*step.layer);
        path_.pop_back();
    }

    void resolve(LAttribute& attribute) {
        if (attribute.has_link())
            resolve_own_link(attribute);
        for_each_attribute(attribute, [this](LAttribute& variant) { resolve(variant); });
        if (Records::of(attribute).extras)
            attribute.value_changed().emit();
    }

    void resolve_own_link(LAttribute& attribute) {
        AttributeLink& link = *Records::of(attribute).link;
        LAttribute* target = find_target(link.path);
        if (target != nullptr && target == link.target)
            return; // attached, so it was no cycle
        link.cyclic = target != nullptr && leads_to(*target, attribute);
        if (link.cyclic)
            target = nullptr;
        if (link.target != nullptr)
            ends_.forget();
        Records::attach(attribute, target);
        if (target == nullptr && !link.path.empty())
            tell(attribute, link);
    }

    // A bare name is looked for outwards from the layer around, a path from the top layer - the one
    // two steps below the root, or the layer itself -, then from the root.
    LAttribute* find_target(const SharedName& path) {
        const std::string_view text = path.text();
        const std::size_t slash = text.rfind('/');
        if (slash == std::string_view::npos)
            return scopes_.find(path);
        const std::string_view layer_path = text.substr(0, slash);
        const LLayer* const top = path_[std::min<std::size_t>(path_.size() - 1, 2)].layer;
        const LLayer* layer = top->find_layer(layer_path);
        if (layer == nullptr)
            layer = path_.front().layer->find_layer(layer_path);
        return layer != nullptr ? layer->find_attribute(text.substr(slash + 1)) : nullptr;
    }

    // Whether the resolved links from `start` on meet `attribute`, which can only be their end
    // while it has no target itself.
    bool leads_to(const LAttribute& start, const LAttribute& attribute) {
        const auto target_of = [](const LAttribute& a) { return a.link_target(); };
        if (attribute.link_target() == nullptr)
            return ends_.end_of(&start, target_of) == &attribute;
        for (const LAttribute* stop = &start; stop != nullptr; stop = stop->link_target())
            if (stop == &attribute)
                return true;
        return false;
    }

    void tell(const LAttribute& attribute, const AttributeLink& link) {
        if (message_bytes_ >= MAX_LINK_MESSAGES) {
            ++untold_;
            return;
        }
        const std::string message =
            std::string("engine: ") + (link.cyclic ? "cyclic" : "unresolved") + " link `" +
            link.path.text() + "` on attribute `" + full_path(attribute) + "`.";
        message_bytes_ += message.size();
        log_line(message);
    }

    std::vector<Step> path_; ///< from the root on
    Scopes scopes_;
    ChainEnds<LAttribute> ends_;
    std::size_t message_bytes_ = 0;
    std::size_t untold_ = 0;
};

} // namespace

void link_attributes(LLayer& layer) {
    LinkResolver().run(layer);
}

} // namespace Layers
