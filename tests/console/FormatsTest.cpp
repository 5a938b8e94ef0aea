#include <algorithm>
#include <filesystem>
#include <fstream>

#include "console/ConsoleFixture.h"
#include "console/OtherProgram.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

/// Follows docs/formats.md with tools that are not ours.
class Formats : public ConsoleFixture {
 protected:
  /// What a program that is not ours prints.
  std::string tool(const std::vector<std::string>& words) {
    EXPECT_EQ(runProgram(words, temp / "printed"), 0) << words[0];
    return test::TempDir::read(temp / "printed");
  }
  /// The script of the page, as a file.
  std::string script() {
    const std::string page =
        test::TempDir::read(std::string(KORVENAL_SOURCE_DIR) + "/docs/formats.md");
    const std::string head = "```python\n";
    const std::size_t begin = page.find(head) + head.size();
    return temp.write("list.py", page.substr(begin, page.find("```", begin) - begin));
  }
  /// The content of the first disc, unpacked from its image.
  std::string unpackedDisc() {
    const std::string folder = temp.makeFolder("unpacked");
    for (const auto& file : fs::directory_iterator(temp / "app/Discs"))
      if (file.path().extension() == ".iso") tool({"bsdtar", "-xf", file.path(), "-C", folder});
    return folder + "/";
  }
};

TEST_F(Formats, OtherToolsListABackupAndHoldItsFiles) {
  temp.write("source/deep/a.txt", "content of a");
  temp.write("source/\xC3\xA4.txt", "umlaut");
  ASSERT_EQ(run("default ExcludeTopFolder 1\nnew Demo\nset comboDiscType 0\nadd '" + source +
                "'\nbackup\n")
                .code,
            ExitCode::Ok);
  const std::string disc = unpackedDisc();
  EXPECT_EQ(test::TempDir::read(disc + "deep/a.txt"), "content of a");
  std::string index;
  for (const auto& file : fs::directory_iterator(disc))
    if (file.path().extension() == ".bdx") index = file.path();
  ASSERT_THAT(fs::path(index).filename(), StartsWith("_KORVEN{Demo("));
  const std::string listed = tool({"/usr/bin/python3", script(), index});
  EXPECT_THAT(listed, StartsWith("Backup of Demo"));
  EXPECT_THAT(listed, HasSubstr("folder\t1\t0\t"));
  EXPECT_THAT(listed, HasSubstr("file\t1\t12\t"));
  EXPECT_THAT(listed, HasSubstr("\tdeep\\a.txt\n"));
  EXPECT_THAT(listed, HasSubstr("\xC3\xA4.txt\n"));
}

TEST_F(Formats, PiecesTakenByOtherToolsAreJoinedAsThePageTells) {
  // Not all zeros, and more than a disc holds.
  const std::string film = temp.sparse("source/film.avi", 760'000'000);
  {
    std::fstream out(film, std::ios::in | std::ios::out | std::ios::binary);
    for (std::int64_t at = 0; at < 760'000'000; at += 10'000'019) out.seekp(at) << at;
  }
  ASSERT_EQ(
      run("default ExcludeTopFolder 1\ndefault Notice 1\nnew Demo\nset comboDiscType 0\nadd '" +
          source + "'\nbackup\n")
          .code,
      ExitCode::Ok);
  const std::string folder = temp.makeFolder("pieces");
  std::vector<std::string> images;
  for (const auto& file : fs::directory_iterator(temp / "app/Discs"))
    if (file.path().extension() == ".iso") images.push_back(file.path());
  ASSERT_EQ(images.size(), 2U);
  std::sort(images.begin(), images.end());
  tool({"bsdtar", "-xf", images[0], "-C", folder, "--strip-components=2", "film.avi/*"});
  tool({"xorriso", "-osirrox", "on", "-indev", images[1], "-extract", "/film.avi", folder});
  const std::string page =
      test::TempDir::read(std::string(KORVENAL_SOURCE_DIR) + "/docs/formats.md");
  const std::size_t at = page.find("    cat ") + 4;
  tool({"sh", "-c", "cd '" + folder + "' && " + page.substr(at, page.find('\n', at) - at)});
  tool({"cmp", film, folder + "/film.avi"});
}

}  // namespace
}  // namespace korvenal::console
