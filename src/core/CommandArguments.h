#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tarnwick {

/// The words typed behind a command that takes several, each held against its place in the command's usage
/// text.
///
/// The usage says what a word may be: "\nUSAGE: Make < x : number > < id : integer > < fileName >". A place
/// ends in the kind of its word, behind a colon if it has a name: "number"; "integer" or "integer number";
/// "true OR false"; anything else takes every word. So the text that a player is shown is the rule that is
/// kept.
class CommandArguments {
public:
    /// `usage` is printed if the words do not fit it.
    CommandArguments(const std::string& typed, const char* usage);

    /// As many words as the usage has places, each of its kind. Without that none may be asked for.
    bool fit() const { return good; }

    float number(std::size_t place) const;
    std::int32_t integer(std::size_t place) const;
    bool boolean(std::size_t place) const;
    const std::string& text(std::size_t place) const { return words[place]; }

private:
    std::vector<std::string> words;
    bool good = false;
};

} // namespace tarnwick
