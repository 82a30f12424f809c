#include "support/DataFolder.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace tarnwick {

DataFolder::DataFolder()
    : before(std::filesystem::current_path()) {
    std::string name = (std::filesystem::temp_directory_path() / "tarnwick-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder " + name);
    }
    folder = name;
    std::filesystem::current_path(folder);
}

DataFolder::~DataFolder() {
    std::error_code ignored; // a folder left behind is no failure of the test
    std::filesystem::current_path(before, ignored);
    std::filesystem::remove_all(folder, ignored);
}

void DataFolder::write(const std::string& name, const std::string& content) const {
    const std::filesystem::path file = folder / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << content;
}

} // namespace tarnwick
