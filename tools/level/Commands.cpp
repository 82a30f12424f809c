#include "tools/level/Commands.h"

#include "core/DataFiles.h"
#include "level/LevelFile.h"
#include "tools/level/LevelCompiler.h"
#include "tools/level/LevelDecompiler.h"
#include "tools/level/LevelInfo.h"
#include "tools/level/LevelValidator.h"
#include "tools/level/LevelWriter.h"
#include "tools/level/TiledMap.h"
#include "tools/level/ToolError.h"
#include "tools/support/DataFolder.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <system_error>
#include <vector>

namespace tarnwick {

namespace {

constexpr int statusFound = 1; ///< `validate` has findings.
constexpr int statusBad = 2;   ///< A bad argument or file.

constexpr std::uintmax_t largestMap = 64U
                                      << 20U; ///< Bytes of a Tiled map; a level of full size has far fewer.

/// Goes on only with a file that can be read to an end; gives its size in bytes.
std::uintmax_t testFile(const std::string& name) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(name, error);
    if (!std::filesystem::exists(status)) {
        throw ToolError("no such file");
    }
    if (!std::filesystem::is_regular_file(status)) {
        throw ToolError(std::filesystem::is_directory(status) ? "is a folder" : "is not a file");
    }
    const std::uintmax_t size = std::filesystem::file_size(name, error);
    if (error) {
        throw ToolError("its size cannot be read");
    }
    return size;
}

std::string readMapText(const std::string& name) {
    const std::uintmax_t size = testFile(name);
    if (size > largestMap) {
        throw ToolError("is larger than 64 MiB, too large for a map");
    }
    std::ifstream file(name, std::ios::binary);
    std::string text(static_cast<std::size_t>(size), '\0');
    if (!file || !file.read(text.data(), static_cast<std::streamsize>(text.size()))) {
        throw ToolError("cannot be read");
    }
    return text;
}

void writeFile(const std::string& name, const std::string& bytes) {
    std::ofstream file(name, std::ios::binary | std::ios::trunc);
    if (!file) {
        throw ToolError("cannot be opened for writing");
    }
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        throw ToolError("cannot be written to its end");
    }
}

/// Keeps the number of a version that the game does not read.
class VersionReader final : public LevelFile::Reader {
public:
    void wrongVersion(std::uint32_t found) override { version = found; }

    std::uint32_t version = LevelFile::version;
};

/// The records of a level file; `trailing` becomes the number of bytes after them.
LevelFile readLevel(const std::string& name, std::uintmax_t& trailing) {
    const std::uintmax_t size = testFile(name);
    if (size == 0) {
        throw ToolError("is empty");
    }
    std::ifstream file(name, std::ios::binary);
    if (!file) {
        throw ToolError("cannot be read");
    }
    LevelFile level;
    VersionReader reader;
    if (const char* const failure = LevelFile::read(file, level, &reader)) {
        std::string reason = failure;
        reason.erase(0, reason.find_first_not_of('\n')); // some begin a console line of their own
        if (reader.version != LevelFile::version) {
            reason += " It is " + std::to_string(reader.version) + ", the game reads " +
                      std::to_string(LevelFile::version) + ".";
        }
        throw ToolError(reason);
    }
    trailing = size - static_cast<std::uintmax_t>(file.tellg());
    return level;
}

/// What the command line asked for.
struct Arguments {
    std::string input;
    std::string output;
    std::string data;
    bool noPictures = false;
};

/// Runs `work` on a file; what goes wrong becomes a line with the file's name.
template <typename Work>
bool withFile(const std::string& name, std::ostream& errors, const Work& work) {
    try {
        work();
        return true;
    } catch (const ToolError& error) {
        errors << "tarnwick-level: " << name << ": " << error.what() << '\n';
        return false;
    }
}

int runCompile(const Arguments& arguments, std::ostream& errors) {
    std::string bytes;
    std::vector<std::string> warnings;
    const bool compiled = withFile(arguments.input, errors, [&] {
        std::error_code error; // of a file that is not there, and so not the same
        if (std::filesystem::equivalent(arguments.input, arguments.output, error)) {
            throw ToolError("is the map and the level file at once");
        }
        bytes = writeLevel(compileLevel(TiledMap::read(readMapText(arguments.input)), warnings));
    });
    if (!compiled) {
        return statusBad;
    }
    for (const std::string& warning : warnings) {
        errors << "tarnwick-level: " << arguments.input << ": warning: " << warning << '\n';
    }
    const bool written = withFile(arguments.output, errors, [&] { writeFile(arguments.output, bytes); });
    return written ? 0 : statusBad;
}

