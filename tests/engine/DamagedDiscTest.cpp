#include <cstring>
#include <fstream>

#include "engine/EngineFixture.h"

namespace korvenal::test {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Where a folder's records stand in an image, and what a person could have changed there.
class DamagedDiscTest : public EngineFixture {
 protected:
  static constexpr std::size_t LengthAt = 0, BlockAt = 2, SizeAt = 10, NameLengthAt = 32,
                               NameAt = 33;

  /// A disc of one session with some folders and files, for more to be appended.
  void burnTree(bool joliet = true) {
    blank(DiscDvdPlusRw);
    ASSERT_EQ(erase().error, 0);
    engine->do_SetJolietFS(joliet ? -1 : 0);
    const std::string source = dir.write("source", std::string(3000, 's'));
    for (int i = 0; i < 40; ++i) insert("F\\sub", "file " + std::to_string(i), source);
    insert("F", std::string(200, 'l'), source);  // its name goes on elsewhere
    insert("\\", "top", source);
    ASSERT_EQ(prepareAndBurn().error, 0);
    content_ = TempDir::read(image());
  }
  /// The first record of the disc that has the name in its own field, of the tree with short names.
  std::size_t record(const std::string& name) const {
    const std::size_t at = content_.find(name);
    EXPECT_NE(at, std::string::npos);
    return at - NameAt;
  }
  std::size_t blockOf(std::size_t at) const { return at / BlockBytes; }
  std::uint32_t number(std::size_t at) const {
    std::uint32_t value = 0;
    std::memcpy(&value, content_.data() + at, sizeof value);
    return value;
  }
  void setNumber(std::string& content, std::size_t at, std::uint32_t value) const {
    for (std::size_t i = 0; i < 4; ++i) {
      content[at + i] = static_cast<char>(value >> 8 * i);
      content[at + 7 - i] = static_cast<char>(value >> 8 * i);
    }
  }
  /// Puts another content into the tray.
  void spoil(const std::string& content) {
    std::ofstream(image(), std::ios::binary) << content;
    ASSERT_TRUE(shelf->insert('V', image()));
  }
  /// Tries to add a session; the reason why not.
  std::string append() {
    engine->do_ClearAll();
    if (engine->do_ImportSession(0, "\\") == 0) return engine->do_GetErrorString();
    insert("\\", "new", dir.write("new", "new"));
    return prepareAndBurn().error == 0 ? "" : engine->do_GetErrorString();
  }

