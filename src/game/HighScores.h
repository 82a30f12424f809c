#pragma once

#include "core/FrameTimer.h"
#include "core/Vector2.h"
#include "graphics/Colour.h"
#include "graphics/GLWindowEventListener.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace tarnwick {

class GLFont;
class GLTexture;
class GuiAnimatedButton;
class GuiScreen;
class Sound;

/// One line of the table, the same in memory and in the file: 28 bytes.
struct HighScoreEntry {
    std::array<char, 24> name{}; ///< Latin-1, ended by a zero byte; at most 20 characters are ever entered.
    std::uint32_t score = 0;
};
static_assert(sizeof(HighScoreEntry) == 28);

/// The table of the ten best scores, which is static, and the screen on which a player enters a name for it,
/// which is an object: a listener of the window that takes over the input until the player is done.
///
/// The table is in memory from the program's start to its end and on disk only at these two moments:
/// `sav\scores.sav` is a magic number and the ten entries, 284 bytes, little-endian.
class HighScores final : public GLWindowEventListener {
public:
    static constexpr std::size_t entryCount = 10;
    static constexpr std::size_t longestName = 20; ///< Characters that can be entered.
    static constexpr std::uint32_t fileMagic = 0x1231230F;
    using Table = std::array<HighScoreEntry, entryCount>;

    /// Best first.
    static const Table& table() { return state.highScoreTable; }
    /// What stands before the first zero byte of an entry's name: a name from a broken file may have none.
    static std::string nameOf(const HighScoreEntry& entry);

    /// Ten times "NO NAME" with nothing.
    static void setDefaultScores();
    /// Reads the file. If it is missing, short or of another magic number the default table stands; nothing
    /// is reported.
    static void loadScores();
    /// Writes the file, and makes its folder if need be. Nothing is reported when that fails.
    static void saveScores();
    /// Puts an entry behind all whose score is not below its own; the last falls out. Does nothing if its
    /// score is above none.
    static void addHighScore(const HighScoreEntry& entry);

    /// If `score` is above any in the table: asks for a name, with `background` drawn behind, and enters it.
    /// Returns when the player is done or the window is gone; the name as far as it was typed counts then.
    static void checkScore(std::uint32_t score, GuiScreen* background);

    /// The screen, with an empty name; plays its sound. `background` is not owned; null for none.
    explicit HighScores(GuiScreen* background);
    virtual ~HighScores();
    HighScores(const HighScores&) = delete;
    HighScores& operator=(const HighScores&) = delete;

    /// The name so far.
    std::string name() const;
    /// False once the name has been accepted and its button has played.
    bool isActive() const { return active; }

    void mouseMoved(std::uint32_t x, std::uint32_t y) override;
    void mousePressed(std::uint32_t x, std::uint32_t y, std::uint32_t button) override;
    /// Enter and Escape accept, Backspace takes a character back; letters, digits and blanks are entered.
    void keyboardPressed(std::uint32_t key) override;
    void windowClosing() override;
    void windowRedrawing() override;

private:
    friend class ModuleReset;

    struct State {
        Table highScoreTable{};
    };
    static State state;

    std::array<char, longestName + 1> enteredName{}; ///< Zero-filled behind the name.
    std::uint32_t enteredLength = 0;                 ///< 0 to 20.
    GuiScreen* backgroundScreen = nullptr;           ///< Not owned; may be null.
    bool active = true;                              ///< The loop runs.
    std::unique_ptr<GLTexture> cursor;
    std::unique_ptr<GLFont> font;
    std::unique_ptr<Sound> highScoreSound;
    std::unique_ptr<GuiAnimatedButton> continueButton; ///< Accepts the name.
    Colour textColour;
    Vector2 dropShadowOffset; ///< Virtual units.
    Colour dropShadowColour;
    bool closing = false;       ///< The name was accepted; input is ignored.
    float closeTimeLeft = 0.8f; ///< Seconds from then until `active` falls.
    FrameTimer timer;

    static HighScoreEntry* placeOf(std::uint32_t score);
    void readConfiguration();
    bool overContinueButton(std::uint32_t x, std::uint32_t y) const;
    void accept();
    void runClosing();
    void drawCentred(const char* text, float y, float boxHeight, float size) const;
    void drawNameEntry() const;
    void drawCursor() const;
};

} // namespace tarnwick
