#pragma once

#include "core/Strings.h"

#include <list>
#include <map>
#include <string>
#include <string_view>

namespace tarnwick {

/// A small text file of `key = value` pairs, read into memory whole. A module makes one, asks for its keys
/// and lets it go.
///
/// The text falls into words and equals signs; line ends have no meaning of their own. A word that is not
/// next to an "=" is a comment and is dropped, so notes may stand between the settings as long as they hold
/// no "=": `note a = 1 more words b = 2` defines A as 1 and B as 2. Of several settings of one key the last
/// counts. Keys are matched without regard to the case of ASCII letters. There is no quoting: a value holds
/// no blank.
///
/// A missing key and a value of zero look alike; a module with a default of its own asks `variableExists`
/// first.
class ConfigFile {
public:
    /// Hears which files are read and which keys they are asked for: so the documents are held against what
    /// the modules do. A file's keys are asked for between its reading and that of the next file.
    class Observer {
    public:
        virtual ~Observer() = default;
        /// `name` as the module gave it.
        virtual void fileRead(const std::string& name) = 0;
        /// `key` in upper case, present or missing.
        virtual void keyAsked(const std::string& key) = 0;
    };

    /// One observer of all files until it is replaced, not owned; null for none.
    static void setObserver(Observer* observer);

    /// A file above this size is refused as unreadable, bytes.
    static constexpr std::streamoff largestFile = 16'777'216;

    ConfigFile() = default;
    /// Loads the file. One that cannot be read gives an empty instance.
    explicit ConfigFile(const char* fileName);

    /// Drops all settings.
    void clear();

    /// Drops all settings, then reads the file, found through `DataFiles`. Its text ends at the first NUL
    /// byte. An empty file is no error; every other failure is told on the console and leaves no settings.
    void loadConfigFile(const char* fileName);

    /// Appends the words and the equals signs of `text`, each as one token. The separators are those of
    /// `slSeparateArgs`.
    void separateTokens(const char* text, std::list<std::string>& tokens);

    bool variableExists(std::string_view name) const;
    bool variableExists(const char* name) const { return variableExists(slText(name)); }

    /// The value as it stands in the file; empty if the key is missing.
    std::string getVarAsString(std::string_view name) const;
    std::string getVarAsString(const char* name) const { return getVarAsString(slText(name)); }
    /// `slStringToFloat` of the value, which is strict: "1e5", "+1" and "12abc" read as 0. 0 if the key is
    /// missing.
    float getVarAsFloat(std::string_view name) const;
    float getVarAsFloat(const char* name) const { return getVarAsFloat(slText(name)); }
    /// `slStringToInt` of the value: "2.5" reads as 0. 0 if the key is missing.
    int getVarAsInt(std::string_view name) const;
    int getVarAsInt(const char* name) const { return getVarAsInt(slText(name)); }
    /// True only for the word "TRUE" in any mix of upper and lower case.
    bool getVarAsBool(std::string_view name) const;
    bool getVarAsBool(const char* name) const { return getVarAsBool(slText(name)); }

private:
    friend class ModuleReset;

    struct State {
        Observer* observer = nullptr; ///< Not owned.
    };
    static State state;

    std::map<std::string, std::string> variables; ///< Upper-cased key to value.

    /// The value of `name`, null if it is missing. A null name is missing.
    const std::string* find(std::string_view name) const;
};

} // namespace tarnwick
