#include <charconv>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <vector>

// Makes a tree of files for the benchmarks, the same one for the same numbers.

namespace {

namespace fs = std::filesystem;

struct Shape {
  std::uint64_t files = 0;
  std::uint64_t folders = 1;
  std::uint64_t depth = 12;  ///< levels of folders
  std::uint64_t bytes = 0;   ///< mean size of a file
};

bool parseNumber(const char* text, std::uint64_t& number) {
  const std::string_view digits = text;
  const auto [end, error] = std::from_chars(digits.begin(), digits.end(), number);
  return error == std::errc() && end == digits.end() && number > 0;
}

/// Chains of `depth` folders that branch off each other at random levels.
std::vector<fs::path> makeFolders(const fs::path& root, const Shape& shape,
                                  std::mt19937_64& random) {
  std::vector<fs::path> folders;
  std::vector<fs::path> chain{root};
  while (folders.size() < shape.folders) {
    if (chain.size() > shape.depth) chain.resize(1 + random() % shape.depth);
    chain.push_back(chain.back() / ("folder-" + std::to_string(folders.size())));
    fs::create_directories(chain.back());
    folders.push_back(chain.back());
  }
  return folders;
}

void makeFile(const fs::path& path, std::uint64_t bytes, std::mt19937_64& random) {
  std::ofstream out(path, std::ios::binary);
  std::vector<std::uint64_t> words(8192);
  while (bytes > 0) {
    for (auto& word : words) word = random();
    const std::uint64_t piece = std::min<std::uint64_t>(bytes, words.size() * sizeof(words[0]));
    out.write(reinterpret_cast<const char*>(words.data()), static_cast<std::streamsize>(piece));
    bytes -= piece;
  }
  if (!out.flush()) throw fs::filesystem_error("cannot write", path, std::error_code());
}

}  // namespace

int main(int argc, char** argv) {
  Shape shape;
  std::uint64_t* const numbers[] = {&shape.files, &shape.folders, &shape.depth, &shape.bytes};
  bool valid = argc >= 4 && argc <= 6;
  for (int i = 2; valid && i < argc; ++i) valid = parseNumber(argv[i], *numbers[i - 2]);
  if (!valid) {
    std::cerr << "usage: make_tree FOLDER FILES FOLDERS [DEPTH [MEAN_BYTES]]\n";
    return 2;
  }
  try {
    std::mt19937_64 random(20'02);
    const auto folders = makeFolders(argv[1], shape, random);
    for (std::uint64_t i = 0; i < shape.files; ++i) {
      const std::uint64_t bytes = shape.bytes == 0 ? 0 : random() % (2 * shape.bytes);
      makeFile(folders[i % folders.size()] / ("file " + std::to_string(i) + ".dat"), bytes, random);
    }
  } catch (const std::exception& error) {
    std::cerr << "make_tree: " << error.what() << '\n';
    return 1;
  }
}
