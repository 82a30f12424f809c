// The fuzzer's program: TARNWICK_FUZZ_TARGET names the target, TARNWICK_DATA the data folder; all arguments
// are those of clang's fuzzer, which brings the main function.

#include "fuzz/FuzzTarget.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

const tarnwick::FuzzTarget* target = nullptr;

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argumentCount, char*** arguments);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

extern "C" int LLVMFuzzerInitialize(int* /*argumentCount*/, char*** /*arguments*/) {
    const char* const name = std::getenv("TARNWICK_FUZZ_TARGET");
    const char* const data = std::getenv("TARNWICK_DATA");
    target = tarnwick::findFuzzTarget(name != nullptr ? name : "");
    if (target == nullptr || data == nullptr) {
        std::fputs("TARNWICK_FUZZ_TARGET names one of these, TARNWICK_DATA the data folder:\n", stderr);
        for (const tarnwick::FuzzTarget& one : tarnwick::fuzzTargets()) {
            std::fprintf(stderr, "%s %zu\n", one.name.data(), one.longest);
        }
        std::exit(2);
    }
    tarnwick::enterFuzzFolder(data);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    if (size <= target->longest) {
        target->run({reinterpret_cast<const char*>(bytes), size});
    }
    return 0;
}
