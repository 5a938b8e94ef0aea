#include <filesystem>
#include <fstream>

#include "engine/EngineFixture.h"
#include "engine/Gate.h"
#include "platform/linux/engine/LibburnDevice.h"
#include "platform/linux/engine/MmcDrive.h"
#include "platform/linux/engine/PatientDevice.h"
#include "platform/linux/engine/VolumeLabel.h"

namespace korvenal::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// What the drive under test is and does.
struct Script {
  MmcReport report;
  MmcDevice::Tray tray = MmcDevice::Tray::Loaded;
  bool present = true;
  bool inUseByOthers = false;
  std::string refusal;
  int holds = 0;
  Gate* gate = nullptr;    ///< every answer that a drive may be slow with waits there
  Gate* spinUp = nullptr;  ///< a closed tray waits there for its disc, until it is given up
};

/// A drive that says of its disc what the script says and keeps it in a file, by way of the
/// burning library.
class ScriptedDevice : public LibburnDevice {
 public:
  ScriptedDevice(Script& script, const std::string& file)
      : LibburnDevice(Address{"stdio:" + file}), script_(script) {}

  bool isPresent() const override { return script_.present; }
  std::string refusal() const override { return script_.refusal; }
  std::string devicePath() const override { return "SCSI#CDROM&VEN_A&PROD_B&REV_C#sr0"; }
  Tray tray() override {
    take();
    return script_.tray;
  }
  void openTray() override {
    take();
    script_.tray = Tray::Open;
  }
  void closeTray() override {
    take();
    script_.tray = Tray::Loaded;
    if (script_.spinUp != nullptr) script_.spinUp->pass();
  }
  void giveUpWaiting() override {
    if (script_.spinUp != nullptr) script_.spinUp->open();
  }
  void release() override {
    take();
    LibburnDevice::release();
  }
  std::int64_t read(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) override {
    take();
    return LibburnDevice::read(first, count, buffer);
  }
  void setSpeed(std::int32_t, std::int32_t) override { take(); }
  bool hold(std::string& why) override {
    take();
    if (script_.inUseByOthers) why = "The drive is in use by another program";
    if (script_.inUseByOthers || !LibburnDevice::hold(why)) return false;
    ++script_.holds;
    return true;
  }
  std::vector<int> profiles() override {
    take();
    return {MmcCdR, MmcDvdPlusRw};
  }
  MmcReport report() override {
    take();
    return script_.report;
  }

 private:
  void take() {
    if (script_.gate != nullptr) script_.gate->pass();
  }

  Script& script_;
};

class MmcDriveTest : public EngineFixture {
 protected:
  MmcDriveTest() {
    script.report = {.profile = MmcDvdPlusRw,
                     .medium = MmcReport::Medium::Blank,
                     .freeBlocks = 20000,
                     .format = MmcReport::Format::Formatted,
                     .formatBlocks = 20000,
                     .writeSpeeds = {5540, 3324},
                     .readSpeeds = {11080}};
    file = dir.sparse("medium", 20000 * BlockBytes);
    plugIn(std::make_unique<ScriptedDevice>(script, file));
  }
  void plugIn(std::unique_ptr<MmcDevice> device) {
    disc.reset();
    engine.reset();
    drive = std::make_unique<MmcDrive>('D', std::move(device));
    engine = std::make_unique<Engine>(clock, std::vector<Drive*>{drive.get()}, calls);
    disc = std::make_unique<EngineDiscFiles>(*engine);
    engine->do_SelectDeviceByLetter('D');
  }
  ~MmcDriveTest() override {
    disc.reset();
    engine.reset();
  }
  std::string read(const std::string& path) {
    const auto stream = disc->open('D', path);
    if (!stream) return "<missing>";
    std::string content(static_cast<std::size_t>(stream->info().size.whole()), '\0');
    return stream->read(0, content.data(), content.size()) < 0 ? "<unreadable>" : content;
  }

  Script script;
  std::string file;
  std::unique_ptr<MmcDrive> drive;
};

