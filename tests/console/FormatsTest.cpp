#include <algorithm>
#include <filesystem>
#include <fstream>

#include "console/ConsoleFixture.h"
#include "console/OtherProgram.h"

namespace korvenal::console {
namespace {

namespace fs = std::filesystem;
using testing::_;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Ne;
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
  /// The images of all discs, by name.
  std::vector<std::string> discs() const {
    std::vector<std::string> images;
    for (const auto& file : fs::directory_iterator(temp / "app/Discs"))
      if (file.path().extension() == ".iso") images.push_back(file.path());
    std::sort(images.begin(), images.end());
    return images;
  }
  /// The lines of the index on a disc, in their fields.
  std::vector<std::vector<std::string>> indexLines(const std::string& image) {
    const std::string folder = temp.makeFolder("index") + "/";
    tool({"bsdtar", "-xf", image, "-C", folder, "*.bdx"});
    tool({"sh", "-c", "unzip -p -P ZEPHOR '" + folder + "'*.bdx >'" + folder + "text'"});
    std::vector<std::vector<std::string>> lines;
    for (const std::string& line : Text::split(test::TempDir::read(folder + "text"), '\n'))
      if (line.ends_with('\r')) lines.push_back(Text::split(line.substr(0, line.size() - 1), '\t'));
    return lines;
  }
  /// A file of 760,000,000 bytes, cut at the end of the first of two CDs.
  void expectPieceLines(const std::string& image) {
    const auto lines = indexLines(image);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0][8], "3") << "lines behind the header";
    EXPECT_EQ(lines[0][7], "2") << "pieces of all split files";
    const std::string cut = lines[2][3];
    EXPECT_THAT(lines[1],
                ElementsAre(_, "film.avi\\", "", "760000000", "3", Ne(""), "2", "1", "2", "1"));
    EXPECT_THAT(lines[2], ElementsAre(_, "film.avi\\film.avi", "", _, "4", "", "1", "1", cut, "1"));
    EXPECT_THAT(lines[3], ElementsAre(_, "film.avi\\film.avi", "",
                                      std::to_string(760'000'000 - std::stoll(cut)), "4", "", "2",
                                      std::to_string(std::stoll(cut) + 1), "760000000", "2"));
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
  const std::vector<std::string> images = discs();
  ASSERT_EQ(images.size(), 2U);
  expectPieceLines(images[0]);
  tool({"bsdtar", "-xf", images[0], "-C", folder, "--strip-components=2", "film.avi/*"});
  tool({"xorriso", "-osirrox", "on", "-indev", images[1], "-extract", "/film.avi", folder});
  const std::string page =
      test::TempDir::read(std::string(KORVENAL_SOURCE_DIR) + "/docs/formats.md");
  const std::size_t at = page.find("    cat ") + 4;
  tool({"sh", "-c", "cd '" + folder + "' && " + page.substr(at, page.find('\n', at) - at)});
  tool({"cmp", film, folder + "/film.avi"});
}

TEST_F(Formats, LabelAndVolumeSetTellTheBackup) {
  temp.write("source/a.txt", "content of a");
  const std::string job =
      "default ExcludeTopFolder 1\nnew 'Family photos 2026'\n"
      "set comboDiscType 0\nadd '" +
      source + "'\n";
  ASSERT_EQ(run(job + "backup").code, ExitCode::Ok);
  const auto header = indexLines(discs()[0])[0];
  std::string told = tool({"xorriso", "-indev", discs()[0], "-pvd_info"});
  EXPECT_THAT(told, HasSubstr("Volume Id    : Backup #1\n"));
  EXPECT_THAT(told, HasSubstr("Volume Set Id: " + header[5] + "-F Family photos 2026\n"));
  EXPECT_THAT(told, HasSubstr("App Id       : KORVENAL TO DVD\n"));

  fs::remove_all(temp / "app/Discs");
  ASSERT_EQ(run(job + "set BurnBackupIndex 0\nbackup").code, ExitCode::Ok);
  told = tool({"xorriso", "-indev", discs()[0], "-pvd_info"});
  EXPECT_THAT(told, HasSubstr("Volume Id    : Family photos 20\n"));
  EXPECT_THAT(told, HasSubstr("-F Family photos 2026\n"));
}

}  // namespace
}  // namespace korvenal::console
