#pragma once

#include <cstdint>
#include <filesystem>

namespace tarnwick {

/// What an archive may ask for at most.
struct ZipLimits {
    std::int64_t entries = 4096;
    std::uint64_t bytesOfFile = 64ULL << 20U; ///< Of one file, unpacked.
    std::uint64_t bytesInAll = 256ULL << 20U; ///< Of all files, unpacked.
};

/// Unpacks the levels, pictures, sounds and settings of the zip archive `archive` into `folder`, which must
/// be empty or missing; files of other kinds are left out.
///
/// Archives come from strangers. Throws `std::runtime_error`, with the archive's name, the entry's and the
/// reason, for an archive that cannot be read, a damaged or encrypted entry, a name that leads out of the
/// folder, a link or device, two entries of one name, and for more entries or bytes than `limits` allow.
/// Bytes are counted as they are unpacked, whatever the archive says of itself. Nothing is ever written
/// outside `folder`; what was written before the failure stays there.
void unpackZip(const std::filesystem::path& archive,
               const std::filesystem::path& folder,
               const ZipLimits& limits = {});

} // namespace tarnwick
