#include "core/MemoryFile.h"

#include "core/DataFiles.h"
#include "core/LocationStack.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace tarnwick {

MemoryFile::MemoryFile(std::string_view fileName) {
    TARNWICK_LOCATION("MemoryFile::MemoryFile");
    open(fileName);
}

MemoryFile::MemoryFile(const MemoryFile& other) {
    TARNWICK_LOCATION("MemoryFile::MemoryFile");
    copyFrom(other);
}

MemoryFile& MemoryFile::operator=(const MemoryFile& other) {
    TARNWICK_LOCATION("MemoryFile::operator=");
    if (this != &other) {
        close();
        copyFrom(other);
    }
    return *this;
}

MemoryFile::~MemoryFile() {
    TARNWICK_LOCATION("MemoryFile::~MemoryFile");
    close();
}

bool MemoryFile::open(std::string_view fileName) {
    TARNWICK_LOCATION("MemoryFile::open");
    close();
    if (fileName.empty()) {
        return false;
    }
    std::ifstream file = DataFiles::open(std::string(fileName));
    if (!file.is_open() || !file.good()) {
        return false;
    }
    file.seekg(0, std::ios::end);
    const std::streamoff fileSize = file.tellg();
    if (!file.good() || fileSize <= 0 || fileSize > largestFile) {
        return false;
    }
    file.seekg(0, std::ios::beg);
    if (!file.good()) {
        return false;
    }
    std::unique_ptr<std::uint8_t[]> bytes(new (std::nothrow)
                                              std::uint8_t[static_cast<std::size_t>(fileSize)]);
    if (bytes == nullptr || !file.read(reinterpret_cast<char*>(bytes.get()), fileSize)) {
        return false;
    }
    start = bytes.release();
    cursor = start;
    end = start + fileSize;
    errorFlag = false;
    return true;
}

void MemoryFile::close() {
    TARNWICK_LOCATION("MemoryFile::close");
    delete[] start;
    start = nullptr;
    cursor = nullptr;
    end = nullptr;
    errorFlag = true;
}

std::int64_t MemoryFile::tell() const {
    TARNWICK_LOCATION("MemoryFile::tell");
    // As numbers: the cursor of a copy points into other bytes.
    return static_cast<std::int64_t>(reinterpret_cast<std::uintptr_t>(cursor) -
                                     reinterpret_cast<std::uintptr_t>(start));
}

void MemoryFile::read(void* buffer, std::size_t bytes) {
    TARNWICK_LOCATION("MemoryFile::read");
    const std::int64_t position = tell();
    const bool inside = position >= 0 && position <= size();
    if (!inside || bytes > static_cast<std::size_t>(size() - position)) {
        errorFlag = true;
        return;
    }
    if (bytes != 0) {
        std::memcpy(buffer, cursor, bytes);
        cursor += bytes;
    }
}

void MemoryFile::seek(std::int64_t offset, int origin) {
    TARNWICK_LOCATION("MemoryFile::seek");
    // Bounds that no position inside a file reaches, so that the sums below stay in range.
    constexpr std::int64_t farthest = 4 * largestFile;
    const std::int64_t distance = std::clamp(offset, -farthest, farthest);
    std::int64_t position = std::clamp(tell(), -farthest, farthest);
    switch (origin) {
    case fromCursor:
        position += distance;
        break;
    case backFromEnd:
        position = size() - distance;
        break;
    case fromStart:
        position = distance;
        break;
    default:
        break; // the clamp below still counts
    }
    const std::int64_t inside = std::clamp(position, std::int64_t{0}, size());
    if (inside != position) {
        errorFlag = true;
    }
    cursor = start + inside;
}

void MemoryFile::copyFrom(const MemoryFile& other) {
    TARNWICK_LOCATION("MemoryFile::copyFrom");
    cursor = other.cursor;
    errorFlag = other.errorFlag;
    if (other.is_open()) {
        start = new std::uint8_t[static_cast<std::size_t>(other.size())];
        std::copy(static_cast<const std::uint8_t*>(other.start), other.end, start);
        end = start + other.size();
    }
}

} // namespace tarnwick