TEST_F(MmcDriveTest, SessionsAreBurnedFoundReadAndErased) {
  EXPECT_NE(engine->do_TestUnitReady(), 0);
  EXPECT_EQ(engine->do_DiscIs(), DiscDvdPlusRw);
  EXPECT_EQ(engine->do_GetFreeBlocksOnDisc(), engine->do_GetTotalBlocksOnDisc());
  std::vector<std::uint32_t> starts;
  for (const std::string name : {"one", "two", "three"}) {
    engine->do_ClearAll();
    engine->do_ImportSession(0, "\\");
    insert("F", name, dir.write(name, name + std::string(200'000, 'x')));
    engine->do_SetVolumeID("Backup #1");
    const std::int32_t free = engine->do_GetFreeBlocksOnDisc();
    ASSERT_TRUE(prepare()) << engine->do_GetErrorString();
    const std::int32_t size = engine->do_GetImageSize();
    const Ending end = burn([&] {
      engine->do_UnlockMedium();  // as the stop button does
      EXPECT_EQ(engine->do_TestUnitReady(), 0);
    });
    ASSERT_EQ(end.error, 0) << engine->do_GetErrorString();
    EXPECT_GE(free - engine->do_GetFreeBlocksOnDisc(), size);
    EXPECT_EQ(engine->do_SessionsOnDisc(), 1);
    const SessionChain chain = readSessionChain(*openImageBlocks(file));
    ASSERT_EQ(chain.starts.size(), starts.size() + 1);
    starts.push_back(chain.starts.back());
    EXPECT_EQ(chain.starts, starts);
    EXPECT_EQ(starts.back() % 32, 0U);
  }
  EXPECT_THAT(disc->listFolder('D', "F"), ElementsAre("one", "three", "two"));
  EXPECT_THAT(read("F\\two"), StartsWith("twoxx"));
  EXPECT_THAT(run({"xorriso", "-indev", "stdio:" + file, "-toc"}), HasSubstr("ISO session  :   3"));
  EXPECT_THAT(run({"bsdtar", "-tf", file}), HasSubstr("F/one"));
  EXPECT_THAT(run({"7z", "l", file}), HasSubstr("three"));

  ASSERT_EQ(erase().error, 0) << engine->do_GetErrorString();
  EXPECT_EQ(read("F\\two"), "<missing>");
  EXPECT_EQ(engine->do_GetFreeBlocksOnDisc(), engine->do_GetTotalBlocksOnDisc());
}

TEST_F(MmcDriveTest, ADiscWithOtherContentsIsNotBlank) {
  for (const std::uint32_t block : {0U, 16U, 31U, 256U}) {
    std::fstream(file, std::ios::in | std::ios::out | std::ios::binary).seekp(block * 2048 + 7)
        << "BEA01";
    EXPECT_EQ(engine->do_SessionsOnDisc(), 1);
    EXPECT_EQ(engine->do_GetFreeBlocksOnDisc(), 0) << block;
    EXPECT_GT(engine->do_Writable(), 0);
    EXPECT_EQ(engine->do_ImportSession(0, "\\"), 0);
    insert("\\", "a", dir.write("a", "a"));
    EXPECT_FALSE(prepare());
    ASSERT_EQ(erase().error, 0) << engine->do_GetErrorString();
    EXPECT_EQ(engine->do_GetFreeBlocksOnDisc(), 20000) << block;
    EXPECT_TRUE(prepare());
    engine->do_EjectMedium();  // it is looked at anew
    engine->do_LoadMedium();
    EXPECT_EQ(engine->do_GetFreeBlocksOnDisc(), 20000) << block;
    engine->do_UnlockMedium();
  }
}

TEST_F(MmcDriveTest, ADiscThatTheDriveCannotTellFromTheOneBeforeIsReadAnew) {
  namespace fs = std::filesystem;
  constexpr std::uintmax_t TrackBytes = 2'000'000;
  std::vector<std::string> media;
  for (const std::string name : {"first", "other"}) {
    engine->do_ClearAll();
    engine->do_SetVolumeID(name);  // both may be burned within one second
    insert("\\", name, dir.write(name, name));
    ASSERT_TRUE(prepare());
    ASSERT_EQ(burn().error, 0) << engine->do_GetErrorString();
    media.push_back(dir / ("medium of " + name));
    fs::copy_file(file, media.back());
    fs::resize_file(media.back(), TrackBytes);
    fs::resize_file(file, 0);
    fs::resize_file(file, static_cast<std::uintmax_t>(20000 * BlockBytes));
    engine->do_UnlockMedium();
  }
  for (const std::size_t medium : {0U, 1U, 0U}) {
    engine->do_UnlockMedium();
    fs::copy_file(media[medium], file, fs::copy_options::overwrite_existing);
    EXPECT_NE(engine->do_TestUnitReady(), 0);
    EXPECT_THAT(disc->listFolder('D', ""), ElementsAre(medium == 0 ? "first" : "other"));
    EXPECT_EQ(disc->sessions('D').size(), 1U);
  }
}

TEST_F(MmcDriveTest, ASimulatedBurnLeavesTheDiscAsItIs) {
  insert("\\", "a", dir.write("a", "a"));
  engine->do_SetTestWrite(-1);
  ASSERT_TRUE(prepare());
  burn();
  EXPECT_EQ(read("a"), "<missing>");
  EXPECT_FALSE(readVolumeHead(*openImageBlocks(file), 0));
}

TEST_F(MmcDriveTest, TheDriveIsHeldOnlyWhileItIsUsed) {
  EXPECT_NE(engine->do_DeviceIsBurner(), 0);
  EXPECT_EQ(script.holds, 0) << "a look for drives takes none";
  engine->do_TestUnitReady();
  engine->do_DiscIs();
  engine->do_GetFreeBlocksOnDisc();
  EXPECT_EQ(script.holds, 1);
  engine->do_UnlockMedium();
  engine->do_DiscIs();
  EXPECT_EQ(script.holds, 2);
  engine->do_UnlockMedium();
  EXPECT_NE(engine->do_DeviceCan(17), 0);
  EXPECT_EQ(engine->do_DeviceCan(18), 0);
  engine->do_DiscIs();
  EXPECT_EQ(script.holds, 4) << "asked once, and given back";
  engine->do_SetDeviceSpeed(4000, 4000);
  EXPECT_EQ(engine->do_GetWriteSpeed(), 3324);
  engine->do_EjectMedium();
  EXPECT_EQ(engine->do_TestUnitReady(), 0);
  engine->do_LoadMedium();
  EXPECT_NE(engine->do_TestUnitReady(), 0);
}

TEST_F(MmcDriveTest, ADriveInUseOrRefusedIsToldInASentence) {
  script.inUseByOthers = true;
  EXPECT_EQ(engine->do_TestUnitReady(), 0);
  EXPECT_EQ(engine->do_DiscIs(), 0);
  EXPECT_THAT(engine->do_GetErrorString(), HasSubstr("another program"));
  EXPECT_THAT(engine->problem('D'), HasSubstr("another program"));
  script.inUseByOthers = false;
  EXPECT_NE(engine->do_TestUnitReady(), 0) << "as soon as it is free";
  EXPECT_EQ(engine->problem('D'), "");

  script.refusal = "You have no permission to use /dev/sr0";
  EXPECT_EQ(engine->do_SelectDeviceByLetter('D'), 0);
  EXPECT_EQ(engine->problem('D'), script.refusal);
}

TEST_F(MmcDriveTest, AnotherDiscIsNeverReadAsTheOldOne) {
  insert("\\", "a", dir.write("a", std::string(3'000'000, 'a')));
  ASSERT_EQ(prepareAndBurn().error, 0);
  const auto stream = disc->open('D', "a");
  ASSERT_TRUE(stream);
  std::string piece(2048, '\0');
  EXPECT_EQ(stream->read(0, piece.data(), piece.size()), 2048);
  engine->do_UnlockMedium();
  EXPECT_EQ(stream->read(1'500'000, piece.data(), piece.size()), 2048) << "held again by itself";
  engine->do_UnlockMedium();
  script.report.freeBlocks = 1;
  EXPECT_LT(stream->read(2'900'000, piece.data(), piece.size()), 0);
}

TEST_F(MmcDriveTest, AnUnpluggedDriveIsGoneAtOnce) {
  insert("\\", "large", dir.sparse("large", 30'000'000));
  ASSERT_TRUE(prepare());
  const Ending end = burn([&] {
    if (engine->do_GetBlocksWritten() == 0) return;
    script.present = false;
    engine->do_AbortBurn();
  });
  EXPECT_TRUE(end.finished);
  EXPECT_EQ(engine->do_TestUnitReady(), 0);
  EXPECT_EQ(engine->do_DiscIs(), 0);
  EXPECT_EQ(engine->do_SelectDeviceByLetter('D'), 0);
  EXPECT_EQ(engine->devicePath('D'), "");
}

TEST_F(MmcDriveTest, ASlowDriveLetsTheProgramGoOnAndIsOccupiedMeanwhile) {
  Gate gate;
  int pumps = 0;
  plugIn(std::make_unique<PatientDevice>(std::make_unique<ScriptedDevice>(script, file), calls));
  insert("\\", "a", dir.write("a", std::string(3'000'000, 'a')));
  ASSERT_EQ(prepareAndBurn().error, 0);
  calls.setPump([&] {
    ++pumps;
    // What buttons and other windows may ask for in the meantime.
    engine->do_UnlockMedium();
    engine->do_EjectMedium();
    engine->do_LoadMedium();
    EXPECT_EQ(engine->do_TestUnitReady(), 0);
    EXPECT_EQ(disc->doGetInfo('D', "a").kind, FileInfo::Kind::Missing);
    gate.open();
  });
  script.gate = &gate;

  const auto preparation = [&](bool stop) {
    return [&, stop, atWork = false]() mutable {
      if (!std::exchange(atWork, true)) return false;
      EXPECT_EQ(engine->do_TestUnitReady(), 0);
      EXPECT_EQ(disc->doGetInfo('D', "a").kind, FileInfo::Kind::Missing);
      gate.open();
      return stop;
    };
  };
  struct Step {
    const char* name;
    std::function<bool()> works;
  };
  const Step steps[] = {
      {"what it can", [&] { return engine->do_DeviceCan(17) != 0; }},
      {"ready", [&] { return engine->do_TestUnitReady() != 0; }},
      {"speed",
       [&] { return engine->do_SetDeviceSpeed(0, 0), engine->do_GetWriteSpeed() == 5540; }},
      {"unlock", [&] { return engine->do_UnlockMedium(), engine->do_GetState() == 0; }},
      {"which disc", [&] { return engine->do_DiscIs() == DiscDvdPlusRw; }},
      {"sessions", [&] { return engine->do_ImportSession(0, "\\", preparation(false)) != 0; }},
      {"reading", [&] { return read("a") == std::string(3'000'000, 'a'); }},
      {"preparing", [&] { return engine->do_Prepare(preparation(false)) > 0; }},
      {"eject", [&] { return engine->do_EjectMedium(), engine->do_TestUnitReady() == 0; }},
      {"load", [&] { return engine->do_LoadMedium(), engine->do_TestUnitReady() != 0; }},
  };
  for (const Step& step : steps) {
    pumps = 0;
    EXPECT_TRUE(step.works()) << step.name;
    EXPECT_GT(pumps, 0) << step.name;
  }
  script.gate = nullptr;
  EXPECT_EQ(prepareAndBurn().error, 0) << engine->do_GetErrorString();

  Gate spinUp;
  script.spinUp = &spinUp;
  calls.setPump([&] { engine->do_UnlockMedium(); });
  engine->do_LoadMedium();
  EXPECT_EQ(script.tray, MmcDevice::Tray::Loaded) << "a stop ends the wait for a disc";
  calls.setPump({});
}

TEST(LibburnDeviceTest, AMachineWithoutDrivesHasNone) {
  LibburnDevice none("korvenal-no-such-drive");
  EXPECT_FALSE(none.isPresent());
  EXPECT_NE(none.tray(), MmcDevice::Tray::Loaded);
  none.openTray();
  none.closeTray();
  SlowCalls calls;
  EXPECT_EQ(makeMmcDrives(calls).size(), 18U);
}

}  // namespace
}  // namespace korvenal::test
