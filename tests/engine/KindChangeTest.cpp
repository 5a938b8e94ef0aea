#include "engine/EngineFixture.h"

namespace korvenal::test {
namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

using KindChangeTest = EngineFixture;

TEST_F(KindChangeTest, TheNewerOfTwoBackupsHasTheNameWhateverKindItIs) {
  blank(DiscDvdPlusR);
  insert("\\", "file", dir.write("1", "old"));
  insert("folder\\below", "lost", dir.write("2", "old"));
  insert("folder", "a", dir / "2");
  insert("both", "kept", dir.write("3", "kept"));
  insert("\\", "beside", dir / "3");
  ASSERT_EQ(prepareAndBurn().error, 0);

  engine->do_ClearAll();
  ASSERT_NE(engine->do_ImportSession(0, "\\"), 0) << engine->do_GetErrorString();
  engine->do_SetReplaceFile(-1);
  // A file that was split now, and a folder that became a file.
  insert("file", "file.001", dir.write("4", "piece 1"));
  insert("file", "file.002", dir.write("5", "piece 2"));
  insert("\\", "folder", dir.write("6", "a file now"));
  insert("both", "added", dir.write("7", "added"));
  ASSERT_EQ(prepareAndBurn().error, 0) << engine->do_GetErrorString();
  EXPECT_THAT(disc->listFolder('V', ""), UnorderedElementsAre("beside", "both", "file", "folder"));
  EXPECT_THAT(disc->listFolder('V', "file"), ElementsAre("file.001", "file.002"));
  EXPECT_EQ(readDisc("file\\file.002"), "piece 2");
  EXPECT_EQ(readDisc("folder"), "a file now");
  EXPECT_EQ(readDisc("both\\kept") + readDisc("both\\added") + readDisc("beside"), "keptaddedkept");
}

TEST_F(KindChangeTest, NamesOfOneBackupNeverReplaceEachOther) {
  blank(DiscDvdPlusR);
  engine->do_SetReplaceFile(-1);
  insert("name", "inside", dir.write("1", "inside"));
  insert("\\", "name", dir.write("2", "beside"));
  ASSERT_EQ(prepareAndBurn().error, 0);
  EXPECT_EQ(readDisc("name\\inside") + readDisc("name (2)"), "insidebeside");
}

}  // namespace
}  // namespace korvenal::test
