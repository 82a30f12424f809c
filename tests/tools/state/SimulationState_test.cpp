#include "tools/state/SimulationState.h"

#include "console/GLConsole.h"
#include "core/Clock.h"
#include "core/Random.h"
#include "game/Camera.h"
#include "game/CheckPointTimesManager.h"
#include "graphics/KeyMap.h"
#include "gui/GameMenus.h"
#include "level/Level.h"
#include "mechanisms/FxParticleManager.h"
#include "mechanisms/TriggerManager.h"
#include "particles/ParticleGroupMover.h"
#include "particles/ParticleManager.h"
#include "particles/ParticleMover.h"
#include "support/ModuleTest.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>
#include <string>

namespace tarnwick {

class SimulationStateTest : public ModuleTest {
protected:
    /// A state in which no two fields are alike.
    static void arrange() {
        seedRandom(1234567890u);
        Clock::drive(160);
        Camera::setPosition({12.5f, -0.0f});
        Camera::setState(Camera::holdingZoom);
        for (int i = 0; i < 3; ++i) {
            ParticleManager::particles.push_back(distinctParticle(static_cast<float>(i)));
        }
        ParticleMover::addGridParticle(ParticleManager::particles.front());
        ParticleGroup& group = ParticleGroupMover::groups.emplace_back();
        group.radius = 3.5f;
        group.targetRadius = 4.25f;
        group.centre = {1.0f, 2.0f};
        group.velocity = {3.0f, 4.0f};
        group.previousVelocity = {5.0f, 6.0f};
        group.pushVelocity = {7.0f, 8.0f};
        group.colliding = true;
        group.temperature = -9.0f;
        group.dying = true;
        group.killTimer = 0.125f;
        group.members.push_back(distinctParticle(100.0f));
        Polygon2D& polygon = Level::polygons.emplace_back();
        polygon.id = -7;
        polygon.visible = false;
        polygon.offsetX = 1.5f;
        polygon.previousOffsetY = -2.5f;
    }

    static Particle distinctParticle(float from) {
        Particle particle;
        float next = from;
        for (Vector2* pair : {&particle.position, &particle.trail[0], &particle.trail[1], &particle.trail[2],
                              &particle.velocity, &particle.previousVelocity, &particle.pushVelocity,
                              &particle.groupDirection}) {
            *pair = {next + 0.1f, -next - 0.2f};
            next += 1.0f;
        }
        particle.temperature = next + 0.3f;
        particle.speed = next + 0.4f;
        particle.gridCellX = 7;
        particle.gridCellY = 1023;
        particle.dying = true;
        particle.killTimer = 0.25f;
        particle.groupFraction = 0.75f;
        return particle;
    }

    static std::string refusalOf(const std::string& line) {
        try {
            SimulationState::read(line);
        } catch (const StateError& error) {
            return error.what();
        }
        return "accepted";
    }

    static constexpr RunPosition position{.tick = 12, .dt = 0.013333334f, .time = 0.16};
};

TEST_F(SimulationStateTest, WhatIsWrittenIsRestoredByteForByte) {
    arrange();
    const std::string line = SimulationState::write(position);
    ModuleReset::all();
    Polygon2D& polygon =
        Level::polygons.emplace_back(); // the level is loaded anew before a state is restored
    polygon.id = -7;

    const RunPosition restored = SimulationState::read(line);

    EXPECT_EQ(SimulationState::write(restored), line);
    EXPECT_EQ(restored.tick, 12u);
    EXPECT_EQ(getRandomState(), 1234567890u);
    EXPECT_EQ(Clock::milliseconds(), 160u);
}

TEST_F(SimulationStateTest, ParticlesInTheGridCanBeFoundThereAgain) {
    arrange();
    const std::string line = SimulationState::write(position);

    SimulationState::read(line);

    const Particle& particle = ParticleManager::particles.front();
    ASSERT_TRUE(particle.inGrid);
    EXPECT_EQ(ParticleMover::particleGrid[particle.gridCellX * ParticleMover::gridSize + particle.gridCellY],
              &particle);
}

TEST_F(SimulationStateTest, TheLineHasTheFieldsOfTheFormat) {
    arrange();
    const nlohmann::json json = nlohmann::json::parse(SimulationState::write(position));

    EXPECT_EQ(json["tick"], 12);
    EXPECT_EQ(json["random"], 1234567890u);
    EXPECT_EQ(json["clock"], 160);
    EXPECT_EQ(json["menu"], 0);
    EXPECT_EQ(json["camera"]["state"], 3);
    EXPECT_EQ(json["particles"].size(), 3u);
    EXPECT_EQ(json["particles"][0].size(), 27u);
    EXPECT_EQ(json["particles"][0][19], 1);
    EXPECT_EQ(json["particles"][0][20], 0.25);
    EXPECT_EQ(json["groups"][0]["members"].size(), 1u);
    EXPECT_EQ(json["polygons"][0]["id"], -7);
    EXPECT_EQ(json["polygons"][0]["edgesOn"], true); // it has no edges in the tree
    EXPECT_EQ(json["polygons"][0]["offset"], (nlohmann::json{1.5, 0}));
}

TEST_F(SimulationStateTest, TheMenuThatIsUpComesBack) {
    arrange();
    GameMenus::initialise();
    GameMenus::setCurrentMenu(menu::levelFinished);
    const std::string line = SimulationState::write(position);
    GameMenus::setCurrentMenu(menu::none);

    SimulationState::read(line);

    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::levelFinished);
    EXPECT_EQ(SimulationState::write(position), line);
}

