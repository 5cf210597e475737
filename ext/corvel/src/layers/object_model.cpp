#include "layers/object_model.h"

#include "layers/object_records.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Layers {

Signal::~Signal() {
    if (callbacks_ == nullptr)
        return;
    if (callbacks_->emissions == 0) {
        delete callbacks_;
    } else {
        callbacks_->by_key.clear(); // a callback destroys the signal that calls it
        callbacks_->orphaned = true;
    }
}

Signal::Key Signal::connect(std::function<void()> callback) {
    if (callbacks_ == nullptr)
        callbacks_ = new Callbacks;
    const Key key = callbacks_->next_key++;
    callbacks_->by_key.emplace(key, std::move(callback));
    return key;
}

void Signal::disconnect(Key key) {
    if (callbacks_ != nullptr)
        callbacks_->by_key.erase(key);
}

void Signal::call_all() {
    struct Emission {
        explicit Emission(Callbacks& c)
            : callbacks(c) {
            ++callbacks.emissions;
        }
        ~Emission() {
            if (--callbacks.emissions == 0 && callbacks.orphaned)
                delete &callbacks;
        }
        Callbacks& callbacks;
    };
    const Emission emission(*callbacks_);
    std::map<Key, std::function<void()>>& by_key = emission.callbacks.by_key;
    std::vector<Key> keys;
    keys.reserve(by_key.size());
    for (const auto& [key, callback] : by_key)
        keys.push_back(key);
    for (const Key key : keys) {
        const auto found = by_key.find(key);
        if (found == by_key.end())
            continue;
        const std::function<void()> callback = found->second; // may remove itself
        callback();
    }
}

LObject::LObject(const std::string& name)
    : LObject(SharedName(name), Kind::Object) {}

LObject::LObject(SharedName name, Kind kind)
    : object_(new Implementation)
    , kind_(kind) {
    object_->name = std::move(name);
}

// Frees a tree of any depth without recursion: each object dies childless.
LObject::~LObject() {
    object_->destroyed.emit();
    note_shape_change();
    if (!object_->children)
        return;
    std::vector<std::unique_ptr<LObject>> doomed = std::move(object_->children->objects);
    object_->children.reset();
    while (!doomed.empty()) {
        const std::unique_ptr<LObject> object = std::move(doomed.back());
        doomed.pop_back();
        Implementation& record = *object->object_;
        record.parent = nullptr;
        const std::unique_ptr<ChildList> children = std::move(record.children);
        if (children)
            std::move(children->objects.begin(), children->objects.end(),
                      std::back_inserter(doomed));
    }
}

const std::string& LObject::name() const {
    return object_->name.text();
}

void LObject::set_name(const std::string& name) {
    object_->name = SharedName(name);
    tree_revisions.late_variants |= as_attribute() != nullptr; // perhaps of a base
    if (object_->parent != nullptr)
        Records::reindex(*object_->parent);
    note_shape_change();
}

LObject* LObject::parent() const {
    return object_->parent;
}

const std::vector<std::unique_ptr<LObject>>& LObject::children() const {
    static const std::vector<std::unique_ptr<LObject>> none;
    return object_->children ? object_->children->objects : none;
}

std::uint64_t LObject::version() const {
    return object_->version;
}

Signal& LObject::destroyed() {
    return object_->destroyed;
}

LLayer::LLayer(const std::string& name)
    : LLayer(SharedName(name)) {}

LLayer::LLayer(SharedName name)
    : LObject(std::move(name), Kind::Layer)
    , layer_(new Implementation) {}

LLayer::~LLayer() = default;

void* LLayer::operator new(std::size_t) {
    return Pooled<LLayer>::operator new(sizeof(LLayer));
}

void LLayer::operator delete(void* memory) {
    Pooled<LLayer>::operator delete(memory);
}

LLayer* LLayer::base() const {
    return layer_->base;
}

const std::string& LLayer::base_path() const {
    return layer_->base_path.text();
}

LAttribute* LLayer::find_attribute(std::string_view name) const {
    return Records::find_attribute(*this, name, hash_name(name));
}

LLayer* LLayer::find_layer(std::string_view path) const {
    const LLayer* layer = this;
    LLayer* found = nullptr;
    for (bool more = !path.empty(); more; layer = found) {
        const std::size_t slash = path.find('/');
        const std::string_view name = path.substr(0, slash);
        found = Records::find_layer(*layer, name, hash_name(name));
        more = found != nullptr && slash != std::string_view::npos;
        if (more)
            path.remove_prefix(slash + 1);
    }
    return found;
}

std::unique_ptr<LAttribute> Records::make_attribute(SharedName name) {
    return std::unique_ptr<LAttribute>(new LAttribute(std::move(name)));
}

std::unique_ptr<LLayer> Records::make_layer(SharedName name) {
    return std::unique_ptr<LLayer>(new LLayer(std::move(name)));
}

std::uint64_t style_revision() {
    return tree_revisions.any;
}

} // namespace Layers
