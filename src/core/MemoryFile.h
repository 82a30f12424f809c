#pragma once

#include "core/Strings.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tarnwick {

/// A read-only file held whole in memory, with a cursor. A closed one has no bytes and `error` true.
class MemoryFile {
public:
    /// A file above this size does not open, bytes.
    static constexpr std::int64_t largestFile = 0x7FFFFFFF;

    /// What an offset of `seek` is relative to. These are not the numbers of the C library.
    static constexpr int fromCursor = 0;
    static constexpr int backFromEnd = 1;
    static constexpr int fromStart = 2;

    /// Closed.
    MemoryFile() = default;
    /// Opens at once; closed if that fails.
    explicit MemoryFile(std::string_view fileName);
    explicit MemoryFile(const char* fileName)
        : MemoryFile(slText(fileName)) {}
    /// Copies the bytes.
    /// Kept: the cursor keeps its value, so the copy's still points into the bytes of `other`. Nothing reads
    /// from a copy before it seeks; until then a read fails and the position means nothing.
    MemoryFile(const MemoryFile& other);
    MemoryFile& operator=(const MemoryFile& other);
    ~MemoryFile();

    /// Closes, then reads the whole file, found through `DataFiles`. False, and still closed, if the name is
    /// null or empty, or the file is empty, too large or unreadable.
    bool open(std::string_view fileName);
    bool open(const char* fileName) { return open(slText(fileName)); }
    void close();

    bool is_open() const { return start != nullptr; }
    /// Whether the cursor has reached the end.
    bool eof() const { return cursor == end; }
    /// Whether the file is closed, or a read or a seek went beyond its bounds since it was opened.
    bool error() const { return errorFlag; }
    /// Open, before the end, and without error.
    bool good() const { return is_open() && !eof() && !error(); }
    /// Bytes.
    std::int64_t size() const { return end - start; }
    /// Bytes from the start to the cursor.
    std::int64_t tell() const;
    /// The bytes from the cursor on, for reading in place.
    const std::uint8_t* getDataAhead() const { return cursor; }

    /// Copies the next `bytes` bytes and moves the cursor behind them. If there are fewer left it copies none
    /// of them, leaves the cursor and sets the error.
    void read(void* buffer, std::size_t bytes);

    /// Moves the cursor: by `offset`, to `offset` before the end, or to `offset` behind the start; any other
    /// `origin` leaves it. A cursor outside the file then goes to the nearer end of it and sets the error.
    void seek(std::int64_t offset, int origin);

private:
    std::uint8_t* start = nullptr; ///< Owned; null when closed.
    const std::uint8_t* cursor = nullptr;
    const std::uint8_t* end = nullptr; ///< One behind the last byte.
    bool errorFlag = true;

    void copyFrom(const MemoryFile& other);
};

} // namespace tarnwick
