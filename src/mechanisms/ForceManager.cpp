#include "mechanisms/ForceManager.h"

#include "console/GLConsole.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "core/Strings.h"

#include <algorithm>
#include <iterator>

namespace tarnwick {

namespace {

constexpr std::size_t createArguments = 6; ///< Of `ForceCreate`.

} // namespace

std::list<Force> ForceManager::forces;
ForceManager::State ForceManager::state;

void ForceManager::initialise() {
    TARNWICK_LOCATION("ForceManager::initialise");
    shutdown();
    state.forceDraw = false;
    Log::print("\nInitialising force manager.");
    GLConsole::addCommand("ForceCount", conCmdForceCount);
    GLConsole::addCommand("ForceDraw", conCmdForceDraw);
    GLConsole::addCommand("ForceCreate", conCmdForceCreate);
}

void ForceManager::shutdown() {
    TARNWICK_LOCATION("ForceManager::shutdown");
    Log::print("\nShutting down force manager.");
    forces.clear();
    GLConsole::removeCommand("ForceCount");
    GLConsole::removeCommand("ForceDraw");
    GLConsole::removeCommand("ForceCreate");
}

void ForceManager::addForce(std::int32_t id, float x, float y, float dirX, float dirY, float strength) {
    TARNWICK_LOCATION("ForceManager::addForce");
    Vector2 direction{dirX, dirY};
    normaliseVector(direction);
    forces.push_back({.id = id, .position = {x, y}, .direction = direction, .strength = strength});
}

std::int32_t ForceManager::conCmdForceCount() {
    TARNWICK_LOCATION("ForceManager::conCmdForceCount");
    return static_cast<std::int32_t>(forces.size());
}

bool ForceManager::conCmdForceDraw(bool value, bool set) {
    TARNWICK_LOCATION("ForceManager::conCmdForceDraw");
    if (set) {
        state.forceDraw = value;
    }
    return state.forceDraw;
}

void ForceManager::conCmdForceCreate(const std::string& arguments) {
    TARNWICK_LOCATION("ForceManager::conCmdForceCreate");
    std::list<std::string> words;
    slSeparateArgs(arguments, words);
    const auto isNumeric = [](const std::string& word) { return slStringIsNumeric(word); };
    if (words.size() != createArguments || !slStringIsInteger(words.front()) ||
        !std::all_of(std::next(words.begin()), words.end(), isNumeric)) {
        Log::print("\nUSAGE: MoveForceCreate "); // Kept: the usage calls the command so
        Log::print(" < id : integer >");
        Log::print(" < x : number >");
        Log::print(" < y : number >");
        Log::print(" < dir_x : number >");
        Log::print(" < dir_y : number >");
        Log::print(" < strenght : number >");
        return;
    }
    const std::int32_t id = slStringToInt(words.front());
    float numbers[createArguments - 1] = {}; // x, y, direction, strength
    std::transform(std::next(words.begin()), words.end(), numbers,
                   [](const std::string& word) { return slStringToFloat(word); });
    addForce(id, numbers[0], numbers[1], numbers[2], numbers[3], numbers[4]);
}

} // namespace tarnwick
