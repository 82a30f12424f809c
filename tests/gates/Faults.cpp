// A library for LD_PRELOAD that makes calls of a program fail. TARNWICK_FAULT is KIND:N: the call number N of
// this kind, counted from 1, fails, all others work. TARNWICK_FAULT_FOLDER is where files count: those
// elsewhere belong to libraries. TARNWICK_FAULT_COUNT names a file into which the number of calls of the kind
// goes when the program ends.
//
//   open    open, openat, fopen of a file of the folder: too many are open
//   read    read of one of them: the disk fails
//   write   write to one of them: the disk is full
//   sync    fsync of one of them: the disk fails
//   rename  rename to a name: the disk fails
//   memory  operator new, asked for by the program itself and not by a library: there is none
//   thread  pthread_create: there are too many
//   gl      SDL_GL_CreateContext: no driver
//   sound   alcOpenDevice, Mix_OpenAudio, Mix_OpenAudioDevice: no sound card

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

std::atomic<long> calls{0}; ///< Of the kind that fails.

/// Whether the present call is the one that fails; counts it.
bool fails(const char* kind) {
    const char* const fault = std::getenv("TARNWICK_FAULT");
    const std::size_t length = std::strlen(kind);
    if (fault == nullptr || std::strncmp(fault, kind, length) != 0 || fault[length] != ':') {
        return false;
    }
    return ++calls == std::atol(fault + length + 1);
}

/// Whether a path lies in the folder that counts; a relative one does.
bool counts(const char* path) {
    const char* const folder = std::getenv("TARNWICK_FAULT_FOLDER");
    return path[0] != '/' || (folder != nullptr && std::strncmp(path, folder, std::strlen(folder)) == 0);
}

bool counts(int descriptor) {
    char link[64];
    char path[PATH_MAX] = "";
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", descriptor);
    const ssize_t length = readlink(link, path, sizeof path - 1);
    return length > 0 && path[0] == '/' && counts(path);
}

template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool failsWith(const char* kind, int number) {
    if (!fails(kind)) {
        return false;
    }
    errno = number;
    return true;
}

/// Where the program itself lies in memory.
struct Range {
    std::uintptr_t begin = UINTPTR_MAX;
    std::uintptr_t end = 0;
};

Range programRange() {
    Range range;
    dl_iterate_phdr(
        [](dl_phdr_info* object, std::size_t, void* given) {
            auto& found = *static_cast<Range*>(given);
            for (int i = 0; i < object->dlpi_phnum; ++i) {
                if (object->dlpi_phdr[i].p_type == PT_LOAD) {
                    const std::uintptr_t begin = object->dlpi_addr + object->dlpi_phdr[i].p_vaddr;
                    found.begin = begin < found.begin ? begin : found.begin;
                    found.end = begin + object->dlpi_phdr[i].p_memsz > found.end
                                    ? begin + object->dlpi_phdr[i].p_memsz
                                    : found.end;
                }
            }
            return 1; // the first object is the program
        },
        &range);
    return range;
}

/// Whether code of the program itself, and not of a library, stands at this address.
bool ofProgram(const void* address) {
    static const Range program = programRange();
    const auto place = reinterpret_cast<std::uintptr_t>(address);
    return place >= program.begin && place < program.end;
}

struct Count {
    ~Count() {
        const char* const name = std::getenv("TARNWICK_FAULT_COUNT");
        const int file = name != nullptr ? creat(name, 0666) : -1;
        if (file >= 0) {
            dprintf(file, "%ld\n", calls.load());
            close(file);
        }
    }
} count;

} // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const auto mode =
        static_cast<mode_t>((flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, unsigned) : 0u);
    va_end(arguments);
    return counts(path) && failsWith("open", EMFILE)
               ? -1
               : next<int(const char*, int, ...)>("open")(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const auto mode =
        static_cast<mode_t>((flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, unsigned) : 0u);
    va_end(arguments);
    return counts(path) && failsWith("open", EMFILE)
               ? -1
               : next<int(const char*, int, ...)>("open64")(path, flags, mode);
}

FILE* fopen(const char* path, const char* mode) {
    return counts(path) && failsWith("open", EMFILE)
               ? nullptr
               : next<FILE*(const char*, const char*)>("fopen")(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
    return counts(path) && failsWith("open", EMFILE)
               ? nullptr
               : next<FILE*(const char*, const char*)>("fopen64")(path, mode);
}

ssize_t read(int descriptor, void* buffer, size_t size) {
    static auto* const real = next<ssize_t(int, void*, size_t)>("read");
    return counts(descriptor) && failsWith("read", EIO) ? -1 : real(descriptor, buffer, size);
}

ssize_t write(int descriptor, const void* buffer, size_t size) {
    static auto* const real = next<ssize_t(int, const void*, size_t)>("write");
    return counts(descriptor) && failsWith("write", ENOSPC) ? -1 : real(descriptor, buffer, size);
}

int fsync(int descriptor) {
    return failsWith("sync", EIO) ? -1 : next<int(int)>("fsync")(descriptor);
}

int rename(const char* from, const char* to) {
    return failsWith("rename", EIO) ? -1 : next<int(const char*, const char*)>("rename")(from, to);
}

int pthread_create(pthread_t* thread,
                   const pthread_attr_t* attributes,
                   void* (*start)(void*),
                   void* argument) {
    return fails("thread") ? EAGAIN
                           : next<int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*)>(
                                 "pthread_create")(thread, attributes, start, argument);
}

void* SDL_GL_CreateContext(void* window) {
    return fails("gl") ? nullptr : next<void*(void*)>("SDL_GL_CreateContext")(window);
}

void* alcOpenDevice(const char* name) {
    return fails("sound") ? nullptr : next<void*(const char*)>("alcOpenDevice")(name);
}

int Mix_OpenAudio(int rate, unsigned short format, int channels, int size) {
    return fails("sound")
               ? -1
               : next<int(int, unsigned short, int, int)>("Mix_OpenAudio")(rate, format, channels, size);
}

int Mix_OpenAudioDevice(
    int rate, unsigned short format, int channels, int size, const char* device, int changes) {
    return fails("sound") ? -1
                          : next<int(int, unsigned short, int, int, const char*, int)>("Mix_OpenAudioDevice")(
                                rate, format, channels, size, device, changes);
}

} // extern "C"

void* operator new(std::size_t size) {
    if (ofProgram(__builtin_return_address(0)) && fails("memory")) {
        throw std::bad_alloc();
    }
    void* const memory = std::malloc(size != 0 ? size : 1);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}
