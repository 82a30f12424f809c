#include "level/LevelLoader.h"

#include "audio/SoundSourceManager.h"
#include "core/DataFiles.h"
#include "core/FrameTimer.h"
#include "core/GLTexture.h"
#include "core/Geometry.h"
#include "core/LocationStack.h"
#include "core/Log.h"
#include "graphics/GLWindow.h"
#include "level/Level.h"
#include "level/LevelFile.h"
#include "level/LevelObject.h"
#include "level/LevelObjectsManager.h"
#include "level/Polygon2D.h"
#include "level/SurfaceTypeManager.h"
#include "mechanisms/ForceManager.h"
#include "mechanisms/FxParticleManager.h"
#include "mechanisms/MoverManager.h"
#include "mechanisms/TriggerManager.h"

#include <fstream>
#include <list>
#include <vector>

namespace tarnwick {

namespace {

constexpr float strengthScale = 10.0f; ///< A force is this much stronger than its record says.

Vector2 toVector(LevelFile::Point point) {
    TARNWICK_LOCATION("LevelLoader::toVector");
    return {static_cast<float>(point.x), static_cast<float>(point.y)};
}

/// A polygon of the level from its record; the outline is cut into triangles on the way.
Polygon2D buildPolygon(const LevelFile::PolygonRecord& record) {
    TARNWICK_LOCATION("LevelLoader::buildPolygon");
    Polygon2D polygon;
    polygon.id = record.polygonId;
    if (!record.textureName.empty()) {
        polygon.texture = record.textureName;
    }
    polygon.setFrictionLevel(SurfaceTypeManager::getSurfaceTypeFriction(record.surfaceType));
    polygon.collideable = record.polygonMode != 1 && record.polygonMode != 3;
    polygon.drawable = record.polygonMode != 2 && record.polygonMode != 3;
    polygon.layer = record.layer;
    std::vector<Vector2> points;
    points.reserve(record.points.size());
    for (const LevelFile::Point point : record.points) {
        points.push_back(toVector(point));
    }
    polygon.addPoints(points);
    return polygon;
}

/// An object of the level from its record; its pictures load on the way.
LevelObject buildObject(const LevelFile::ObjectRecord& record) {
    TARNWICK_LOCATION("LevelLoader::buildObject");
    LevelObject object;
    object.id = record.objectId;
    object.setTexture(record.textureName);
    object.layer = record.layer;
    object.x = static_cast<float>(record.position.x);
    object.y = static_cast<float>(record.position.y);
    object.mirrored = record.mirrored != 0;
    return object;
}

/// Builds what a level is made of while its file is read.
class LevelBuilder final : public LevelFile::Reader {
public:
    std::list<Polygon2D> polygons;
    std::list<LevelObject> objects;
    std::list<SoundSource> soundSources;
    std::list<FxParticleEmitter> emitters;
    /// Every polygon begins with the default picture and most give it up at once: held here, it is read once.
    const GLTexture defaultPicture;

    void wrongVersion(std::uint32_t found) override {
        TARNWICK_LOCATION("LevelBuilder::wrongVersion");
        Log::print("\nInvalid level file version. Version is ");
        Log::print(found);
        Log::print(". Version used by game is ");
        Log::print(LevelFile::version);
        Log::print(".");
    }

    void polygonRead(const LevelFile::PolygonRecord& record) override {
        TARNWICK_LOCATION("LevelBuilder::polygonRead");
        polygons.push_back(buildPolygon(record));
        GLWindow::run(); // keeps the window alive: cutting up an outline takes its time
    }

    void objectRead(const LevelFile::ObjectRecord& record) override {
        TARNWICK_LOCATION("LevelBuilder::objectRead");
        objects.push_back(buildObject(record));
        GLWindow::run();
    }

    void soundSourceRead(const LevelFile::SoundSourceRecord& record) override {
        TARNWICK_LOCATION("LevelBuilder::soundSourceRead");
        const Vector2 position = toVector(record.position);
        // Kept: each is first one of the default sound, whose count in the cache so only grows.
        soundSources.emplace_back() = SoundSource(Sound(record.soundName), position, record.looping != 0,
                                                  record.soundId, static_cast<float>(record.strenght));
        GLWindow::run();
    }

