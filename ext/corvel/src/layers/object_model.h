#pragma once

#include "layers/attribute_value.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Layers {

class LAttribute;
class LLayer;
class SharedName;

/// A list of callbacks without arguments. A callback may remove itself or others while the signal
/// is emitted; one added during the emission is not called by it.
class Signal {
public:
    using Key = std::uint32_t;

    Signal() = default;
    ~Signal();
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    /// Adds a callback and returns the key that removes it.
    Key connect(std::function<void()> callback);
    void disconnect(Key key);
    void emit() {
        if (callbacks_)
            call_all();
    }

private:
    struct Callbacks {
        Key next_key = 0;
        std::map<Key, std::function<void()>> by_key;
        int emissions = 0; ///< under way
        bool orphaned = false;
    };
    void call_all();

    /// Null until the first callback. Owned; by the emission under way if the signal has gone.
    Callbacks* callbacks_ = nullptr;
};

/// A named object of the style tree. Parents own their children.
class LObject {
public:
    explicit LObject(const std::string& name);
    virtual ~LObject();
    LObject(const LObject&) = delete;
    LObject& operator=(const LObject&) = delete;

    const std::string& name() const;
    void set_name(const std::string& name);
    /// Null for the root of a tree.
    LObject* parent() const;
    /// Layers and attributes mixed, in order of insertion.
    const std::vector<std::unique_ptr<LObject>>& children() const;
    /// Raised by one with each child added.
    std::uint64_t version() const;
    /// Appends `child`, takes it over and returns it.
    LObject* add_child(std::unique_ptr<LObject> child);
    /// Emitted by the destructor.
    Signal& destroyed();

    /// This object as a layer or an attribute; null if it is none. Cheaper than a dynamic cast.
    LLayer* as_layer();
    const LLayer* as_layer() const;
    LAttribute* as_attribute();
    const LAttribute* as_attribute() const;

protected:
    enum class Kind : std::uint8_t { Object, Attribute, Layer };
    LObject(SharedName name, Kind kind);

private:
    friend struct Records;
    struct Implementation;
    std::unique_ptr<Implementation> object_;
    Kind kind_;
};

/// A named value, a literal or a link to another attribute, with variants for states. Its children
/// are the variants: attributes named by their sorted state names joined by ":".
class LAttribute final : public LObject {
public:
    explicit LAttribute(const std::string& name);
    ~LAttribute() override;
    static void* operator new(std::size_t size);
    static void operator delete(void* memory);

    /// Cuts any link, stores the value and notifies; an equal value does nothing.
    void set_value(AttributeValue value);
    /// Stores an unresolved link and clears the value. False for an empty path.
    bool set_link(std::string_view path);
    /// Drops the link; a resolved one leaves the value that it showed.
    void clear_link(bool notify);
    /// The link's path as written; empty without a link.
    const std::string& link_path() const;
    bool has_link() const;
    /// Null until resolved, and for an unresolved or cyclic link.
    LAttribute* link_target() const;
    bool cyclic() const;

    /// The attribute's own value, none while it has a link.
    const AttributeValue& value() const;
    /// The attribute at the end of the link chain.
    const LAttribute& terminal() const;
    /// Its value.
    const AttributeValue& terminal_value() const;

    /// The number or string in force under `active_states`; null when the value selected is of
    /// another kind. The pointer is valid until the tree changes.
    const double* number_value(const std::vector<std::string>& active_states) const;
    const std::string* string_value(const std::vector<std::string>& active_states) const;

    Signal& value_changed();
    Signal& link_changed();

private:
    friend struct Records;
    explicit LAttribute(SharedName name);
    void clear_dependents();
    struct Implementation;
    std::unique_ptr<Implementation> attribute_;
};

/// A layer: attributes and child layers under a name.
class LLayer final : public LObject {
public:
    explicit LLayer(const std::string& name);
    ~LLayer() override;
    static void* operator new(std::size_t size);
    static void operator delete(void* memory);

    /// The layer that this one inherits from; null if none or unresolved.
    LLayer* base() const;
    /// The reference behind "<<" as written; empty if none.
    const std::string& base_path() const;

    /// The layer's own attribute of exactly this name, inherited ones included once the tree is
    /// linked. Null if missing.
    LAttribute* find_attribute(std::string_view name) const;
    /// The layer reached from here by names joined by "/". Null if missing, and for an empty path.
    LLayer* find_layer(std::string_view path) const;

private:
    friend struct Records;
    explicit LLayer(SharedName name);
    struct Implementation;
    std::unique_ptr<Implementation> layer_;
    bool visiting = false;
    bool linked = false;
};

inline LLayer* LObject::as_layer() {
    return kind_ == Kind::Layer ? static_cast<LLayer*>(this) : nullptr;
}
inline const LLayer* LObject::as_layer() const {
    return kind_ == Kind::Layer ? static_cast<const LLayer*>(this) : nullptr;
}
inline LAttribute* LObject::as_attribute() {
    return kind_ == Kind::Attribute ? static_cast<LAttribute*>(this) : nullptr;
}
inline const LAttribute* LObject::as_attribute() const {
    return kind_ == Kind::Attribute ? static_cast<const LAttribute*>(this) : nullptr;
}

/// Counts the changes of any style tree in this process: a child added or removed, a value or a
/// link set. What was read from a tree is stale once the number has moved on.
std::uint64_t style_revision();

} // namespace Layers