TEST_F(SimulationStateTest, ABadLineIsRefusedAndChangesNothing) {
    arrange();
    const std::string line = SimulationState::write(position);
    const nlohmann::json whole = nlohmann::json::parse(line);
    const auto refusalWith = [&](const nlohmann::json::json_pointer& place, const nlohmann::json& value) {
        nlohmann::json changed = whole;
        changed[place] = value;
        return refusalOf(changed.dump());
    };
    using Place = nlohmann::json::json_pointer;

    EXPECT_EQ(refusalOf(""), "the last line is not JSON");
    EXPECT_EQ(refusalOf(line.substr(0, line.size() / 2)), "the last line is not JSON");
    EXPECT_EQ(refusalOf("[]"), "\"the line\" is not an object");
    EXPECT_EQ(refusalOf("{}"), "no field \"tick\"");
    EXPECT_EQ(refusalWith(Place("/tick"), -1), "\"tick\" is not in the range of its kind");
    EXPECT_EQ(refusalWith(Place("/random"), 4294967296u), "\"random\" is not in the range of its kind");
    EXPECT_EQ(refusalWith(Place("/menu"), 11), "\"menu\" is not the number of a menu");
    EXPECT_EQ(refusalWith(Place("/camera/state"), 5), "\"camera.state\" is not a state from 0 to 4");
    EXPECT_EQ(refusalWith(Place("/camera/x"), "far"), "\"camera.x\" is not a number");
    EXPECT_EQ(refusalWith(Place("/camera/x"), 1e300), "\"camera.x\" is not a 32-bit float");
    EXPECT_EQ(refusalWith(Place("/camera/shaking"), 1), "\"camera.shaking\" is not true or false");
    EXPECT_EQ(refusalWith(Place("/particles"), nlohmann::json::object()), "\"particles\" is not a list");
    EXPECT_EQ(refusalWith(Place("/particles/0/18"), 2), "\"particles\" is not 0 or 1");
    EXPECT_EQ(refusalWith(Place("/particles/0/16"), 1024),
              "\"particles\" is not inside the grid of 1024 by 1024 cells");
    EXPECT_EQ(refusalWith(Place("/particles/0"), {1, 2}), "\"particles\" is not a list of rows of 27 values");
    EXPECT_EQ(refusalWith(Place("/groups/0/centre"), {1}), "\"groups.centre\" is not a pair of numbers");
    EXPECT_EQ(refusalWith(Place("/polygons"), nlohmann::json::array()),
              "the state has 0 polygons, the level 1");
    EXPECT_EQ(refusalWith(Place("/polygons/0/id"), 3),
              "the state is of another level: the polygons' ids differ");
    EXPECT_EQ(SimulationState::write(position), line);
}

TEST_F(SimulationStateTest, NumbersThatAreNotFiniteComeBack) {
    arrange();
    Particle& particle = ParticleManager::particles.front();
    particle.position = {std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity()};
    particle.temperature = std::numeric_limits<float>::quiet_NaN();
    const std::string line = SimulationState::write(position);
    particle.position = {};

    SimulationState::read(line);

    EXPECT_EQ(SimulationState::write(position), line);
    EXPECT_EQ(ParticleManager::particles.front().position.y, -std::numeric_limits<float>::infinity());
}

