#include "layers/object_model.h"
#include "layers/object_records.h"

#include <algorithm>
#include <utility>

namespace Layers {
namespace {

// One walk over an attribute and all that depend on it, in depth-first order on a stack of its own
// so that chains of links may be of any length. Callbacks may change links and destroy attributes.
class NotificationWalk {
public:
    using Emitter = Signal Records::AttributeRecord::*;

    explicit NotificationWalk(Emitter signal)
        : signal_(signal)
        , outer_(innermost_) {
        innermost_ = this;
    }
    ~NotificationWalk() { innermost_ = outer_; }
    NotificationWalk(const NotificationWalk&) = delete;
    NotificationWalk& operator=(const NotificationWalk&) = delete;

    void run(LAttribute& start) {
        visit(start);
        while (!frames_.empty()) {
            Frame& frame = frames_.back();
            if (frame.attribute == nullptr || frame.next == frame.dependents.size())
                frames_.pop_back();
            else if (LAttribute* const next = frame.dependents[frame.next++];
                     still_depends(frame, next))
                visit(*next);
        }
    }

    static void forget(const LAttribute& attribute) {
        for (NotificationWalk* walk = innermost_; walk != nullptr; walk = walk->outer_)
            for (Frame& frame : walk->frames_)
                if (frame.attribute == &attribute)
                    frame.attribute = nullptr;
    }

private:
    struct Frame {
        LAttribute* attribute; ///< null once destroyed
        std::vector<LAttribute*> dependents;
        std::uint64_t dependents_version = 0;
        std::size_t next = 0;
    };

    void visit(LAttribute& attribute) {
        frames_.push_back({&attribute, {}});
        (Records::of(attribute).*signal_).emit();
        Frame& frame = frames_.back();
        if (frame.attribute == nullptr)
            return;
        const Dependents* const dependents = Records::of(attribute).dependents.get();
        if (dependents == nullptr)
            return;
        std::copy_if(dependents->list.begin(), dependents->list.end(),
                     std::back_inserter(frame.dependents),
                     [](const LAttribute* dependent) { return dependent != nullptr; });
        frame.dependents_version = dependents->version;
    }

    static bool still_depends(const Frame& frame, const LAttribute* dependent) {
        const Dependents& now = *Records::of(*frame.attribute).dependents;
        return now.version == frame.dependents_version ||
               std::find(now.list.begin(), now.list.end(), dependent) != now.list.end();
    }

    Emitter signal_;
    std::vector<Frame> frames_;
    NotificationWalk* outer_;
    static inline NotificationWalk* innermost_ = nullptr;
};

void notify(LAttribute& attribute, NotificationWalk::Emitter signal) {
    if (!Records::of(attribute).dependents)
        (Records::of(attribute).*signal).emit();
    else
        NotificationWalk(signal).run(attribute);
}

void notify_value(LAttribute& attribute) {
    notify(attribute, &Records::AttributeRecord::value_changed);
}

bool holds(const std::vector<std::string>& active, std::string_view state) {
    return std::find(active.begin(), active.end(), state) != active.end();
}

// The state variant with the most names, all of which are active; null if none.
const LAttribute* best_state_child(const LAttribute& attribute,
                                   const std::vector<std::string>& active) {
    const auto is_active = [&](std::string_view state) { return holds(active, state); };
    for (const StateVariant& variant : Records::state_variants(attribute))
        if (all_states(variant.attribute->name(), is_active))
            return variant.attribute;
    return nullptr;
}

const AttributeValue& value_under(const LAttribute& attribute,
                                  const std::vector<std::string>& active) {
    if (active.empty())
        return attribute.terminal_value();
    const LAttribute* current = &attribute;
    for (;;) {
        if (const LAttribute* variant = best_state_child(*current, active))
            return variant->terminal_value();
        const LAttribute* const target = current->link_target();
        if (target == nullptr)
            return current->value();
        current = target;
    }
}

} // namespace

LAttribute::LAttribute(const std::string& name)
    : LAttribute(SharedName(name)) {}

LAttribute::LAttribute(SharedName name)
    : LObject(std::move(name), Kind::Attribute)
    , attribute_(new Implementation) {}

void* LAttribute::operator new(std::size_t) {
    return Pooled<LAttribute>::operator new(sizeof(LAttribute));
}

void LAttribute::operator delete(void* memory) {
    Pooled<LAttribute>::operator delete(memory);
}

LAttribute::~LAttribute() {
    NotificationWalk::forget(*this);
    if (attribute_->dependents)
        clear_dependents();
    if (attribute_->link) {
        Records::attach(*this, nullptr);
        attribute_->link_changed.emit();
    }
}

void LAttribute::clear_dependents() {
    Dependents& dependents = *attribute_->dependents;
    while (!dependents.list.empty()) {
        if (LAttribute* const dependent = dependents.list.back()) {
            dependent->clear_link(false);
        } else {
            dependents.list.pop_back();
            --dependents.departed;
        }
    }
}

void LAttribute::set_value(AttributeValue value) {
    if (attribute_->link)
        clear_link(false);
    else if (attribute_->value == value)
        return;
    attribute_->value = std::move(value);
    note_value_change();
    notify_value(*this);
}

bool LAttribute::set_link(std::string_view path) {
    const SharedName kept(path); // the view may lie in the link that goes
    if (path.empty())
        return false;
    clear_link(false);
    attribute_->value = {};
    attribute_->link = std::unique_ptr<AttributeLink>(new AttributeLink);
    attribute_->link->path = kept;
    note_shape_change();
    notify(*this, &Implementation::link_changed);
    notify_value(*this);
    return true;
}

void LAttribute::clear_link(bool notify_dependents) {
    if (!attribute_->link)
        return;
    if (attribute_->link->target != nullptr) {
        attribute_->value = AttributeValue(terminal_value());
        Records::attach(*this, nullptr);
    }
    attribute_->link.reset();
    note_shape_change();
    attribute_->link_changed.emit();
    if (notify_dependents)
        notify_value(*this);
}

const std::string& LAttribute::link_path() const {
    static const std::string none;
    return attribute_->link ? attribute_->link->path.text() : none;
}

bool LAttribute::has_link() const {
    return attribute_->link != nullptr;
}

LAttribute* LAttribute::link_target() const {
    return attribute_->link ? attribute_->link->target : nullptr;
}

bool LAttribute::cyclic() const {
    return attribute_->link && attribute_->link->cyclic;
}

const AttributeValue& LAttribute::value() const {
    return attribute_->value;
}

const AttributeValue& LAttribute::terminal_value() const {
    const LAttribute* end = this;
    while (const LAttribute* const target = end->link_target())
        end = target;
    return end->value();
}

const double* LAttribute::number_value(const std::vector<std::string>& active_states) const {
    return std::get_if<double>(&value_under(*this, active_states));
}

const std::string* LAttribute::string_value(const std::vector<std::string>& active_states) const {
    return std::get_if<std::string>(&value_under(*this, active_states));
}

Signal& LAttribute::value_changed() {
    return attribute_->value_changed;
}

Signal& LAttribute::link_changed() {
    return attribute_->link_changed;
}

} // namespace Layers
