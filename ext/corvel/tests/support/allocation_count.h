#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

// Counts what the program takes from the heap. To be included by one source of a test program.

namespace TestSupport {

inline std::size_t bytes_taken = 0;

/// The bytes taken from the heap while `work` ran, those given back included.
template <class Work>
std::size_t bytes_taken_by(Work work) {
    const std::size_t before = bytes_taken;
    work();
    return bytes_taken - before;
}

} // namespace TestSupport

// Not inlined: a compiler that sees into one of a pair only takes them for mismatched.
[[gnu::noinline]] void* operator new(std::size_t size) {
    TestSupport::bytes_taken += size;
    if (void* const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    TestSupport::bytes_taken += size;
    return std::malloc(size);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
