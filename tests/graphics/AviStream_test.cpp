#include "graphics/AviStream.h"

#include "support/AviFile.h"
#include "support/DataFolder.h"
#include "support/ModuleTest.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <random>
#include <vector>

namespace tarnwick {

class AviStreamTest : public ModuleTest {
protected:
    /// The stream of a file with these bytes; null if it was refused.
    std::unique_ptr<AviStream> opened(const std::string& bytes) const {
        data.write("vid/a.avi", bytes);
        return AviStream::open("vid\\a.avi");
    }
    /// The same with its decoder at work.
    std::unique_ptr<AviStream> started(const std::string& bytes) const {
        std::unique_ptr<AviStream> stream = opened(bytes);
        return stream != nullptr && stream->openFrames() ? std::move(stream) : nullptr;
    }
    /// Three pictures of 4 by 4, of blue 10, 20 and 30.
    static AviFile threeFrames() {
        AviFile file;
        for (int i = 1; i <= 3; ++i) {
            file.addFrame(static_cast<std::uint8_t>(10 * i));
        }
        return file;
    }
    /// Reads the whole file as a player would; the number of pictures that it gave.
    static std::uint32_t readToTheEnd(AviStream& stream) {
        std::uint32_t frames = 0;
        while (frames < 100 && stream.frame(frames) != nullptr) {
            ++frames;
        }
        return frames;
    }

    const std::string filmOfTheTree = (std::filesystem::current_path() / "data/vid/intro.avi").string();
    const DataFolder data;
};

TEST_F(AviStreamTest, TheHeaderIsToldAsItStands) {
    AviFile file = threeFrames();
    file.frameCount = 77;
    file.scale = 2;
    file.rate = 30;

    const auto stream = opened(file.bytes());

    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->width(), 4);
    EXPECT_EQ(stream->height(), 4);
    EXPECT_EQ(stream->frameCount(), 77u);
    EXPECT_EQ(stream->frameDuration(), 66u); // 15 a second: 66.67, cut
    EXPECT_FALSE(stream->framesOpen());
}

// The fault: a start that waits for ever for somebody to write into it.
TEST_F(AviStreamTest, APipeInAFilmsPlaceIsNoFilm) {
    ASSERT_EQ(mkfifo("pipe.avi", 0600), 0);

    EXPECT_EQ(AviStream::open("pipe.avi"), nullptr);
}

TEST_F(AviStreamTest, PicturesComeByTheirNumberInAnyOrder) {
    const auto stream = started(threeFrames().bytes());

    ASSERT_NE(stream, nullptr);
    for (const std::uint32_t index : {0u, 2u, 1u, 1u, 0u, 2u}) {
        const std::uint8_t* const pixels = stream->frame(index);
        ASSERT_NE(pixels, nullptr) << index;
        EXPECT_EQ(pixels[0], 10 * (index + 1)) << index;
    }
}

TEST_F(AviStreamTest, TheBottomRowComesFirstAndRowsHaveNoPadding) {
    AviFile file{.width = 5, .height = 3};
    file.frames.push_back(AviFile::flatFrame(5, 3, 40, 90));
    file.frameCount = 1;
    const auto stream = started(file.bytes());

    ASSERT_NE(stream, nullptr);
    const std::uint8_t* const pixels = stream->frame(0);

    ASSERT_NE(pixels, nullptr);
    EXPECT_EQ(pixels[0], 40);
    EXPECT_EQ(pixels[27], 40); // the last pixel of the second row from below
    EXPECT_EQ(pixels[30], 90); // the top row
    EXPECT_EQ(pixels[42], 90);
}

TEST_F(AviStreamTest, BehindTheLastPictureThereIsNone) {
    AviFile file = threeFrames();
    file.frameCount = 50000; // the header lies
    const auto stream = started(file.bytes());

    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(stream->frame(3), nullptr);
    EXPECT_EQ(stream->frame(4), nullptr);
    EXPECT_NE(stream->frame(2), nullptr); // going back still works
}

