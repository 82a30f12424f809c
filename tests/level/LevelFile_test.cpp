#include "level/LevelFile.h"

#include "support/LevelFileBuilder.h"
#include "support/ModuleTest.h"

#include <algorithm>
#include <cstdint>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace tarnwick {

namespace {

constexpr const char* unableToRead = "Unable to read file";

/// The reason why the bytes are no level file; empty if they are one.
std::string reasonFor(const std::string& bytes, LevelFile& level) {
    std::istringstream stream(bytes, std::ios::binary);
    const char* reason = LevelFile::read(stream, level);
    return reason != nullptr ? reason : "";
}

std::string reasonFor(const std::string& bytes) {
    LevelFile level;
    return reasonFor(bytes, level);
}

/// Notes what a reader is told, in its order.
class NotingReader final : public LevelFile::Reader {
public:
    std::string notes;

    void wrongVersion(std::uint32_t found) override { notes += "version " + std::to_string(found) + "\n"; }
    void polygonRead(const LevelFile::PolygonRecord& record) override {
        notes += "polygon " + std::to_string(record.polygonId) + "\n";
    }
    void objectRead(const LevelFile::ObjectRecord& record) override {
        notes += "object " + std::to_string(record.objectId) + "\n";
    }
    void soundSourceRead(const LevelFile::SoundSourceRecord& record) override {
        notes += "sound " + std::to_string(record.soundId) + "\n";
    }
    void emitterRead(const LevelFile::EmitterRecord& record) override {
        notes += "emitter " + std::to_string(record.emitterId) + "\n";
    }
};

} // namespace

class LevelFileTest : public ModuleTest {};

TEST_F(LevelFileTest, AFileBeginsWithItsFourBytesAndTheVersion) {
    const std::string bytes = LevelFileBuilder::write(smallLevel());

    EXPECT_EQ(bytes.substr(0, 8), std::string("\x97\x13\x8F\x00\x0C\x00\x00\x00", 8));
}

TEST_F(LevelFileTest, EveryFieldOfEveryRecordIsRead) {
    LevelFile level;

    const std::string reason = reasonFor(LevelFileBuilder::write(smallLevel()), level);

    EXPECT_EQ(reason, "");
    EXPECT_EQ(level, smallLevel());
}

TEST_F(LevelFileTest, RecordsHaveTheSizesOfTheFormat) {
    const std::size_t empty = LevelFileBuilder().header().emptySections(7).startPoints({}, {}).bytes().size();

    EXPECT_EQ(empty, 52u);
    EXPECT_EQ(LevelFileBuilder().add(LevelFile::PolygonRecord{}).bytes().size(), 24u);
    EXPECT_EQ(LevelFileBuilder().add(LevelFile::ObjectRecord{}).bytes().size(), 21u);
    EXPECT_EQ(LevelFileBuilder().add(LevelFile::ForceRecord{}).bytes().size(), 24u);
    EXPECT_EQ(LevelFileBuilder().add(LevelFile::MoverRecord{}).bytes().size(), 24u);
    EXPECT_EQ(LevelFileBuilder().add(LevelFile::TriggerRecord{}).bytes().size(), 44u);
    EXPECT_EQ(LevelFileBuilder().add(LevelFile::SoundSourceRecord{}).bytes().size(), 21u);
    EXPECT_EQ(LevelFileBuilder().add(LevelFile::EmitterRecord{}).bytes().size(), 24u);
}

TEST_F(LevelFileTest, ADelayIsTakenBitForBit) {
    LevelFile level;
    const std::string bytes = LevelFileBuilder()
                                  .header()
                                  .emptySections(4)
                                  .u32(1)
                                  .i32(1)
                                  .i32(2)
                                  .u32(0x80000001u) // a delay that rounding to zero would lose
                                  .point({})
                                  .point({})
                                  .point({})
                                  .point({})
                                  .emptySections(2)
                                  .startPoints({}, {})
                                  .bytes();

    const std::string reason = reasonFor(bytes, level);

    EXPECT_EQ(reason, "");
    EXPECT_EQ(level.triggers.at(0).delay, -1.4012985e-45f);
}

TEST_F(LevelFileTest, BytesBehindTheStartPointsAreIgnored) {
    EXPECT_EQ(reasonFor(LevelFileBuilder::write(smallLevel()) + "and more"), "");
}

