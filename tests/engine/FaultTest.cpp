#include <filesystem>
#include <random>

#include "engine/EngineFixture.h"
#include "platform/linux/LinuxTargetFolder.h"
#include "support/FullDisk.h"

namespace korvenal::test {
namespace {

using ::testing::Not;

using FaultTest = EngineFixture;

TEST_F(FaultTest, AFullDiskFailsTheBurnWithItsReason) {
  blank(DiscDvdPlusR);
  insert("\\", "large", dir.sparse("large", 50'000'000));
  ASSERT_TRUE(prepare());
  Ending end;
  {
    const FullDisk full(20'000'000);
    end = burn();
  }
  EXPECT_TRUE(end.finished);
  EXPECT_NE(end.error, 0);
  EXPECT_EQ(engine->do_GetErrorNumber(), EFBIG) << engine->do_GetErrorString();
  EXPECT_FALSE(engine->do_GetErrorString().empty());
  EXPECT_EQ(engine->do_Writable(), 0);
  EXPECT_EQ(std::filesystem::file_size(image()), 0U) << "the disk has its room again";
}

TEST_F(FaultTest, AnImageTakenAwayDuringTheBurnIsNoSuccess) {
  blank(DiscDvdPlusR);
  insert("\\", "large", dir.sparse("large", 400'000'000));
  ASSERT_TRUE(prepare());
  const std::string file = image();
  const Ending end = burn([&] {
    if (engine->do_GetBlocksWritten() > 0) std::filesystem::remove(file);
  });
  EXPECT_NE(end.error, 0);
  EXPECT_EQ(engine->do_TestUnitReady(), 0);
}

TEST_F(FaultTest, ABurnThatNeverEndedLeavesADamagedDisc) {
  blank(DiscCdR);
  const std::string file = image();
  DiscProfile profile = DiscProfile::blank(DiscCdR, 0);
  profile.writing = true;
  dir.write("shelf/disc.iso.disc", profile.toText());
  restart();
  engine->do_SelectDeviceByLetter('V');
  EXPECT_EQ(engine->do_Writable(), 0);
  EXPECT_NE(engine->do_SessionsOnDisc(), 0);
}

/// Walks all that a disc offers, within reason, and reads the files.
void walk(DiscReader& reader, const std::string& folder, int depth, int& budget) {
  std::array<char, 4096> piece{};
  for (const std::string& name : reader.list(folder)) {
    if (--budget < 0) return;
    const std::string path = folder.empty() ? name : folder + "\\" + name;
    const FileInfo info = reader.info(path);
    if (info.kind == FileInfo::Kind::Folder && depth < 20) walk(reader, path, depth + 1, budget);
    const auto stream = reader.openFile(path);
    if (!stream) continue;
    stream->read(0, piece.data(), piece.size());
    stream->read(info.size.whole() / 2, piece.data(), piece.size());
  }
}

class MalformedTest : public EngineFixture {
 protected:
  /// A good image; cut or changed copies of it are looked at.
  std::string goodImage() {
    blank(DiscDvdPlusR);
    for (int i = 0; i < 40; ++i)
      insert(
          "F" + std::to_string(i % 4) + "\\G", "file " + std::to_string(i),
          dir.write("s" + std::to_string(i), std::string(static_cast<std::size_t>(i) * 100, 'x')));
    EXPECT_EQ(prepareAndBurn().error, 0);
    return TempDir::read(image());
  }
  int look(const std::string& bytes) {
    const std::string file = dir.write("changed.iso", bytes);
    const auto reader = DiscReader::open(engine->libraries(), openImageBlocks(file), 0);
    int budget = 2000;
    if (reader) walk(*reader, "", 0, budget);
    return 2000 - budget;
  }
};

TEST_F(MalformedTest, NoDamageMakesTheReaderCrashOrHang) {
  const std::string good = goodImage();
  ASSERT_EQ(look(good), 48);
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    std::string bad = good;
    // Descriptors and folders lie in front; most changes shall hit them.
    for (int i = 0; i < 40; ++i)
      bad[random() % std::min<std::size_t>(bad.size(), 262144)] ^= static_cast<char>(random());
    look(bad);
  }
  for (std::size_t size : {0, 1, 2048, 32768, 34816, 65536, 69632, 80000})
    look(good.substr(0, size));
  std::string noise(400'000, '\0');
  for (char& c : noise) c = static_cast<char>(random());
  EXPECT_EQ(look(noise), 0);
}

TEST_F(MalformedTest, AFolderThatHoldsItselfIsWalkedOnlyAsDeepAsAsked) {
  std::string image = goodImage();
  // The entry of F1 gets the place of its parent, in every tree of the image.
  const auto rootAt = [&](std::size_t descriptor) { return image.substr(descriptor + 156 + 2, 8); };
  for (std::size_t at = 0; (at = image.find("\x02"
                                            "F1",
                                            at)) != std::string::npos;
       ++at)
    image.replace(at - 30, 8, rootAt(16 * 2048));
  EXPECT_GT(look(image), 48);
}

TEST_F(MalformedTest, MissingBytesAreAnErrorAndNeverZeros) {
  blank(DiscCdR);
  insert("\\", "data", dir.write("data", std::string(1'000'000, 'd')));
  ASSERT_EQ(prepareAndBurn().error, 0);
  std::filesystem::resize_file(image(), std::filesystem::file_size(image()) - 500'000);
  engine->do_EjectMedium();
  engine->do_LoadMedium();
  EXPECT_EQ(disc->doGetInfo('V', "data").size, Fixed4(1'000'000));
  EXPECT_EQ(readDisc("data"), "<unreadable>");
  const auto target = LinuxTargetFolders(disc.get()).open(dir.makeFolder("target"));
  EXPECT_EQ(target->doCopyFileProgress("V:\\data", "data", {}).code, EIO);
}

/// Two files in a row become one of two sections, as files of 4 GiB and more are stored.
TEST_F(MalformedTest, AFileOfTwoSectionsIsReadAcrossThem) {
  for (const std::size_t first : {1'024'000U, 1'000'000U}) {
    engine->do_ClearAll();
    blank(DiscCdR);
    const std::string a(first, 'a'), b(900'000, 'b');
    insert("\\", "piece1", dir.write("a", a));
    insert("\\", "piece2", dir.write("b", b));
    ASSERT_EQ(prepareAndBurn().error, 0);
    const std::string file = image();
    std::string bytes = TempDir::read(file);
    constexpr unsigned char MoreSections = 0x80;
    for (std::size_t at = 0; (at = bytes.find("PIECE", at)) != std::string::npos; at += 5) {
      if (bytes[at + 5] == '1') bytes[at - 8] = static_cast<char>(MoreSections);
      bytes[at + 5] = '1';
    }
    for (std::size_t at = 0; (at = bytes.find("piece2", at)) != std::string::npos;)
      bytes[at + 5] = '1';
    dir.write("shelf/" + std::filesystem::path(file).filename().string(), bytes);
    ASSERT_TRUE(shelf->insert('V', file));
    EXPECT_EQ(disc->doGetInfo('V', "piece1").size.whole(), a.size() + b.size());
    EXPECT_TRUE(readDisc("piece1") == a + b) << first;
    const std::string target = dir.makeFolder("target");
    EXPECT_TRUE(
        LinuxTargetFolders(disc.get()).open(target)->doCopyFileProgress("V:\\piece1", "out", {}));
    EXPECT_TRUE(TempDir::read(target + "/out") == a + b) << first;
    std::filesystem::remove(target + "/out");
    shelf->remove('V');
  }
}

TEST_F(MalformedTest, AFileIsReadAtAnyPlaceAndTwiceAtOnce) {
  blank(DiscCdR);
  std::string content(3'000'000, '\0');
  for (std::size_t i = 0; i < content.size(); ++i) content[i] = static_cast<char>(i / 7 ^ i);
  insert("\\", "data", dir.write("data", content));
  ASSERT_EQ(prepareAndBurn().error, 0);
  const auto one = disc->open('V', "data");
  const auto two = disc->open('V', "data");
  ASSERT_TRUE(one && two);
  std::string piece(300'000, '\0');
  for (const std::int64_t place :
       {0, 5, 2'047, 2'999'000, 1'234'567, 4'096, 4'096, 266'240, 2'899'968, 5}) {
    for (const auto& stream : {one.get(), two.get()}) {
      const std::int64_t got = stream->read(place, piece.data(), piece.size());
      EXPECT_EQ(piece.substr(0, static_cast<std::size_t>(got)),
                content.substr(static_cast<std::size_t>(place), piece.size()));
    }
  }
  EXPECT_EQ(one->read(3'000'000, piece.data(), 1), 0);
}

}  // namespace
}  // namespace korvenal::test