TEST_F(AviStreamTest, TheGamesOwnFilmGivesAllItsPictures) {
    const auto stream = AviStream::open(filmOfTheTree);
    ASSERT_TRUE(stream != nullptr && stream->openFrames());
    ASSERT_EQ(stream->frameCount(), 147u);
    EXPECT_EQ(stream->frameDuration(), 77u);
    const auto bytes =
        static_cast<std::size_t>(stream->width()) * static_cast<std::size_t>(stream->height()) * 3;
    const std::uint8_t* pixels = stream->frame(100);
    ASSERT_NE(pixels, nullptr);
    const std::vector<std::uint8_t> first(pixels, pixels + bytes);

    const bool last = stream->frame(146) != nullptr;
    pixels = stream->frame(100); // back by way of the first one

    EXPECT_TRUE(last);
    ASSERT_NE(pixels, nullptr);
    EXPECT_TRUE(std::equal(first.begin(), first.end(), pixels));
    EXPECT_EQ(stream->frame(147), nullptr);
}

TEST_F(AviStreamTest, FilesWithoutAVideoAreRefused) {
    AviFile sound = threeFrames();
    sound.streamType = "auds";

    EXPECT_EQ(AviStream::open("vid\\missing.avi"), nullptr);
    EXPECT_EQ(opened(""), nullptr);
    EXPECT_EQ(opened("RIFF"), nullptr);
    EXPECT_EQ(opened("no video at all, only some text that is longer than any header"), nullptr);
    EXPECT_EQ(opened(sound.bytes()), nullptr);
}

TEST_F(AviStreamTest, ACodecThatNobodyKnowsGivesNoPictures) {
    AviFile file = threeFrames();
    file.codec = "?!?!";

    const auto stream = opened(file.bytes());

    ASSERT_NE(stream, nullptr);
    EXPECT_FALSE(stream->openFrames());
    EXPECT_FALSE(stream->framesOpen());
    EXPECT_EQ(stream->frame(0), nullptr);
}

TEST_F(AviStreamTest, SizesThatNoVideoHasAreRefused) {
    for (const std::int32_t size : {0, 4097, 65535, 2147483647}) {
        AviFile file = threeFrames();
        file.width = size;

        const auto stream = opened(file.bytes());

        EXPECT_TRUE(stream == nullptr || !stream->openFrames()) << size;
    }
}

TEST_F(AviStreamTest, PicturesOfAnotherSizeThanTheHeaderSaysDoNotOverflow) {
    AviFile file = threeFrames();
    file.frames[1] = "short";
    file.frames[2] = std::string(100000, 'x');
    const auto stream = started(file.bytes());

    ASSERT_NE(stream, nullptr);
    EXPECT_NE(stream->frame(0), nullptr);
    EXPECT_LE(readToTheEnd(*stream), 3u);
}

TEST_F(AviStreamTest, AnImpossibleRateHasNoDuration) {
    AviFile slow = threeFrames();
    slow.scale = 2147483647;
    slow.rate = 1;
    AviFile fast = threeFrames();
    fast.rate = 2000;

    const auto slowStream = opened(slow.bytes());
    const auto fastStream = opened(fast.bytes());

    ASSERT_TRUE(slowStream != nullptr && fastStream != nullptr);
    EXPECT_EQ(slowStream->frameDuration(), 0u);
    EXPECT_EQ(fastStream->frameDuration(), 0u);
}

TEST_F(AviStreamTest, AFileCutAnywhereEndsWithoutHarm) {
    const std::string whole = threeFrames().bytes();

    for (std::size_t length = 0; length < whole.size(); ++length) {
        const auto stream = started(whole.substr(0, length));
        if (stream != nullptr) {
            EXPECT_LE(readToTheEnd(*stream), 3u) << length;
        }
    }
}

TEST_F(AviStreamTest, DamagedFilesEndWithoutHarm) {
    std::mt19937 random(2);
    const std::string whole = threeFrames().bytes();

    for (int run = 0; run < 300; ++run) {
        std::string damaged = whole;
        for (int i = 0; i < 4; ++i) {
            damaged[random() % damaged.size()] = static_cast<char>(random() & 0xFF);
        }
        const auto stream = started(damaged);
        if (stream != nullptr) {
            EXPECT_LE(readToTheEnd(*stream), 100u) << run;
        }
    }
}

} // namespace tarnwick
