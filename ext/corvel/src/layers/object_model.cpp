#include "layers/object_model.h"

#include "layers/object_records.h"

#include <utility>

namespace Layers {

Signal::~Signal() {
    if (callbacks_)
        callbacks_->by_key.clear(); // stops an emission that destroys its own signal
}

Signal::Key Signal::connect(std::function<void()> callback) {
    if (!callbacks_)
        callbacks_ = std::make_shared<Callbacks>();
    const Key key = callbacks_->next_key++;
    callbacks_->by_key.emplace(key, std::move(callback));
    return key;
}

void Signal::disconnect(Key key) {
    if (callbacks_)
        callbacks_->by_key.erase(key);
}

void Signal::call_all() {
    const std::shared_ptr<Callbacks> callbacks = callbacks_;
    std::vector<Key> keys;
    keys.reserve(callbacks->by_key.size());
    for (const auto& [key, callback] : callbacks->by_key)
        keys.push_back(key);
    for (const Key key : keys) {
        const auto found = callbacks->by_key.find(key);
        if (found == callbacks->by_key.end())
            continue;
        const std::function<void()> callback = found->second; // may remove itself
        callback();
    }
}

LObject::LObject(std::string name)
    : LObject(std::move(name), Kind::Object) {}

LObject::LObject(std::string name, Kind kind)
    : object_(std::make_unique<Implementation>()) {
    object_->name_hash = hash_name(name);
    object_->name = std::move(name);
    object_->kind = kind;
}

// Frees a tree of any depth without recursion: each object dies childless.
LObject::~LObject() {
    object_->destroyed.emit();
    note_shape_change();
    object_->index.clear();
    std::vector<std::unique_ptr<LObject>> doomed = std::move(object_->children);
    object_->children.clear();
    while (!doomed.empty()) {
        const std::unique_ptr<LObject> object = std::move(doomed.back());
        doomed.pop_back();
        Implementation& record = *object->object_;
        record.parent = nullptr;
        record.index.clear();
        for (std::unique_ptr<LObject>& child : record.children)
            doomed.push_back(std::move(child));
        record.children.clear();
    }
}

const std::string& LObject::name() const {
    return object_->name;
}

void LObject::set_name(std::string name) {
    object_->name_hash = hash_name(name);
    object_->name = std::move(name);
    if (object_->parent != nullptr)
        Records::reindex(*object_->parent);
    note_shape_change();
}

LObject* LObject::parent() const {
    return object_->parent;
}

const std::vector<std::unique_ptr<LObject>>& LObject::children() const {
    return object_->children;
}

std::uint64_t LObject::version() const {
    return object_->version;
}

Signal& LObject::destroyed() {
    return object_->destroyed;
}

LLayer* LObject::as_layer() {
    return object_->kind == Kind::Layer ? static_cast<LLayer*>(this) : nullptr;
}

const LLayer* LObject::as_layer() const {
    return object_->kind == Kind::Layer ? static_cast<const LLayer*>(this) : nullptr;
}

LAttribute* LObject::as_attribute() {
    return object_->kind == Kind::Attribute ? static_cast<LAttribute*>(this) : nullptr;
}

const LAttribute* LObject::as_attribute() const {
    return object_->kind == Kind::Attribute ? static_cast<const LAttribute*>(this) : nullptr;
}

LLayer::LLayer(std::string name)
    : LObject(std::move(name), Kind::Layer)
    , layer_(std::make_unique<Implementation>()) {}

LLayer::~LLayer() = default;

LLayer* LLayer::base() const {
    return layer_->base;
}

const std::string& LLayer::base_path() const {
    return layer_->base_path;
}

LAttribute* LLayer::find_attribute(std::string_view name) const {
    return Records::find_attribute(*this, name);
}

LLayer* LLayer::find_layer(std::string_view path) const {
    const LLayer* layer = this;
    LLayer* found = nullptr;
    for (bool more = !path.empty(); more; layer = found) {
        const std::size_t slash = path.find('/');
        found = Records::find_layer(*layer, path.substr(0, slash));
        more = found != nullptr && slash != std::string_view::npos;
        if (more)
            path.remove_prefix(slash + 1);
    }
    return found;
}

std::uint64_t style_revision() {
    return tree_revisions.any;
}

} // namespace Layers
