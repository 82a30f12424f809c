#pragma once

#include <atomic>
#include <cstdint>

namespace tarnwick {

/// The names of the functions now running, newest last: the crash report prints the newest sixteen.
///
/// Every function outside the leaf helpers of `core/` opens with `TARNWICK_LOCATION("Class::function")`;
/// `scripts/check-locations` proves it. Push and pop are an indexed store and a count: no call, no test. The
/// count has 16 bits and the array 65536 entries, so very deep recursion wraps round inside the array.
class LocationStack {
public:
    LocationStack() = delete;

    static constexpr std::uint32_t capacity = 65536;

    static void push(const char* name) {
        names[count] = name; // a thread of its own has 512 KiB of this, which its stack size must hold
        ++count;
        std::atomic_signal_fence(std::memory_order_seq_cst); // no instruction: orders the store
    }
    static void pop() {
        std::atomic_signal_fence(std::memory_order_seq_cst);
        --count;
    }

    // Both at a fixed offset from the thread's pointer (the code ends in a program, never in a shared
    // library): else each push would be compiled as a call, which empties the registers of the code round it.

    /// String literals, stored for the program's lifetime; entries are not cleared on pop.
    [[gnu::tls_model("local-exec")]] static inline thread_local constinit const char* names[capacity] = {};
    /// Index of the next free entry.
    [[gnu::tls_model("local-exec")]] static inline thread_local constinit std::uint16_t count = 0;
};

/// One entry of the location stack, for the life of a function.
class LocationScope {
public:
    explicit LocationScope(const char* name) { LocationStack::push(name); }
    ~LocationScope() { LocationStack::pop(); }
    LocationScope(const LocationScope&) = delete;
    LocationScope& operator=(const LocationScope&) = delete;
};

} // namespace tarnwick

/// Records the enclosing function; its first line. The fixed variable name makes a second scope in one block
/// an error; "" name "" takes a literal only.
#define TARNWICK_LOCATION(name) const ::tarnwick::LocationScope locationScope("" name "")
