#pragma once

#include "layers/attribute_value.h"
#include "layers/pooled.h"

#include <cstdint>
#include <utility>

namespace Layers {

/// A value that any number of attributes hold together: what an expansion names a thousand times
/// and a hundred layers inherit is in memory once. Belongs to one thread.
class SharedValue {
public:
    SharedValue() = default; ///< none
    explicit SharedValue(AttributeValue value)
        : cell_(value.index() == 0 ? nullptr : new Cell{{}, std::move(value), 1}) {}
    SharedValue(const SharedValue& other)
        : cell_(other.cell_) {
        if (cell_ != nullptr)
            ++cell_->users;
    }
    SharedValue(SharedValue&& other) noexcept
        : cell_(std::exchange(other.cell_, nullptr)) {}
    SharedValue& operator=(SharedValue other) noexcept {
        std::swap(cell_, other.cell_);
        return *this;
    }
    ~SharedValue() {
        if (cell_ != nullptr && --cell_->users == 0)
            delete cell_;
    }

    /// Valid while any holder keeps it.
    const AttributeValue& get() const {
        static const AttributeValue none;
        return cell_ != nullptr ? cell_->value : none;
    }

private:
    struct Cell : Pooled<Cell> {
        AttributeValue value;
        std::uint32_t users;
    };
    Cell* cell_ = nullptr;
};

} // namespace Layers
