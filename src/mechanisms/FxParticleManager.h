#pragma once

#include "core/QuadArray.h"
#include "core/View.h"
#include "mechanisms/FxParticle.h"
#include "mechanisms/FxParticleEmitter.h"

#include <cstdint>
#include <list>
#include <string>
#include <vector>

namespace tarnwick {

struct CommandRow;

/// Owns the emitters of the level and the effect particles in flight: sparks, drips and smoke, which have
/// nothing to do with the water and touch no other part of the simulation.
///
/// Emitters live until the next level's `initalise`. Starting the level again empties `particles` and leaves
/// the emitters as they are: one stopped by a trigger stays stopped and keeps its `timer`.
class FxParticleManager {
public:
    FxParticleManager() = delete;

    /// In order of creation. A node stays where it is until `shutdown`: triggers and particles point to it.
    static std::list<FxParticleEmitter> emitters;
    /// Oldest first, as many as there are.
    static std::list<FxParticle> particles;

    /// Registers the console commands. Calls `shutdown` first, so that it can run again for a new level; this
    /// is also what ends the last level's emitters.
    static void initalise();
    static void shutdown();

    /// Appends a copy.
    static void addEmitter(const FxParticleEmitter& emitter);
    /// Appends a copy.
    static void addParticle(const FxParticle& particle);

    /// One tick of `dt` seconds, already capped at 1/30. The emitters near the view run, in order, those on
    /// its edge too; the others neither give off particles nor gather time. Then every particle flies on,
    /// wherever it is, the new ones with the rest.
    static void run(float dt, const View& view);

    /// Draws all particles, those of one texture together, with alpha fading over their life. Leaves the GL
    /// as it was but for the bound texture.
    static void draw();
    /// Kept: draws nothing. `FxEmitterDraw` is stored and never looked at.
    static void debugDraw();

    /// What of the module a `Snapshot` holds; nobody else looks inside.
    class Moment;
    static void keep(Moment& moment);
    /// With the emitters that there were: particles point into them.
    static void putBack(const Moment& moment);

private:
    friend class ModuleReset;
    friend class FxParticleManagerTest;

    struct State {
        /// A binary max-heap by texture pointer. Empty between frames, kept for its memory.
        std::vector<const FxParticle*> drawQueue;
        QuadArray quads;            ///< Of the batch being drawn; kept for its memory.
        bool fxEmitterDraw = false; ///< `FxEmitterDraw`.
    };
    static State state;

    static void runEmitters(float dt, const View& view);
    static void runParticles(float dt, const View& view);
    static void fillDrawQueue();
    static const FxParticle& takeTop();
    static void drawBatch(bool& alphaBlending);

    static const CommandRow commands[];
    static void conCmdFxEmitterCreate(const std::string& typed);
    static std::int32_t conCmdFxEmitterCount();
    static std::int32_t conCmdFxParticleCount();
};

class FxParticleManager::Moment {
    friend class FxParticleManager;
    struct EmitterMoment {
        bool active = true;
        float timer = 0.0f;
    };
    std::vector<EmitterMoment> emitters; ///< In the order of their list.
    std::vector<FxParticle> particles;
};

} // namespace tarnwick
