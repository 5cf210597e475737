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
    using Emitter = Signal AttributeExtras::*;

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
        if (Records::of(attribute).extras)
            (Records::of(attribute).extras.get()->*signal_).emit();
        Frame& frame = frames_.back();
        if (frame.attribute == nullptr || !Records::of(attribute).extras)
            return;
        const Dependents& dependents = Records::of(attribute).extras->dependents;
        std::copy_if(dependents.list.begin(), dependents.list.end(),
                     std::back_inserter(frame.dependents),
                     [](const LAttribute* dependent) { return dependent != nullptr; });
        frame.dependents_version = dependents.version;
    }

    static bool still_depends(const Frame& frame, const LAttribute* dependent) {
        const Dependents& now = Records::of(*frame.attribute).extras->dependents;
        return now.version == frame.dependents_version ||
               std::find(now.list.begin(), now.list.end(), dependent) != now.list.end();
    }

    Emitter signal_;
    std::vector<Frame> frames_;
    NotificationWalk* outer_;
    static inline NotificationWalk* innermost_ = nullptr;
};

void notify(LAttribute& attribute, NotificationWalk::Emitter signal) {
    if (Records::of(attribute).extras)
        NotificationWalk(signal).run(attribute);
}

void notify_value(LAttribute& attribute) {
    notify(attribute, &AttributeExtras::value_changed);
}

const AttributeValue& value_under(const LAttribute& attribute,
                                  const std::vector<std::string>& active) {
    const StateCache* const cache = active.empty() ? nullptr : Records::state_cache(attribute);
    if (cache == nullptr)
        return attribute.terminal_value();
    return Records::value_source(*cache, ActiveStates::of(active)).value();
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
    if (attribute_->extras)
        clear_dependents();
    if (attribute_->link) {
        Records::attach(*this, nullptr);
        if (attribute_->extras)
            attribute_->extras->link_changed.emit();
    }
}

void LAttribute::clear_dependents() {
    Dependents& dependents = attribute_->extras->dependents;
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
    if (attribute_->link || attribute_->value.get() != value)
        Records::set_value(*this, SharedValue(std::move(value)));
}

void Records::set_value(LAttribute& attribute, const SharedValue& value) {
    AttributeRecord& record = of(attribute);
    if (record.link)
        attribute.clear_link(false);
    else if (record.value.get() == value.get())
        return;
    record.value = value;
    note_value_change();
    notify_value(attribute);
}

bool LAttribute::set_link(std::string_view path) {
    if (path.empty())
        return false;
    Records::set_link(*this, SharedName(path));
    return true;
}

// The path is a copy: it may be that of the link that goes.
void Records::set_link(LAttribute& attribute, const SharedName& path) {
    const SharedName kept = path;
    attribute.clear_link(false);
    AttributeRecord& record = of(attribute);
    record.value = {};
    record.link = std::unique_ptr<AttributeLink>(new AttributeLink);
    record.link->path = kept;
    note_shape_change();
    notify(attribute, &AttributeExtras::link_changed);
    notify_value(attribute);
}

void LAttribute::clear_link(bool notify_dependents) {
    if (!attribute_->link)
        return;
    if (attribute_->link->target != nullptr) {
        attribute_->value = Records::of(terminal()).value;
        Records::attach(*this, nullptr);
    }
    attribute_->link.reset();
    note_shape_change();
    if (attribute_->extras)
        attribute_->extras->link_changed.emit();
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
    return attribute_->value.get();
}

const LAttribute& LAttribute::terminal() const {
    const LAttribute* end = this;
    while (const LAttribute* const target = end->link_target())
        end = target;
    return *end;
}

const AttributeValue& LAttribute::terminal_value() const {
    return terminal().value();
}

const double* LAttribute::number_value(const std::vector<std::string>& active_states) const {
    return std::get_if<double>(&value_under(*this, active_states));
}

const std::string* LAttribute::string_value(const std::vector<std::string>& active_states) const {
    return std::get_if<std::string>(&value_under(*this, active_states));
}

Signal& LAttribute::value_changed() {
    return attribute_->more().value_changed;
}

Signal& LAttribute::link_changed() {
    return attribute_->more().link_changed;
}

} // namespace Layers
