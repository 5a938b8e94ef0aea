#pragma once

#include <string>
#include <vector>

namespace korvenal::test {

/// Builds the text of an index line by line.
class IndexLines {
 public:
  std::string job = "Photos";
  std::string stamp = "KORVEN2.0-UTF8";
  int files = 0, splits = 0, discs = 1;

  IndexLines& line(const std::vector<std::string>& fields) {
    for (std::size_t i = 0; i < fields.size(); ++i) body_ += (i == 0 ? "" : "\t") + fields[i];
    body_ += "\r\n";
    return *this;
  }
  IndexLines& folder(const std::string& path, int disc = 1) {
    return line({"2", path + "\\", "", "0", "1", Date, "", "", "", std::to_string(disc)});
  }
  IndexLines& file(const std::string& path, std::size_t bytes, int disc = 1,
                   const std::string& origin = "") {
    ++files;
    return line(
        {"2", path, origin, std::to_string(bytes), "2", Date, "", "", "", std::to_string(disc)});
  }
  /// A split file with one part on each of the discs, all of one size.
  IndexLines& split(const std::string& path, std::size_t bytes, const std::vector<int>& parts) {
    ++files;
    ++splits;
    const std::string first = std::to_string(parts.front()), last = std::to_string(parts.back());
    const std::string name = path.substr(path.rfind('\\') + 1);
    line({"2", path + "\\", "", std::to_string(bytes), "3", Date, std::to_string(parts.size()),
          first, last, first});
    for (std::size_t i = 0; i < parts.size(); ++i)
      line({"2", path + "\\" + name, "", std::to_string(bytes / parts.size()), "4", "",
            std::to_string(i + 1), "1", "1", std::to_string(parts[i])});
    return *this;
  }
  std::string text() const {
    return stamp + "\t" + job + "\t" + std::to_string(files) + "\t5000\t0\t20261122100000\t" +
           (splits > 0 ? std::to_string(splits) : "") + "\t\t\t" + std::to_string(discs) + "\r\n" +
           body_;
  }

  static constexpr const char* Date = "20240229134501";

 private:
  std::string body_;
};

}  // namespace korvenal::test