  std::string content_;
};

TEST_F(DamagedDiscTest, AWrongByteInARecordLosesItsFolderAndNothingElse) {
  burnTree();
  const std::size_t file = record("FILE_0");
  const std::size_t folder = blockOf(file) * BlockBytes;
  ASSERT_GT(file, folder);
  const auto expectLost = [&](std::size_t at, int byte, const char* what) {
    std::string content = content_;
    content[at] = static_cast<char>(byte);
    if (content == content_) return;
    spoil(content);
    EXPECT_THAT(disc->listFolder('V', "F\\sub"), IsEmpty()) << what << byte;
    EXPECT_EQ(readDisc("top"), std::string(3000, 's')) << what << byte;
    EXPECT_THAT(append(), HasSubstr("\\F\\sub")) << what << byte;
    EXPECT_EQ(TempDir::read(image()), content) << "nothing was written";
  };
  for (const int length : {1, 2, 16, 33, 34, 111, 254, 255})
    expectLost(file + LengthAt, length, "length ");
  expectLost(folder + LengthAt, 255, "length of the folder's own record ");
  expectLost(file + NameLengthAt, 0, "length of the name ");
  expectLost(file + NameLengthAt, 250, "length of the name ");
  expectLost(file + BlockAt, content_[file + BlockAt] ^ 1, "block ");
  expectLost(folder + SizeAt + 1, 1, "size of the folder ");
  // What stands behind the name, entry by entry.
  const std::size_t px = content_.find("PX", file), nm = content_.find("NM", file);
  for (const int length : {0, 1, 3, 4, 255}) {
    expectLost(px + 2, length, "length of the kind ");
    expectLost(nm + 2, length, "length of the long name ");
  }
  expectLost(px + 5, 0x50, "unknown kind ");
  expectLost(nm + 5, '/', "separator in the name ");
  spoil(content_);
  EXPECT_EQ(disc->listFolder('V', "F\\sub").size(), 40U);
  EXPECT_EQ(append(), "");
  EXPECT_EQ(readDisc("F\\sub\\file 39"), std::string(3000, 's'));
}

TEST_F(DamagedDiscTest, ATreeOfWideNamesIsLookedAtAsWell) {
  burnTree();
  // Without the mark of the others, the wide names are those that are read.
  std::string plain = content_;
  for (std::size_t at = 0; (at = plain.find("SP\x07\x01\xBE\xEF", at)) != std::string::npos;)
    plain[at + 4] = 0;
  spoil(plain);
  ASSERT_EQ(disc->listFolder('V', "F\\sub").size(), 40U);
  const std::size_t wide =
      plain.find(std::string("f\0i\0l\0e\0 \0"
                             "7",
                             11));
  ASSERT_NE(wide, std::string::npos);
  const std::size_t file = wide - 1 - NameAt;
  for (const int length : {2, 16, 33, 35, 255}) {
    std::string content = plain;
    content[file + LengthAt] = static_cast<char>(length);
    spoil(content);
    EXPECT_THAT(disc->listFolder('V', "F\\sub"), IsEmpty()) << length;
    EXPECT_THAT(append(), HasSubstr("\\F\\sub")) << length;
  }
}

TEST_F(DamagedDiscTest, FoldersThatNeverEndFailTheAppendWithTheirReason) {
  burnTree();
  const std::size_t folder = record("SUB");
  const std::size_t above = blockOf(folder) * BlockBytes;
  std::string content = content_;
  setNumber(content, folder + BlockAt, number(above + BlockAt));
  setNumber(content, folder + SizeAt, number(above + SizeAt));
  spoil(content);
  EXPECT_THAT(disc->listFolder('V', "F\\sub\\sub\\sub"), ::testing::Contains("sub"));
  EXPECT_THAT(append(), HasSubstr("contains itself"));

  // A name that goes on in an area that goes on in itself.
  const std::size_t ce = content_.find(std::string("CE\x1C\x01", 4), above);
  ASSERT_LT(ce, above + BlockBytes);
  const std::uint32_t block = number(ce + 4), offset = number(ce + 12);
  content = content_;
  const std::size_t area = std::size_t{block} * BlockBytes + offset;
  content.replace(area, 28, content_, ce, 28);
  setNumber(content, ce + 20, 28);
  setNumber(content, area + 20, 28);
  spoil(content);
  EXPECT_THAT(disc->listFolder('V', "F"), IsEmpty());
  EXPECT_THAT(append(), HasSubstr("\\F "));
  // An area of four thousand million bytes.
  content = content_;
  setNumber(content, ce + 20, 0xFFFFFF00);
  spoil(content);
  EXPECT_THAT(append(), HasSubstr("\\F "));
}

TEST_F(DamagedDiscTest, FoldersThatLieTooDeepFailTheAppend) {
  const std::string source = dir.write("source", "");
  const auto chain = [](int levels) {
    std::string path = "d";
    for (int level = 1; level < levels; ++level) path += "\\d";
    return path;
  };
  for (const int levels : {1000, 1001}) {
    blank(DiscDvdPlusR);
    engine->do_ClearAll();
    insert(chain(levels), "x", source);
    ASSERT_EQ(prepareAndBurn().error, 0) << engine->do_GetErrorString();
    EXPECT_THAT(append(), HasSubstr(levels == 1000 ? "" : "too deep"));
    shelf->remove('V');
  }
}

TEST_F(DamagedDiscTest, AnUnreadableFolderFailsTheAppend) {
  burnTree();
  const std::size_t bad = blockOf(record("FILE_0"));
  dir.write("shelf/disc.iso.disc",
            TempDir::read(image() + ".disc") + "bad-block=" + std::to_string(bad) + "\n");
  ASSERT_TRUE(shelf->insert('V', image()));
  EXPECT_THAT(append(), HasSubstr("cannot be read"));
  EXPECT_EQ(TempDir::read(image()), content_);
}

}  // namespace
}  // namespace korvenal::test
