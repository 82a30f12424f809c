#include "tools/launcher/ZipFile.h"

#include "tools/launcher/NameText.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t longestName = 255; ///< Bytes of one part of a path: the limit of file systems here.
constexpr std::size_t deepestEntry = 8;  ///< Parts of a path.
constexpr std::size_t blockSize = 65'536;

/// What the game reads.
constexpr std::array<std::string_view, 9> wantedKinds{".AVI", ".BMP",  ".CFG", ".JPG", ".OGG",
                                                      ".PNG", ".RIVL", ".TGA", ".WAV"};

using Archive = std::unique_ptr<zip_t, decltype(&zip_discard)>;
using PackedFile = std::unique_ptr<zip_file_t, decltype(&zip_fclose)>;

[[noreturn]] void refuse(const fs::path& archive, const std::string& entry, const std::string& reason) {
    throw std::runtime_error(archive.string() + (entry.empty() ? "" : ", '" + entry + "'") + ": " + reason);
}

Archive openArchive(const fs::path& archive) {
    int code = 0;
    Archive opened(zip_open(archive.c_str(), ZIP_RDONLY, &code), &zip_discard);
    if (!opened) {
        zip_error_t error;
        zip_error_init_with_code(&error, code);
        const std::string reason = zip_error_strerror(&error);
        zip_error_fini(&error);
        refuse(archive, "", reason);
    }
    return opened;
}

/// The parts of an entry's name, in which back-slashes separate, too. Empty if the name leads elsewhere than
/// down.
std::vector<std::string> partsOf(const std::string& name) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (start <= name.size()) {
        const std::size_t end = std::min(name.find_first_of("/\\", start), name.size());
        const std::string part = name.substr(start, end - start);
        const bool last = end == name.size();
        const bool hostile = part == ".." || (part.empty() && !last) || part.size() > longestName ||
                             (start == 0 && part.size() == 2 && part[1] == ':') ||
                             std::any_of(part.begin(), part.end(), [](unsigned char c) { return c < 0x20; });
        if (hostile) {
            return {};
        }
        if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
        start = end + 1;
    }
    return parts.size() > deepestEntry ? std::vector<std::string>() : parts;
}

/// Whether an entry is a link, a device or a pipe: neither file nor folder.
bool isSpecial(zip_t* archive, zip_uint64_t index) {
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    if (zip_file_get_external_attributes(archive, index, 0, &system, &attributes) != 0 ||
        system != ZIP_OPSYS_UNIX) {
        return false;
    }
    const mode_t kind = (attributes >> 16U) & S_IFMT;
    return kind != 0 && kind != S_IFREG && kind != S_IFDIR;
}

/// Whether the game could read a file of this name. Hidden ones, and the folders in which one system keeps
/// notes beside its files, are none.
bool isWanted(const std::vector<std::string>& parts) {
    if (std::any_of(parts.begin(), parts.end(),
                    [](const std::string& part) { return part.starts_with('.') || part == "__MACOSX"; })) {
        return false;
    }
    const std::string kind = upperName(fs::path(parts.back()).extension().string());
    return std::find(wantedKinds.begin(), wantedKinds.end(), kind) != wantedKinds.end();
}

/// A file that is written here for the first time.
class NewFile {
public:
    explicit NewFile(const fs::path& path)
        : file(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644)) {}
    ~NewFile() {
        if (file >= 0) {
            close(file);
        }
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool isOpen() const { return file >= 0; }
    bool write(const char* bytes, std::size_t count) {
        while (count > 0) {
            const ssize_t written = ::write(file, bytes, count);
            if (written <= 0) {
                return false;
            }
            bytes += written;
            count -= static_cast<std::size_t>(written);
        }
        return true;
    }

private:
    int file = -1;
};

/// One archive on its way into a folder.
class Unpacking {
public:
    Unpacking(const fs::path& archive, const fs::path& folder, const ZipLimits& limits)
        : archiveFile(archive)
        , target(folder)
        , allowed(limits)
        , opened(openArchive(archive)) {}

    void run() {
        const zip_int64_t count = zip_get_num_entries(opened.get(), 0);
        if (count > allowed.entries) {
            refuse(archiveFile, "", "more than " + std::to_string(allowed.entries) + " entries");
        }
        fs::create_directories(target);
        for (zip_int64_t index = 0; index < count; ++index) {
            entry(static_cast<zip_uint64_t>(index));
        }
    }

private:
    const fs::path& archiveFile;
    const fs::path& target;
    const ZipLimits& allowed;
    Archive opened;
    std::set<std::string> names; ///< In capitals: of the files written so far.
    std::uint64_t bytesInAll = 0;

    void entry(zip_uint64_t index) {
        zip_stat_t about;
        zip_stat_init(&about);
        if (zip_stat_index(opened.get(), index, 0, &about) != 0 || (about.valid & ZIP_STAT_NAME) == 0) {
            refuse(archiveFile, "entry " + std::to_string(index), zip_strerror(opened.get()));
        }
        const std::string name = about.name;
        const std::vector<std::string> parts = partsOf(name);
        if (parts.empty()) {
            refuse(archiveFile, name, "the name leads out of the archive");
        }
        if (isSpecial(opened.get(), index)) {
            refuse(archiveFile, name, "neither a file nor a folder");
        }
        if (name.ends_with('/') || name.ends_with('\\') || !isWanted(parts)) {
            return;
        }
        if ((about.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && about.encryption_method != ZIP_EM_NONE) {
            refuse(archiveFile, name, "it is encrypted");
        }
        fs::path file = target;
        std::string whole;
        for (const std::string& part : parts) {
            file /= part;
            whole += '/' + upperName(part);
        }
        if (!names.insert(whole).second) {
            refuse(archiveFile, name, "it is there twice");
        }
        fs::create_directories(file.parent_path());
        unpack(index, name, file);
    }

    void unpack(zip_uint64_t index, const std::string& name, const fs::path& path) {
        const PackedFile packed(zip_fopen_index(opened.get(), index, 0), &zip_fclose);
        if (!packed) {
            refuse(archiveFile, name, zip_strerror(opened.get()));
        }
        NewFile file(path);
        if (!file.isOpen()) {
            refuse(archiveFile, name, std::strerror(errno)); // NOLINT(concurrency-mt-unsafe): one thread
        }
        std::vector<char> block(blockSize);
        std::uint64_t bytes = 0;
        while (true) {
            const zip_int64_t read = zip_fread(packed.get(), block.data(), block.size());
            if (read < 0) {
                refuse(archiveFile, name, zip_file_strerror(packed.get()));
            }
            if (read == 0) {
                return;
            }
            bytes += static_cast<std::uint64_t>(read);
            bytesInAll += static_cast<std::uint64_t>(read);
            if (bytes > allowed.bytesOfFile || bytesInAll > allowed.bytesInAll) {
                refuse(
                    archiveFile, name,
                    "it unpacks to more than " +
                        std::to_string(
                            (bytes > allowed.bytesOfFile ? allowed.bytesOfFile : allowed.bytesInAll) >> 20U) +
                        " MiB");
            }
            if (!file.write(block.data(), static_cast<std::size_t>(read))) {
                refuse(archiveFile, name, std::strerror(errno)); // NOLINT(concurrency-mt-unsafe): one thread
            }
        }
    }
};

} // namespace

void unpackZip(const fs::path& archive, const fs::path& folder, const ZipLimits& limits) {
    Unpacking(archive, folder, limits).run();
}

} // namespace tarnwick