int runInfo(const Arguments& arguments, std::ostream& output, std::ostream& errors) {
    const bool read = withFile(arguments.input, errors, [&] {
        std::uintmax_t trailing = 0;
        const LevelFile level = readLevel(arguments.input, trailing);
        printLevelInfo(output, level);
    });
    return read ? 0 : statusBad;
}

/// The working folder is another one while this lives: names in a level start in the data folder.
class WorkingFolder {
public:
    explicit WorkingFolder(const std::filesystem::path& folder)
        : before(std::filesystem::current_path()) {
        std::error_code error;
        std::filesystem::current_path(folder, error);
        if (error) {
            throw ToolError("is no folder to look for pictures in");
        }
    }
    ~WorkingFolder() {
        std::error_code ignored; // the old folder may have gone meanwhile; nothing is left to do then
        std::filesystem::current_path(before, ignored);
    }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;

private:
    std::filesystem::path before;
};

/// Width and height as they stand in the head of a TGA file; none for a file that is not there or too short.
std::optional<std::pair<int, int>> tgaSize(const std::string& name) {
    constexpr std::size_t headSize = 18;
    constexpr std::size_t widthAt = 12;
    constexpr std::size_t heightAt = 14;
    std::ifstream file = DataFiles::open(name);
    unsigned char head[headSize] = {};
    if (!file.is_open() || !file.read(reinterpret_cast<char*>(head), headSize)) {
        return std::nullopt;
    }
    const auto sizeAt = [&](std::size_t place) { return head[place] + 256 * head[place + 1]; };
    return std::pair(sizeAt(widthAt), sizeAt(heightAt));
}

using ExistingFiles = std::map<std::string, std::optional<std::pair<int, int>>>;

/// Which of the files that a level names can be found in a data folder, with the sizes of its pictures.
ExistingFiles existingFiles(const LevelFile& level, const std::filesystem::path& dataFolder) {
    const WorkingFolder inside(dataFolder);
    std::set<std::string> tested;
    ExistingFiles existing;
    const auto test = [&](const std::string& name) {
        if (!name.empty() && tested.insert(name).second && DataFiles::open(name).is_open()) {
            existing.emplace(name, tgaSize(name));
        }
    };
    for (const LevelFile::PolygonRecord& record : level.polygons) {
        test(record.textureName);
    }
    for (const LevelFile::ObjectRecord& record : level.objects) {
        test(record.textureName);
    }
    for (const LevelFile::SoundSourceRecord& record : level.soundSources) {
        test(record.soundName);
    }
    for (const LevelFile::EmitterRecord& record : level.emitters) {
        test(record.settingsName);
    }
    return existing;
}

int runDecompile(const Arguments& arguments, std::ostream& errors) {
    const std::filesystem::path folder =
        arguments.data.empty() ? dataFolderBesideProgram() : std::filesystem::path(arguments.data);
    std::string text;
    const bool read = withFile(arguments.input, errors, [&] {
        std::uintmax_t trailing = 0;
        std::error_code error; // of a file that is not there, and so not the same
        if (std::filesystem::equivalent(arguments.input, arguments.output, error)) {
            throw ToolError("is the level file and the map at once");
        }
        const LevelFile level = readLevel(arguments.input, trailing);
        const std::filesystem::path mapFolder = std::filesystem::absolute(arguments.output).parent_path();
        std::optional<WorkingFolder> inside;
        std::string pictures;
        if (!folder.empty()) {
            pictures = std::filesystem::absolute(folder).lexically_relative(mapFolder).generic_string() + "/";
            inside.emplace(folder);
        }
        text = decompileLevel(level, pictures, folder.empty() ? PictureSize() : PictureSize(tgaSize));
    });
    if (!read) {
        return statusBad;
    }
    const bool written = withFile(arguments.output, errors, [&] { writeFile(arguments.output, text); });
    return written ? 0 : statusBad;
}

