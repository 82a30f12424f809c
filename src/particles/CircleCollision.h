#pragma once

#include "core/Vector2.h"

#include <cstdint>

namespace tarnwick {

struct LevelBspNode;

/// Moves one circle out of the level: the only collision code for water and ice.
///
/// A test pushes the position out of every edge and edge end in reach and leaves behind the mean contact
/// normal and the mean surface friction; it changes no velocity, that is the caller's part. The edges near
/// the circle come from the level's tree. One test at a time: results hold until the next one.
class CircleCollision {
public:
    CircleCollision() = delete;

    /// Moves `centre` (world units) out of all edges within `radius`, in at most three passes. True if
    /// anything was hit; a contact that moves by zero is a hit too.
    static bool collisionTest(Vector2& centre, float radius);
    /// The same against the edges that never move.
    static bool collisionTestStatic(Vector2& centre, float radius);

    /// Mean of the last test's contact normals, pointing into the solid; below unit length in a corner, zero
    /// without a contact. An edge that was hit in two passes counts twice.
    static Vector2 contactNormal() { return state.contactNormal; }
    /// Mean friction of the last test's contacts: share of speed kept after 1 s of contact; 1 without a
    /// contact.
    static float contactFriction() { return state.contactFriction; }

private:
    friend class ModuleReset;
    friend class SimulationState;

    struct State {
        std::uint32_t contactCount = 0; ///< Contacts resolved in the last test.
        Vector2 contactNormal;
        float contactFriction = 1.0f;
    };
    static State state;
};

} // namespace tarnwick
