#include "engine/EngineFixture.h"
#include "engine/Gate.h"

namespace korvenal::test {
namespace {

constexpr int Files = 6000;

/// Blocks of an image; while there is a gate, every reading waits there.
class GatedBlocks : public BlockReader {
 public:
  GatedBlocks(std::unique_ptr<BlockReader> blocks, Gate*& gate)
      : blocks_(std::move(blocks)), gate_(gate) {}
  std::int64_t read(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) override {
    if (gate_ != nullptr) gate_->pass();
    return blocks_->read(first, count, buffer);
  }

 private:
  std::unique_ptr<BlockReader> blocks_;
  Gate*& gate_;
};

/// A disc with a folder that takes its time, in a drive that waits for the program at every block.
class LargeFolderTest : public EngineFixture {
 protected:
  LargeFolderTest() {
    blank(DiscDvdPlusR);
    const std::string source = dir.write("source", "x");
    for (int i = 0; i < Files; ++i) insert("many", "file " + std::to_string(i), source);
    insert("\\", "alone", source);
    EXPECT_EQ(prepareAndBurn().error, 0);
    reader = DiscReader::open(engine->libraries(),
                              std::make_unique<GatedBlocks>(openImageBlocks(image()), gateInUse), 0,
                              {&calls, &release});
    EXPECT_EQ(kindOf("many"), FileInfo::Kind::Folder);
    gateInUse = &gate;
  }
  ~LargeFolderTest() override { calls.setPump({}); }

  FileInfo::Kind kindOf(const char* path) { return reader->info(path).kind; }

  Gate gate;
  Gate* gateInUse = nullptr;
  ReleaseThread release;
  std::shared_ptr<DiscReader> reader;
};

TEST_F(LargeFolderTest, LetsTheProgramGoOnWhichFindsNothingMeanwhile) {
  int pumps = 0;
  calls.setPump([&] {
    ++pumps;
    EXPECT_EQ(kindOf("alone"), FileInfo::Kind::Missing);
    EXPECT_EQ(kindOf("many\\file 7"), FileInfo::Kind::Missing);
    EXPECT_EQ(reader->openFile("alone"), nullptr);
    EXPECT_TRUE(reader->list("").empty());
    gate.open();
  });
  EXPECT_EQ(kindOf("many\\file 7"), FileInfo::Kind::File);
  EXPECT_GT(pumps, 0);
  EXPECT_EQ(reader->list("many").size(), Files);
  EXPECT_EQ(kindOf("alone"), FileInfo::Kind::File);
}

TEST_F(LargeFolderTest, ADiscThatLeavesMeanwhileIsGoneAtTheEndOfTheCall) {
  calls.setPump([&] {
    reader->detach();
    gate.open();
  });
  EXPECT_EQ(kindOf("many\\file 7"), FileInfo::Kind::Missing);
  EXPECT_EQ(kindOf("alone"), FileInfo::Kind::Missing);
  release.wait();
  EXPECT_TRUE(reader->list("many").empty());
}

}  // namespace
}  // namespace korvenal::test
