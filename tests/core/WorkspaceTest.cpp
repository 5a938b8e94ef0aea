#include "core/Workspace.h"

#include <gtest/gtest.h>

#include "support/Workbench.h"

namespace korvenal::test {

TEST(Workspace, TemporaryFolderFallsBackToTheApplicationFolder) {
  Workbench bench;
  const std::string wanted = bench.folder.makeFolder("private");
  bench.workspace.doCheckTempFolder(bench.files, wanted);
  EXPECT_EQ(bench.workspace.TempFolder, bench.folder / "private/");

  bench.workspace.doCheckTempFolder(bench.files, bench.folder / "missing");
  EXPECT_EQ(bench.workspace.TempFolder, bench.workspace.applicationFolder + "TEMP/");
  EXPECT_TRUE(bench.files.doFolderExists(bench.workspace.TempFolder));

  std::filesystem::remove(bench.workspace.TempFolder);
  bench.folder.write("app/TEMP", "a file where the folder should be");
  bench.workspace.doCheckTempFolder(bench.files, "");
  EXPECT_EQ(bench.workspace.TempFolder, bench.workspace.applicationFolder);
}

}  // namespace korvenal::test
