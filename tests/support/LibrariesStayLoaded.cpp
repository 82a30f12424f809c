// For test programs with the leak detector. It looks for leaks when the program ends. A GL driver keeps
// memory for as long as the program lives and reaches it from its own variables; once SDL has unloaded it,
// nothing seems to hold that memory any more. So what was loaded stays.

#include <dlfcn.h>

int dlclose(void* /*library*/) noexcept {
    return 0;
}