TEST_F(LevelFileTest, AReaderIsToldOfRecordsInFileOrder) {
    std::istringstream stream(LevelFileBuilder::write(smallLevel()), std::ios::binary);
    LevelFile level;
    NotingReader reader;

    LevelFile::read(stream, level, &reader);

    EXPECT_EQ(reader.notes, "polygon 7\npolygon -3\nobject 5\nobject 6\nsound 9\nsound 10\nemitter 11\n");
}

TEST_F(LevelFileTest, AReaderIsToldTheVersionFound) {
    std::istringstream stream(LevelFileBuilder().u32(LevelFile::magic).u32(0xFFFFFFFFu).bytes(),
                              std::ios::binary);
    LevelFile level;
    NotingReader reader;

    const char* reason = LevelFile::read(stream, level, &reader);

    EXPECT_STREQ(reason, "Invalid level file version.");
    EXPECT_EQ(reader.notes, "version 4294967295\n");
}

TEST_F(LevelFileTest, AStreamThatWasNeverOpenedCannotBeRead) {
    std::istringstream stream;
    stream.setstate(std::ios::failbit);
    LevelFile level;

    const char* reason = LevelFile::read(stream, level);

    EXPECT_STREQ(reason, unableToRead);
}

TEST_F(LevelFileTest, AReadEmptiesTheLevelFirst) {
    LevelFile level = smallLevel();

    const std::string reason = reasonFor("", level);

    EXPECT_EQ(reason, unableToRead);
    EXPECT_EQ(level, LevelFile());
}

TEST_F(LevelFileTest, AFileCutOffAnywhereCannotBeRead) {
    const std::string bytes = LevelFileBuilder::write(smallLevel());

    for (std::size_t length = 0; length < bytes.size(); ++length) {
        EXPECT_EQ(reasonFor(bytes.substr(0, length)), unableToRead) << length;
    }
}

TEST_F(LevelFileTest, AFileWithOneByteChangedIsReadOrRefused) {
    const std::string bytes = LevelFileBuilder::write(smallLevel());
    std::size_t refused = 0;
    std::size_t read = 0;

    for (std::size_t at = 0; at < bytes.size(); ++at) {
        for (const int change : {0x01, 0x80, 0xFF}) {
            std::string changed = bytes;
            changed[at] = static_cast<char>(changed[at] ^ change);
            ++(reasonFor(changed).empty() ? read : refused);
        }
    }

    EXPECT_GT(read, 100u);
    EXPECT_GT(refused, 100u);
}

TEST_F(LevelFileTest, RandomBytesBehindAGoodHeaderAreReadOrRefused) {
    std::mt19937 random(1);
    for (int file = 0; file < 3000; ++file) {
        std::string bytes = LevelFileBuilder().header().bytes();
        const std::size_t length = random() % 400;
        for (std::size_t i = 0; i < length; ++i) {
            bytes.push_back(
                static_cast<char>(random() % 5 == 0 ? random() : random() % 3)); // small counts, mostly
        }

        const std::string reason = reasonFor(bytes);

        EXPECT_NE(reason, "Not a RVL level file.");
    }
}

TEST_F(LevelFileTest, ACountThatTheFileCannotHoldTakesNoMemory) {
    constexpr int sections = 7;
    for (int section = 0; section < sections; ++section) {
        const std::string bytes =
            LevelFileBuilder().header().emptySections(section).u32(65535).u32(0).bytes();
        LevelFile level;

        const std::string reason = reasonFor(bytes, level);

        EXPECT_EQ(reason, unableToRead) << section;
        EXPECT_LE(level.polygons.capacity() + level.objects.capacity() + level.forces.capacity() +
                      level.movers.capacity() + level.triggers.capacity() + level.soundSources.capacity() +
                      level.emitters.capacity(),
                  4u);
    }
}

TEST_F(LevelFileTest, ABadRecordIsNamedEvenIfTheCountPromisesTooMany) {
    const std::string bytes =
        LevelFileBuilder().header().u32(65535).i32(0).name("").i32(9).i32(0).u32(0).u32(0).bytes();

    EXPECT_EQ(reasonFor(bytes), "Invalid surface type encountered.");
}

} // namespace tarnwick
