#pragma once

#include <memory>

namespace tarnwick {

/// The whole simulation of the level that runs, copied into memory: a run that goes on from it is the run
/// that went on when it was taken, to the last bit. Nothing is written out: each module hands over what time
/// changes of it and takes it back, as a class `Moment` that nobody else looks into.
///
/// It holds no entities, only what changes of them: it fits as long as the level is not loaded anew and the
/// console makes none. The water is held whole. What the player holds and what sounds are no part of it, nor
/// is what the finish of a level stops. With a clock that is driven the clock goes back as well; on the
/// wall's the timers go on from what they had counted.
///
/// A snapshot that is taken again takes no memory anew.
class Snapshot {
public:
    Snapshot();
    ~Snapshot();
    Snapshot(Snapshot&&) noexcept;
    Snapshot& operator=(Snapshot&&) noexcept;

    /// Copies the simulation as it stands between two ticks.
    void take();
    /// Whether `putBack` would do it. Not before `take`.
    bool fits() const;
    /// Puts the simulation back to where it was taken. False, and nothing has changed, if it does not fit.
    bool putBack() const;

private:
    struct Contents;
    std::unique_ptr<Contents> contents;
};

} // namespace tarnwick
