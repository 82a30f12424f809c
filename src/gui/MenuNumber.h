#pragma once

#include <cstdint>

namespace tarnwick {

/// The numbers of the menus, as every caller of `GameMenus::setCurrentMenu` gives them.
namespace menu {
constexpr std::uint32_t none = 0; ///< The level is being played.
constexpr std::uint32_t main = 1;
constexpr std::uint32_t inGame = 2;
constexpr std::uint32_t options = 3;
constexpr std::uint32_t highScores = 4;
constexpr std::uint32_t instructions = 5;
constexpr std::uint32_t quitGame = 6;
constexpr std::uint32_t loadMap = 7;
constexpr std::uint32_t credits = 8;
constexpr std::uint32_t levelFinished = 9;
constexpr std::uint32_t restart = 10;
constexpr std::uint32_t last = restart;
} // namespace menu

} // namespace tarnwick