TEST_F(SimulationStateTest, AMinusBeforeAZeroInATextStays) {
    arrange();
    FxParticleEmitter emitter;
    emitter.addTexture("A-0,B-0]\"-0}.TGA");
    FxParticleManager::addEmitter(emitter);
    const std::string line = SimulationState::write(position);

    SimulationState::read(line);

    EXPECT_EQ(SimulationState::write(position), line);
}

TEST_F(SimulationStateTest, TheSignOfAZeroStaysHoweverTheLineIsSpaced) {
    arrange();
    nlohmann::json whole = nlohmann::json::parse(SimulationState::write(position));
    whole["camera"]["y"] = -0.0;
    std::string line = whole.dump(1);
    line.replace(line.find("-0.0"), 4, "-0 ");

    SimulationState::read(line);

    EXPECT_TRUE(std::signbit(Camera::position().y));
}

TEST_F(SimulationStateTest, WithTheFieldsOfOldAloneTheRestStaysAsTheLoadLeftIt) {
    ParticleManager::initialise();
    GLConsole::runLine("Gravity 7");
    arrange();
    FxParticleManager::particles.emplace_back().size = 3.0f;
    nlohmann::json old = nlohmann::json::parse(SimulationState::write(position));
    for (const char* const added : {"lastMenu", "screen", "paused", "consoleOpen", "freeCamera", "ambience",
                                    "water", "effectLooks", "checkPoints"}) {
        old.erase(added);
    }
    Camera::setPosition({0.0f, 0.0f});

    const std::string refusal = refusalOf(old.dump());

    EXPECT_EQ(refusal, "accepted");
    EXPECT_EQ(Camera::position().x, 12.5f);
    EXPECT_EQ(ParticleManager::gravity(), 7.0f);
    EXPECT_EQ(FxParticleManager::particles.front().size, 3.0f);
}

TEST_F(SimulationStateTest, AFieldThatNobodyKnowsIsPassedOver) {
    arrange();
    const std::string line = SimulationState::write(position);
    nlohmann::json more = nlohmann::json::parse(line);
    more["weather"] = "fair";
    more["camera"]["lens"] = 50;

    EXPECT_EQ(refusalOf(more.dump()), "accepted");
}

TEST_F(SimulationStateTest, ATimeBeyondTheClockIsRefused) {
    arrange();
    nlohmann::json whole = nlohmann::json::parse(SimulationState::write(position));
    const char* const refusal =
        "\"time\" is not from 0 to below 4294967 seconds, which is as far as the clock goes";
    for (const double time : {-0.001, 4294967.0, 1e300}) {
        whole["time"] = time;
        EXPECT_EQ(refusalOf(whole.dump()), refusal) << time;
    }
    whole["time"] = 4294966.9;
    EXPECT_EQ(refusalOf(whole.dump()), "accepted");
}

TEST_F(SimulationStateTest, TheOpenConsoleAndTheFreeCameraComeBack) {
    arrange();
    nlohmann::json whole = nlohmann::json::parse(SimulationState::write(position));
    EXPECT_EQ(whole["consoleOpen"], false);
    EXPECT_EQ(whole["freeCamera"], nlohmann::json::parse(R"({"enabled":false,"x":0,"y":0,"zoom":1})"));
    whole["consoleOpen"] = true;
    whole["freeCamera"] = nlohmann::json::parse(R"({"enabled":true,"x":3,"y":-4,"zoom":0.5})");

    SimulationState::read(whole.dump());

    const nlohmann::json restored = nlohmann::json::parse(SimulationState::write(position));
    EXPECT_EQ(restored["consoleOpen"], true);
    EXPECT_EQ(restored["freeCamera"], whole["freeCamera"]);
}

TEST_F(SimulationStateTest, TheMenuBeforeThisOneComesBack) {
    arrange();
    GameMenus::initialise();
    GameMenus::setCurrentMenu(menu::main);
    GameMenus::setCurrentMenu(menu::options);
    const std::string line = SimulationState::write(position);
    GameMenus::setCurrentMenu(menu::none);
    GameMenus::setCurrentMenu(menu::inGame);

    SimulationState::read(line);

    EXPECT_EQ(GameMenus::getLastMenu(), menu::main);
    EXPECT_EQ(SimulationState::write(position), line);
}

