#pragma once

#include <array>
#include <deque>
#include <string>
#include <vector>

#include "plan/ScanFixture.h"

namespace korvenal::test {

/// The plan of a job, worked out anew in the plainest way: a table of texts whose rows are really
/// inserted, moved and removed. It shares nothing with the program but the types of its input, and
/// serves to be compared with.
class ReferencePlan {
 public:
  using Row = std::array<std::string, 13>;

  /// `choices` answer the questions about large files.
  ReferencePlan(const ScanFixture& input, std::deque<int> choices);

  std::vector<Row> rows;  ///< without the header row
  std::int64_t totalSize = 0;
  int totalDiscs = 0, totalFiles = 0, totalSplits = 0;
  std::vector<std::int64_t> discUsed;
  std::string preliminaryIndex, finalIndex;
  bool indexOnDiscs = false;
  bool limitExceeded = false, stopped = false;

 private:
  void make();
  void expand();
  void walk(const ListEntry& tree, const std::string& relative, const std::string& source,
            bool descend);
  void event(const ListEntry& entry, const std::string& name, const std::string& source);
  bool checkLargeFiles();
  void order();
  void shorten();
  void cutForJoliet();
  void addHeadRows();
  bool allocate();
  void count();
  void removeEmptyFolders();
  std::string indexText(bool withHeader) const;
  std::int64_t capacity() const;
  void cutRow(std::size_t at, std::int64_t first);
  bool aloneOnDisc(std::size_t at, int disc) const;

  const ScanFixture& in_;
  std::deque<int> choices_;
  bool splitAndSpan_;
  bool dropTop_;
  int pieces_ = 0;
  std::string prefix_, flag_, stamp_;
};

}  // namespace korvenal::test
