#pragma once

#include "core/Colour.h"
#include "core/GLTexture.h"
#include "core/QuadArray.h"
#include "particles/Particle.h"

#include <memory>
#include <string>
#include <vector>

namespace tarnwick {

struct CommandRow;
class ConfigFile;

/// Turns the particles into a picture, once a frame, between the second and the third layer of the level.
///
/// No surface is computed. Water reads as a body because each particle is a blended sprite larger than the
/// particle, drawn over an outline pass of still larger sprites in another colour: the sprites merge, and
/// only the outer rim of the outline shows. Motion shows as fading copies at the last three positions, and
/// speed swells a sprite.
///
/// What a particle is drawn as is decided by where it lives: a member of a group is ice whatever its
/// temperature.
class ParticleRenderer {
public:
    ParticleRenderer() = delete;

    /// Particles of one kind; the order is the order of drawing.
    using Particles = std::vector<const Particle*>;

    /// Reads `cfg\water.cfg`, loads the three sprites and registers the console command. Calls `shutdown`
    /// first.
    static void initialise();
    /// Gives the sprites back; without them `draw` does nothing.
    static void shutdown();

    /// Draws all free particles and all ice: the outlines of water, steam and ice, then their sprites. Turns
    /// texturing and blending on and leaves them on. Without the sprite of water nothing is drawn at all.
    static void draw();

    static void drawWaterParticleOutlines(const Particles& particles);
    static void drawSteamParticleOutlines(const Particles& particles);
    static void drawIceParticleOutlines(const Particles& particles);
    static void drawWaterParticles(const Particles& particles);
    static void drawSteamParticles(const Particles& particles);
    static void drawIceParticles(const Particles& particles);

private:
    friend class ModuleReset;
    friend class ParticleRendererTest;

    /// How one kind of particle looks.
    struct Look {
        std::unique_ptr<GLTexture> texture; ///< Null until it is loaded; kept for as long as it is set.
        Colour colour;
        Colour outlineColour;
        float outlineSize = 0.0f; ///< World units added to the half size of an outline.
        float expansion = 0.0f;   ///< World units added to the half size of every sprite; 0 for water.
    };

    struct State {
        bool particleDrawEnabled = true;
        Look water;
        Look steam;
        Look ice;
        float velocityExpansion = 0.0f;    ///< World units of half size per unit of speed, not negative.
        float maxVelocityExpansion = 0.0f; ///< World units: the most that speed adds, not negative.

        Particles waterParticles; ///< Of the frame being drawn; these four are kept for their memory.
        Particles steamParticles;
        Particles iceParticles;
        QuadArray quads; ///< Of the pass being drawn.
    };
    static State state;

    static void readClearColours();
    static void readLook(const ConfigFile& config, const std::string& kind, Look& look);
    static void sortParticles();
    static void drawOutlines(const Look& look, const Particles& particles);
    /// One sprite a particle, of half size `size` before speed swells it.
    static void drawSprites(const Look& look, const Particles& particles, float size, Colour colour);
    /// One sprite a particle and three on its trail, newest first, each with its share of the alpha.
    static void
    drawTrailedSprites(const Look& look, const Particles& particles, const float (&trailShares)[3]);
    static void drawPass(const Look& look);

    static const CommandRow commands[];
};

} // namespace tarnwick
