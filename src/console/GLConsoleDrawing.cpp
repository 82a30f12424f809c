#include "console/GLConsole.h"
#include "core/GLTexture.h"
#include "core/LocationStack.h"
#include "graphics/GLWindow.h"
#include "graphics/KeyMap.h"
#include "graphics/PlainDrawing.h"

#include <algorithm>

namespace tarnwick {

namespace {

constexpr std::uint32_t fewestRows = 16;
constexpr std::uint32_t fewestColumns = 80;
constexpr std::uint32_t inputRows = 4;             ///< Cells that the input band is high, borders included.
constexpr std::uint32_t borderHeight = 2;          ///< Pixels.
constexpr std::uint32_t tabWidth = 8;              ///< Columns.
constexpr float cellShare = 0.0625f;               ///< 1 / 16: side of a cell in the character sheet.
constexpr std::uint32_t insertCursorHeight = 1;    ///< Pixels: the cursor while typing inserts,
constexpr std::uint32_t overwriteCursorHeight = 5; ///< and while it overwrites.

constexpr std::uint8_t tab = 9;
constexpr std::uint8_t newLine = 10;
constexpr std::uint8_t carriageReturn = 13;
constexpr std::uint8_t escape = 27;

/// A plain rectangle from `top` to `bottom` and from the left edge to `right`, pixels.
void drawBand(std::uint32_t top, std::uint32_t bottom, std::int32_t right, Colour colour) {
    TARNWICK_LOCATION("GLConsole::drawBand");
    PlainDrawing::drawRectangle(
        {0.0f, static_cast<float>(top), static_cast<float>(right), static_cast<float>(bottom)}, colour);
}

Colour opaque(const std::array<float, 3>& colour) {
    TARNWICK_LOCATION("GLConsole::opaque");
    return {colour[0], colour[1], colour[2], 1.0f};
}

/// Adds the quad of a character whose cell has its top left corner at (x, y) pixels.
void addCharacter(QuadArray& quads,
                  std::uint8_t character,
                  std::uint32_t x,
                  std::uint32_t y,
                  std::uint32_t size,
                  Colour colour) {
    TARNWICK_LOCATION("GLConsole::addCharacter");
    const auto left = static_cast<float>(x);
    const auto top = static_cast<float>(y);
    const auto side = static_cast<float>(size);
    const float s = static_cast<float>(character & 15) * cellShare;
    const float t = static_cast<float>(character >> 4) * cellShare;
    quads.addRectangle({left, top, left + side, top + side}, {s, t, s + cellShare, t + cellShare}, colour);
}

} // namespace

void GLConsole::draw() {
    TARNWICK_LOCATION("GLConsole::draw");
    fitToWindow();
    GLWindow::glPushState();
    GLWindow::glBeginDraw2d();
    PlainDrawing::beginFlat();
    drawBackground();
    drawOutputText();
    drawInputLine();
    GLWindow::glPopState();
}

GLTexture GLConsole::getFontTexture() {
    TARNWICK_LOCATION("GLConsole::getFontTexture");
    return state.fontTexture != nullptr ? *state.fontTexture : GLTexture();
}

void GLConsole::setFontTexture(const GLTexture& texture) {
    TARNWICK_LOCATION("GLConsole::setFontTexture");
    state.fontTexture = std::make_unique<GLTexture>(texture);
}

/// Rows and columns that the client area has room for.
void GLConsole::fitToWindow() {
    TARNWICK_LOCATION("GLConsole::fitToWindow");
    const auto cell = static_cast<std::int32_t>(state.fontSize);
    const std::int32_t fittingRows =
        GLWindow::getClientHeight() / cell - static_cast<std::int32_t>(inputRows);
    const std::int32_t fittingColumns = GLWindow::getClientWidth() / cell;
    state.rows = static_cast<std::uint32_t>(std::max(fittingRows, static_cast<std::int32_t>(fewestRows)));
    state.columns =
        static_cast<std::uint32_t>(std::max(fittingColumns, static_cast<std::int32_t>(fewestColumns)));
}

/// The output area, and below it the input band between its borders.
void GLConsole::drawBackground() {
    TARNWICK_LOCATION("GLConsole::drawBackground");
    const std::int32_t width = GLWindow::getClientWidth();
    const std::uint32_t outputEnd = state.rows * state.fontSize;
    const std::uint32_t inputEnd = (state.rows + inputRows) * state.fontSize - borderHeight;
    const auto bottom = static_cast<std::uint32_t>(GLWindow::getClientHeight());
    const auto [red, green, blue] = state.outputBackground;
    drawBand(0, outputEnd, width, {red, green, blue, state.outputBackgroundAlpha});
    PlainDrawing::setBlending(false);
    drawBand(outputEnd, outputEnd + borderHeight, width, opaque(state.inputBorder));
    drawBand(outputEnd + borderHeight, inputEnd, width, opaque(state.inputBackground));
    drawBand(inputEnd, bottom, width, opaque(state.inputBorder));
}

/// The newest rows of the output.
void GLConsole::drawOutputText() {
    TARNWICK_LOCATION("GLConsole::drawOutputText");
    if (state.fontTexture == nullptr) {
        return;
    }
    const auto [red, green, blue] = state.outputText;
    const Colour colour{red, green, blue, 1.0f};
    std::uint32_t index = getOutputBufferDrawStart();
    const std::uint32_t end = Log::outputWriteIndex();
    state.textQuads.begin((end + Log::outputCapacity - index) % Log::outputCapacity);
    std::uint32_t column = 0;
    std::uint32_t row = 0;
    while (row < state.rows && index != end) {
        const auto character = static_cast<std::uint8_t>(Log::outputByte(index));
        if (character != escape && character != tab && character != newLine && character != carriageReturn) {
            addCharacter(state.textQuads, character, column * state.fontSize, row * state.fontSize,
                         state.fontSize, colour);
        }
        advance(character, column, row);
        index = index + 1 == Log::outputCapacity ? 0 : index + 1;
    }
    drawText();
}

/// Moves the pen behind a character: a carriage return and an escape take up a cell like any other.
void GLConsole::advance(std::uint8_t character, std::uint32_t& column, std::uint32_t& row) {
    TARNWICK_LOCATION("GLConsole::advance");
    const std::uint32_t step = character == tab ? tabWidth - column % tabWidth : 1;
    if (character == newLine || column + step >= state.columns) {
        column = 0;
        ++row;
    } else {
        column += step;
    }
}

/// The line being typed, scrolled so that the cursor is in it, and the cursor.
void GLConsole::drawInputLine() {
    TARNWICK_LOCATION("GLConsole::drawInputLine");
    const std::string_view line = state.input.text();
    const std::uint32_t cursor = state.input.cursor();
    const bool scrolled = line.size() > state.columns - 1 && cursor >= state.columns - 1;
    const std::string_view shown = line.substr(scrolled ? cursor - (state.columns - 1) : 0, state.columns);
    if (state.fontTexture != nullptr) {
        const auto [red, green, blue] = state.inputText;
        const std::uint32_t top = (state.rows + 1) * state.fontSize + state.fontSize / 2;
        state.textQuads.begin(shown.size());
        for (std::uint32_t column = 0; column < shown.size(); ++column) {
            addCharacter(state.textQuads, static_cast<std::uint8_t>(shown[column]), column * state.fontSize,
                         top, state.fontSize, {red, green, blue, 1.0f});
        }
        drawText();
    }
    const std::uint32_t left = std::min(cursor, state.columns - 1) * state.fontSize;
    const std::uint32_t top = (state.rows + inputRows - 1) * state.fontSize - 1;
    const std::uint32_t height =
        GLWindow::keyboardKeyToggled(key::insert) ? insertCursorHeight : overwriteCursorHeight;
    PlainDrawing::setPictures(false);
    PlainDrawing::drawRectangle({static_cast<float>(left), static_cast<float>(top),
                                 static_cast<float>(left + state.fontSize), static_cast<float>(top + height)},
                                opaqueWhite);
}

/// Draws the gathered characters from the sheet.
void GLConsole::drawText() {
    TARNWICK_LOCATION("GLConsole::drawText");
    PlainDrawing::setPictures(true);
    PlainDrawing::setBlending(true);
    PlainDrawing::bindPicture(state.fontTexture->textureId);
    state.textQuads.draw();
}

} // namespace tarnwick
