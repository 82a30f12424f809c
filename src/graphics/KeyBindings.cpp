#include "graphics/KeyBindings.h"

#include "core/ConfigFile.h"
#include "core/DataFiles.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"

#include <algorithm>
#include <string_view>

namespace tarnwick {

namespace {

constexpr const char* fileName = "cfg\\keys.cfg";

struct Row {
    const char* key;        ///< In the file.
    const char* told;       ///< Before the names of its keys; null: not worth a word.
    std::uint32_t plain;    ///< Key number of the plain game; 0 for none.
    const char* plainNames; ///< The same for a reader.
};
constexpr std::array<Row, 8> rows = {{
    {"turnLeft", "turn", key::left, "Left"},
    {"turnRight", "and", key::right, "Right"},
    {"pause", "pause", key::pause, "Pause, P"},
    {"menu", "menu", key::escape, "Escape"},
    {"console", nullptr, key::console, "`"},
    {"restart", "restart", 0, ""},
    {"screenshot", "picture", 0, ""},
    {"fullscreen", "full screen", 0, ""},
}};

/// Whether a press means the letter P, which pauses the plain game whatever key types it.
bool typesP(std::uint32_t key) {
    TARNWICK_LOCATION("KeyBindings::typesP");
    const std::uint8_t character = GLWindow::keyboardKeyToAscii(key);
    return character == 'P' || character == 'p';
}

/// The names of a value: the whole of it, if that is a name, else what stands between its commas.
std::vector<std::string> namesIn(std::string value) {
    TARNWICK_LOCATION("KeyBindings::namesIn");
    std::ranges::replace(value, '_', ' ');
    if (KeyMap::numberOf(value) != 0) { // such as the comma itself
        return {value};
    }
    std::vector<std::string> names;
    for (std::size_t start = 0; start <= value.size();) {
        const std::size_t end = std::min(value.find(',', start), value.size());
        names.push_back(value.substr(start, end - start));
        start = end + 1;
    }
    return names;
}

} // namespace

KeyBindings::State KeyBindings::state;

void KeyBindings::initialise() {
    TARNWICK_LOCATION("KeyBindings::initialise");
    static_assert(rows.size() == keyCount);
    state = {};
    if (!DataFiles::open(fileName).is_open()) { // asked first: the reader would print that there is none
        return;
    }
    state.fileRead = true;
    const ConfigFile config(fileName);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::string value = config.getVarAsString(rows[i].key);
        if (value.empty()) {
            continue;
        }
        Binding binding;
        binding.chosen = true;
        for (const std::string& name : namesIn(value)) {
            const std::uint32_t number = KeyMap::numberOf(name);
            if (number == 0) {
                Log::print("\n" + std::string(fileName) + ": no key is called '" + name + "'; " +
                           rows[i].key + " keeps the keys it had");
                binding = {};
                break;
            }
            binding.numbers.push_back(number);
            binding.names += (binding.names.empty() ? "" : ", ") + name;
        }
        state.bindings[i] = binding;
    }
}

bool KeyBindings::is(GameKey does, std::uint32_t key) {
    TARNWICK_LOCATION("KeyBindings::is");
    const Binding& binding = bindingOf(does);
    if (binding.chosen) {
        return std::ranges::find(binding.numbers, key) != binding.numbers.end();
    }
    const std::uint32_t plain = rows[static_cast<std::size_t>(does)].plain;
    return (plain != 0 && key == plain) || (does == GameKey::pause && typesP(key));
}

bool KeyBindings::isHeld(GameKey does) {
    TARNWICK_LOCATION("KeyBindings::isHeld");
    const Binding& binding = bindingOf(does);
    if (binding.chosen) {
        return std::ranges::any_of(binding.numbers, GLWindow::keyboardKeyPressed);
    }
    return GLWindow::keyboardKeyPressed(rows[static_cast<std::size_t>(does)].plain);
}

bool KeyBindings::exists(GameKey does) {
    TARNWICK_LOCATION("KeyBindings::exists");
    return bindingOf(does).chosen || rows[static_cast<std::size_t>(does)].plain != 0;
}

std::string KeyBindings::told() {
    TARNWICK_LOCATION("KeyBindings::told");
    std::string text;
    for (std::size_t i = 0; state.fileRead && i < rows.size(); ++i) {
        const bool chosen = state.bindings[i].chosen;
        const std::string names = chosen ? state.bindings[i].names : rows[i].plainNames;
        if (rows[i].told == nullptr || names.empty()) {
            continue;
        }
        const bool goesOn = std::string_view(rows[i].told) == "and";
        const bool newLine = rows[i].plain == 0 && text.find('\n') == std::string::npos;
        const char* const joint = goesOn ? " " : newLine ? "\n" : "; ";
        text += (text.empty() ? "" : joint) + std::string(rows[i].told) + " " + names;
    }
    return text;
}

} // namespace tarnwick
