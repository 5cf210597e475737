#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
#define LAYERS_PLAIN_ALLOCATION 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LAYERS_PLAIN_ALLOCATION 1
#endif
#endif

namespace Layers {

/// Memory for objects of one size, handed out from large blocks. A style tree has hundred thousands
/// of small objects that come and go together; this keeps them beside each other, in the order in
/// which they are made. Memory given back serves the next tree. Belongs to one thread.
template <std::size_t size, std::size_t alignment>
class Pool {
public:
    static void* take() {
        Pool& pool = instance();
        ++pool.in_use_;
        if (pool.free_ != nullptr)
            return std::exchange(pool.free_, pool.free_->next);
        if (pool.fresh_ == pool.blocks_.size() * cells_per_block)
            pool.blocks_.push_back(std::make_unique<Cell[]>(cells_per_block));
        const std::size_t cell = pool.fresh_++;
        return &pool.blocks_[cell / cells_per_block][cell % cells_per_block];
    }

    static void give_back(void* memory) {
        Pool& pool = instance();
        pool.free_ = new (memory) Free{pool.free_};
        if (--pool.in_use_ == 0) {
            pool.free_ = nullptr;
            pool.fresh_ = 0;
        }
    }

private:
    struct Free {
        Free* next;
    };
    union alignas(alignment) Cell {
        Free free;
        std::byte bytes[size];
    };
    static constexpr std::size_t cells_per_block = 64 * 1024 / sizeof(Cell);

    static Pool& instance() {
        static Pool& pool = *new Pool; // outlives every object, static ones included
        return pool;
    }

    std::vector<std::unique_ptr<Cell[]>> blocks_;
    std::size_t fresh_ = 0;  ///< cells from the first on that were ever handed out
    std::size_t in_use_ = 0; ///< with the last one all of them become fresh again
    Free* free_ = nullptr;
};

#ifdef LAYERS_PLAIN_ALLOCATION
constexpr bool USES_POOLS = false;
#else
constexpr bool USES_POOLS = true;
#endif

/// Base of classes whose objects live in a pool. Sanitizers see every object on its own instead.
template <class Object>
struct Pooled {
    static void* operator new(std::size_t size) {
        if constexpr (USES_POOLS)
            return Pool<sizeof(Object), alignof(Object)>::take();
        else
            return ::operator new(size);
    }
    static void operator delete(void* memory) {
        if constexpr (USES_POOLS)
            Pool<sizeof(Object), alignof(Object)>::give_back(memory);
        else
            ::operator delete(memory);
    }
};

} // namespace Layers
