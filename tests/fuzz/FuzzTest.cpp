#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <random>

#include "fuzz/FuzzTargets.h"
#include "support/TempDir.h"

namespace korvenal::test {
namespace {

struct Reader {
  const char* name;  ///< of the folder with its corpus
  FuzzTarget target;
};

void PrintTo(const Reader& reader, std::ostream* out) {
  *out << reader.name;
}

/// Changes an input in the ways that break readers: bits, lengths, order, numbers, and pieces of
/// another input. The same seed gives the same changes.
class Mutator {
 public:
  explicit Mutator(unsigned seed) : random_(seed) {}

  std::string changed(std::string text, const std::string& other) {
    for (std::size_t changes = 1 + below(4); changes > 0; --changes) change(text, other);
    return text;
  }

 private:
  std::size_t below(std::size_t end) { return end == 0 ? 0 : random_() % end; }

  void change(std::string& text, const std::string& other) {
    static const std::string numbers[] = {"-1", "99999999999999999999", "4294967296", "\xFF\xFF",
                                          std::string(4, '\0')};
    const std::size_t at = below(text.size() + 1), length = below(64);
    switch (below(6)) {
      case 0:
        if (at < text.size()) text[at] = static_cast<char>(text[at] ^ 1 << below(8));
        break;
      case 1:
        text.erase(at, length);
        break;
      case 2:
        text.insert(at, text.substr(below(text.size() + 1), length));
        break;
      case 3:
        text.insert(at, other.substr(below(other.size() + 1), length));
        break;
      case 4:
        text.replace(at, below(12), numbers[below(std::size(numbers))]);
        break;
      default:
        text.resize(at);
    }
  }

  std::mt19937 random_;
};

class Fuzz : public testing::TestWithParam<Reader> {};

TEST_P(Fuzz, TheCorpusAndItsMutationsAreReadWithoutHarm) {
  std::vector<std::string> corpus;
  const std::string folder = std::string(KORVENAL_SOURCE_DIR) + "/tests/fuzz/corpus/";
  for (const auto& file : std::filesystem::directory_iterator(folder + GetParam().name))
    corpus.push_back(TempDir::read(file.path()));
  ASSERT_FALSE(corpus.empty());
  std::sort(corpus.begin(), corpus.end());
  for (const std::string& input : corpus) EXPECT_NO_THROW(GetParam().target(input));
  constexpr unsigned Mutations = 100;
  for (unsigned seed = 0; seed < Mutations; ++seed)
    GetParam().target(
        Mutator(seed).changed(corpus[seed % corpus.size()], corpus[(seed / 7) % corpus.size()]));
}

/// Bytes of directory records have no form that a change of the whole text would meet often.
TEST(FuzzDiscs, RandomBytesInTheBlocksOfADiscDoNoHarm) {
  constexpr std::size_t BlockBytesTold = 1024;
  constexpr unsigned FirstSeed = 1000, Discs = 300;
  std::cout << "seeds " << FirstSeed << " to " << FirstSeed + Discs - 1 << std::endl;
  const std::string disc = TempDir::read(std::string(KORVENAL_SOURCE_DIR) +
                                         "/tests/fuzz/corpus/DiscAppend/folders-and-links");
  std::vector<std::size_t> blocks;
  for (std::size_t at = 0; at + BlockBytesTold <= disc.size(); at += BlockBytesTold)
    if (disc.substr(at, BlockBytesTold).find_first_not_of('\0') != std::string::npos)
      blocks.push_back(at);
  ASSERT_FALSE(blocks.empty());
  for (unsigned seed = FirstSeed; seed < FirstSeed + Discs; ++seed) {
    std::mt19937 random(seed);
    std::string changed = disc;
    const std::size_t block = blocks[random() % blocks.size()];
    for (std::size_t changes = 1 + random() % 40; changes > 0; --changes)
      changed[block + random() % BlockBytesTold] = static_cast<char>(random());
    fuzzDiscImage(changed);
    fuzzDiscAppend(changed);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Readers, Fuzz,
    testing::Values(Reader{"IndexText", fuzzIndexText}, Reader{"IndexArchive", fuzzIndexArchive},
                    Reader{"JobFile", fuzzJobFile}, Reader{"Settings", fuzzSettings},
                    Reader{"DiscImage", fuzzDiscImage}, Reader{"DiscAppend", fuzzDiscAppend},
                    Reader{"GridFile", fuzzGridFile}),
    [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
}  // namespace korvenal::test
