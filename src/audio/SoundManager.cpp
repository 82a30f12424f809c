#include "audio/SoundManager.h"

#include "audio/SoundBuffer.h"
#include "audio/SoundSystem.h"
#include "audio/WavFile.h"
#include "core/CommandRegistry.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "core/MemoryFile.h"
#include "core/Strings.h"

#include <new>
#include <utility>

namespace tarnwick {

namespace {

std::string upperCased(const std::string& name) {
    TARNWICK_LOCATION("SoundManager::upperCased");
    std::string result = name;
    slStringUpper(result);
    return result;
}

} // namespace

SoundManager::State& SoundManager::state = *new State;

constexpr CommandRow SoundManager::commands[] = {
    {"SoundList", conCmdSoundList},
    {"SoundMemory", conCmdSoundMemory},
};

SoundManager::SoundInternal::SoundInternal(std::unique_ptr<SoundBuffer> master)
    : buffer(std::move(master)) {
    TARNWICK_LOCATION("SoundManager::SoundInternal::SoundInternal");
}

SoundManager::SoundInternal::~SoundInternal() = default;

void SoundManager::initialise() {
    TARNWICK_LOCATION("SoundManager::initialise");
    state.sounds.clear();
    CommandRegistry::add(commands);
}

void SoundManager::shutdown() {
    TARNWICK_LOCATION("SoundManager::shutdown");
    state.sounds.clear();
    CommandRegistry::remove(commands);
}

const SoundManager::SoundInternal& SoundManager::loadSound(const std::string& name) {
    TARNWICK_LOCATION("SoundManager::loadSound");
    const std::string key = upperCased(name);
    if (const auto found = state.sounds.find(key); found != state.sounds.end()) {
        ++found->second.refCount;
        return found->second;
    }
    return state.sounds.try_emplace(key, createSoundBuffer(key)).first->second;
}

void SoundManager::freeSound(const std::string& name) {
    TARNWICK_LOCATION("SoundManager::freeSound");
    const auto found = state.sounds.find(upperCased(name));
    if (found == state.sounds.end()) {
        return;
    }
    --found->second.refCount;
    if (found->second.refCount == 0) {
        state.sounds.erase(found);
    }
}

std::unique_ptr<SoundBuffer> SoundManager::createSoundBuffer(const std::string& name) {
    TARNWICK_LOCATION("SoundManager::createSoundBuffer");
    if (SoundSystem::session() == 0) {
        return nullptr;
    }
    const MemoryFile file(name);
    WavFile wav;
    if (!file.is_open() || !WavFile::read(file.getDataAhead(), static_cast<std::size_t>(file.size()), wav)) {
        return nullptr;
    }
    try {
        return SoundBuffer::create(wav);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void SoundManager::renewSamples() {
    TARNWICK_LOCATION("SoundManager::renewSamples");
    for (auto& [name, entry] : state.sounds) {
        if (const auto renewed = createSoundBuffer(name); entry.buffer != nullptr && renewed != nullptr) {
            entry.buffer->takeSamples(*renewed);
        }
    }
}

void SoundManager::getSoundList(std::list<std::string>& list) {
    TARNWICK_LOCATION("SoundManager::getSoundList");
    for (const auto& [name, entry] : state.sounds) {
        list.push_back(name + (entry.buffer == nullptr ? " (loading failed)" : ""));
    }
}

void SoundManager::conCmdSoundList() {
    TARNWICK_LOCATION("SoundManager::conCmdSoundList");
    Log::printTitle("Sounds in use");
    std::list<std::string> list;
    getSoundList(list);
    for (const std::string& line : list) {
        Log::print("\n");
        Log::print(line);
    }
}

void SoundManager::conCmdSoundMemory() {
    TARNWICK_LOCATION("SoundManager::conCmdSoundMemory");
    std::uint32_t bytes = 0;
    for (const auto& [name, entry] : state.sounds) {
        bytes += entry.buffer != nullptr ? entry.buffer->size() : 0;
    }
    Log::printTitle("Sound memory used");
    Log::print(bytes);
    Log::print(" bytes.");
}

} // namespace tarnwick