TEST_F(SimulationStateTest, AClickThatWaitsInAMenuIsActedOnAfterTheRestore) {
    arrange();
    GameMenus::initialise();
    GameMenus::setCurrentMenu(menu::main);
    GameMenus::sendMenuEvent_keyboardPressed(key::down); // the first key only gives the focus
    GameMenus::sendMenuEvent_keyboardPressed(key::enter);
    const std::string line = SimulationState::write(position);
    GameMenus::setCurrentMenu(menu::credits);
    SimulationState::read(line);
    EXPECT_EQ(SimulationState::write(position), line);

    Clock::drive(160 + 801);
    GameMenus::sendMenuEvent_windowRedrawing();

    EXPECT_EQ(nlohmann::json::parse(line)["screen"]["waiting"].size(), 1u);
    EXPECT_EQ(GameMenus::getCurrentMenu(), menu::none); // the game was started
}

TEST_F(SimulationStateTest, WhatWaitsInNoMenuIsRefused) {
    arrange();
    GameMenus::initialise();
    GameMenus::setCurrentMenu(menu::main);
    const nlohmann::json whole = nlohmann::json::parse(SimulationState::write(position));
    const auto refusalWith = [&](const char* field, const char* value) {
        nlohmann::json changed = whole;
        changed["screen"][field] = nlohmann::json::parse(value);
        return refusalOf(changed.dump());
    };
    const char* const noEvent = "\"screen.waiting\" is not a list of events of the menu that is up";

    EXPECT_EQ(refusalWith("focus", "99"), "\"screen.focus\" is not the place of a widget");
    EXPECT_EQ(refusalWith("focus", "-2"), "\"screen.focus\" is not the place of a widget");
    EXPECT_EQ(refusalWith("waiting", "[[0, 1]]"), "\"screen.waiting\" is not a list of events");
    EXPECT_EQ(refusalWith("waiting", "[[5, 1, 0.5, 1]]"), noEvent);
    EXPECT_EQ(refusalWith("waiting", "[[0, 99, 0.5, 1, 2, 3]]"), noEvent);
    EXPECT_EQ(refusalWith("waiting", "[[0, 0, 0.5, 1, 2, 3]]"), noEvent); // a logo, which listens to nothing
    EXPECT_EQ(refusalWith("waiting", "[[0, 1, 0.5, 1, 2]]"), noEvent);
    EXPECT_EQ(refusalWith("waiting", "[[0, 1, 0.5, 1, 2, 1]]"), "accepted");
}

TEST_F(SimulationStateTest, CheckPointTimesAndTheirDisplayComeBack) {
    arrange();
    TriggerManager::initialise();
    TriggerManager::addTrigger(901, 0, 0.0f, {}, {}, {}, {});
    TriggerManager::addTrigger(901, 0, 0.0f, {}, {}, {}, {});
    const Trigger* const trigger = &TriggerManager::triggers.back();
    CheckPointTimesManager::recordTime(trigger, 4000);
    CheckPointTimesManager::recordTime(trigger, 3000);
    const std::string line = SimulationState::write(position);
    CheckPointTimesManager::recordTime(&TriggerManager::triggers.front(), 1);
    CheckPointTimesManager::recordTime(trigger, 99);

    SimulationState::read(line);

    const nlohmann::json row = nlohmann::json::parse(line)["checkPoints"];
    EXPECT_EQ(SimulationState::write(position), line);
    EXPECT_EQ(row["times"].dump(), "[[1,3000]]");
    EXPECT_EQ(row["display"], 3);
    EXPECT_EQ(row["currentTime"], 3000);
    EXPECT_EQ(row["previousTime"], 4000);
}

TEST_F(SimulationStateTest, BadCheckPointsAreRefused) {
    arrange();
    const nlohmann::json whole = nlohmann::json::parse(SimulationState::write(position));
    const auto refusalWith = [&](const char* field, const char* value) {
        nlohmann::json changed = whole;
        changed["checkPoints"][field] = nlohmann::json::parse(value);
        return refusalOf(changed.dump());
    };

    EXPECT_EQ(refusalWith("times", "[[0, 1]]"), "\"checkPoints.times\" is not of the places of triggers");
    EXPECT_EQ(refusalWith("times", "[[0]]"), "\"checkPoints.times\" is not a list of rows of 2 values");
    EXPECT_EQ(refusalWith("display", "5"), "\"checkPoints.display\" is not a number from 0 to 4");
}

} // namespace tarnwick