    void emitterRead(const LevelFile::EmitterRecord& record) override {
        TARNWICK_LOCATION("LevelBuilder::emitterRead");
        FxParticleEmitter& emitter = emitters.emplace_back();
        emitter.id = record.emitterId;
        emitter.position = toVector(record.position);
        emitter.setDirection(record.direction); // may draw random numbers
        emitter.loadEmitterSettings(record.settingsName);
    }
};

void handOverForces(const LevelFile& file) {
    TARNWICK_LOCATION("LevelLoader::handOverForces");
    ForceManager::initialise();
    for (const LevelFile::ForceRecord& record : file.forces) {
        Vector2 direction = record.direction;
        normaliseVector(direction); // Kept: here and again in `addForce`, which can turn its last bit
        ForceManager::addForce(static_cast<std::int32_t>(record.forceId), toVector(record.position),
                               direction, record.strength * strengthScale);
    }
}

void handOverSoundSources(const LevelBuilder& builder) {
    TARNWICK_LOCATION("LevelLoader::handOverSoundSources");
    SoundSourceManager::initialise();
    for (const SoundSource& source : builder.soundSources) {
        SoundSourceManager::addSoundSource(source);
    }
}

void handOverMovers(const LevelFile& file) {
    TARNWICK_LOCATION("LevelLoader::handOverMovers");
    MoverManager::initialise();
    for (const LevelFile::MoverRecord& record : file.movers) {
        Mover mover;
        mover.id = record.moverId;
        mover.speed = record.speed;
        mover.setStartPoint(toVector(record.start));
        mover.setEndPoint(toVector(record.end));
        MoverManager::addMover(mover); // looks for what it carries among the polygons and objects
    }
}

void handOverEmitters(const LevelBuilder& builder) {
    TARNWICK_LOCATION("LevelLoader::handOverEmitters");
    FxParticleManager::initalise();
    for (const FxParticleEmitter& emitter : builder.emitters) {
        FxParticleManager::addEmitter(emitter);
    }
}

/// Comes last: a trigger looks for its targets when it is made.
void handOverTriggers(const LevelFile& file) {
    TARNWICK_LOCATION("LevelLoader::handOverTriggers");
    TriggerManager::initialise();
    for (const LevelFile::TriggerRecord& record : file.triggers) {
        TriggerManager::addTrigger(record.triggerType, record.targetId, record.delay,
                                   toVector(record.corners[0]), toVector(record.corners[1]),
                                   toVector(record.corners[2]), toVector(record.corners[3]));
    }
}

/// Puts the level that was read in the place of the one in memory. Nothing here can fail.
void handOver(const LevelFile& file, LevelBuilder& builder) {
    TARNWICK_LOCATION("LevelLoader::handOver");
    Level::clear(); // the old level goes only now
    Level::polygons.splice(Level::polygons.end(), builder.polygons);
    Level::setStartPoints(toVector(file.waterStart), toVector(file.cameraStart));
    LevelObjectsManager::initialise();
    for (const LevelObject& object : builder.objects) {
        LevelObjectsManager::addObject(object);
    }
    handOverForces(file);
    handOverSoundSources(builder);
    handOverMovers(file);
    handOverEmitters(builder);
    handOverTriggers(file);
}

} // namespace

bool LevelLoader::loadLevel(const std::string& fileName) {
    TARNWICK_LOCATION("LevelLoader::loadLevel");
    std::ifstream stream = DataFiles::open(fileName);
    if (!stream.is_open()) {
        Log::print("\nUnable to open level file '" + fileName + "'");
        return false;
    }
    FrameTimer timer;
    LevelFile file;
    LevelBuilder builder;
    if (const char* reason = LevelFile::read(stream, file, &builder); reason != nullptr) {
        Log::print("\nError reading level file '" + fileName + "'");
        Log::print("\nReason: ");
        Log::print(reason);
        return false;
    }
    timer.update();
    Log::print("\nLevel '" + fileName + "' loaded successfully..");
    Log::print("\nLevel loading took ");
    Log::print(timer.getSeconds());
    Log::print(" seconds.");
    handOver(file, builder);
    return true;
}

} // namespace tarnwick
