#pragma once

#include <cstdint>
#include <fstream>
#include <string>

namespace korvenal::bench {

/// Writes the text of an index of a million rows: one top folder with chains of twelve folders
/// below it, as a plan would list them.
inline void writeSampleIndex(const std::string& path) {
  constexpr int Chains = 4'167;
  constexpr int Depth = 12;
  constexpr int FilesPerFolder = 19;
  std::ofstream out(path, std::ios::binary);
  const std::string stamp = "\t20240229134501\t\t\t\t1\r\n";
  out << "KORVEN2.0-UTF8\tBench\t950000\t9500000000\t0\t20240229134501\t\t\t\t1\r\n";
  out << "1\tTree\\\t\t0\t1" << stamp;
  std::uint64_t seed = 1;
  for (int chain = 0; chain < Chains; ++chain) {
    std::string folder = "Tree\\";
    for (int level = 1; level <= Depth; ++level) {
      folder += "Folder " + std::to_string(chain) + " level " + std::to_string(level) + "\\";
      out << "2\t" << folder << "\t\t0\t1" << stamp;
      for (int file = 0; file < FilesPerFolder; ++file) {
        seed = seed * 6364136223846793005U + 1442695040888963407U;
        const auto number = static_cast<std::uint32_t>(seed >> 33);
        out << "2\t" << folder << "IMG_" << number % 100'000 << ".jpg\t\t" << number % 10'000
            << "\t2" << stamp;
      }
    }
  }
}

}  // namespace korvenal::bench