/// Looks for mistakes in a level that has been read; prints the findings and gives their number.
std::size_t validate(const LevelFile& level,
                     std::uintmax_t trailing,
                     const std::optional<ExistingFiles>& files,
                     std::ostream& output) {
    FileTest fileExists;
    PictureSize sizeOf;
    if (files) {
        fileExists = [&](const std::string& name) { return files->contains(name); };
        sizeOf = [&](const std::string& name) -> std::optional<std::pair<int, int>> {
            const auto found = files->find(name);
            return found == files->end() ? std::nullopt : found->second;
        };
    }
    std::vector<std::string> findings = validateLevel(level, fileExists, sizeOf);
    if (trailing > 0) {
        findings.push_back("file: " + std::to_string(trailing) +
                           " bytes follow the level, which the game does not read");
    }
    for (const std::string& finding : findings) {
        output << finding << '\n';
    }
    return findings.size();
}

int runValidate(const Arguments& arguments, std::ostream& output, std::ostream& errors) {
    LevelFile level;
    std::uintmax_t trailing = 0;
    if (!withFile(arguments.input, errors, [&] { level = readLevel(arguments.input, trailing); })) {
        return statusBad;
    }
    std::optional<ExistingFiles> files;
    if (!arguments.noPictures) {
        const std::filesystem::path folder =
            arguments.data.empty() ? dataFolderBesideProgram() : std::filesystem::path(arguments.data);
        if (folder.empty()) {
            errors << "tarnwick-level: no data folder beside the program: name one with --data\n";
            return statusBad;
        }
        if (!withFile(folder.string(), errors, [&] { files = existingFiles(level, folder); })) {
            return statusBad;
        }
    }
    return validate(level, trailing, files, output) == 0 ? 0 : statusFound;
}

/// The one line of an error of the command line.
int refuseArguments(const CLI::ParseError& error, std::ostream& errors) {
    std::string reason = error.what();
    std::replace(reason.begin(), reason.end(), '\n', ' ');
    errors << "tarnwick-level: " << reason << " (--help tells more)\n";
    return statusBad;
}

} // namespace

int runLevelTool(int argumentCount,
                 const char* const* arguments,
                 std::ostream& output,
                 std::ostream& errors) {
    CLI::App tool("Makes, describes and checks level files.", "tarnwick-level");
    tool.set_version_flag("--version", "tarnwick-level " TARNWICK_VERSION);
    tool.require_subcommand(1);
    Arguments given;

    CLI::App* const compile = tool.add_subcommand("compile", "Make a level file out of a Tiled map in JSON.");
    compile->add_option("IN.tmj", given.input, "the map")->required();
    compile->add_option("OUT.rivl", given.output, "the level file")->required();
    CLI::App* const decompile =
        tool.add_subcommand("decompile", "Turn a level file back into a Tiled map in JSON.");
    decompile->add_option("IN.rivl", given.input, "the level file")->required();
    decompile->add_option("OUT.tmj", given.output, "the map")->required();
    decompile->add_option("--data", given.data,
                          "the folder that holds gfx, for the sizes of pictures; by default the one beside "
                          "the build");
    CLI::App* const info = tool.add_subcommand("info", "Tell what a level file holds.");
    info->add_option("FILE.rivl", given.input, "the level file")->required();
    CLI::App* const validate =
        tool.add_subcommand("validate", "Look for mistakes; exit status 1 when there are any.");
    validate->add_option("FILE.rivl", given.input, "the level file")->required();
    validate->add_option("--data", given.data,
                         "the folder that holds gfx, snd and fx; by default the one beside the build");
    validate->add_flag("--no-pictures", given.noPictures,
                       "do not look whether pictures, sounds and settings exist");

    try {
        tool.parse(argumentCount, arguments);
    } catch (const CLI::Success& success) { // --help, --version
        tool.exit(success, output, errors);
        return 0;
    } catch (const CLI::ParseError& error) {
        return refuseArguments(error, errors);
    }
    if (compile->parsed()) {
        return runCompile(given, errors);
    }
    if (decompile->parsed()) {
        return runDecompile(given, errors);
    }
    return info->parsed() ? runInfo(given, output, errors) : runValidate(given, output, errors);
}

} // namespace tarnwick
