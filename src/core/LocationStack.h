#pragma once

#include <atomic>
#include <cstdint>

namespace tarnwick {

/// The names of the functions now running, newest last: the crash report prints the newest sixteen.
///
/// Every function outside the leaf helpers of `core/` opens with `TARNWICK_LOCATION("Class::function")`;
/// `scripts/check-locations` proves it. Push and pop are an indexed store and a count: no call, no test. The
/// count has 16 bits and the array 65536 entries, so very deep recursion wraps round inside the array.
///
/// The main thread and the one worker have an array each, which they choose with `use`. All other threads,
/// those of libraries, share a third, whose entries nobody reads: with arrays of their own they would need
/// stacks of more than 512 KiB, which the C library takes thread-local variables out of.
class LocationStack {
public:
    LocationStack() = delete;

    static constexpr std::uint32_t capacity = 65536;

    static void push(const char* name) {
        names[count] = name;
        ++count;
        std::atomic_signal_fence(std::memory_order_seq_cst); // no instruction: orders the store
    }
    static void pop() {
        std::atomic_signal_fence(std::memory_order_seq_cst);
        --count;
    }

    using Names = const char* [capacity];
    /// From here on the calling thread has this array.
    static void use(Names& array) { names = array; }

    static inline constinit Names mainNames = {};
    static inline constinit Names workerNames = {};
    static inline constinit Names otherNames = {};

    // Both at a fixed offset from the thread's pointer (the code ends in a program, never in a shared
    // library): else each push would be compiled as a call, which empties the registers of the code round it.

    /// The array of this thread. String literals, stored for the program's lifetime; not cleared on pop.
    [[gnu::tls_model("local-exec")]] static inline thread_local constinit const char** names = otherNames;
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
