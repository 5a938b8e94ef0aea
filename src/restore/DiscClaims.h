#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "restore/DiscInHand.h"
#include "restore/RestoreServices.h"

namespace korvenal {

/// What the session of a disc says of its own files, asked once a file before it is copied. The
/// index that was opened may be the copy of an earlier disc of the set: a file that had changed by
/// the time its disc was prepared has the size that the copy of the index in its own session tells.
/// Where a file could not be read to its end, the place of it holds padding; the list beside the
/// index tells which.
class DiscClaims {
 public:
  static constexpr const char* WrongSize = "The file on disc is not the one in the index.";

  explicit DiscClaims(const RestoreServices& services) : services_(services) {}

  /// From now on this disc is meant. The path of its list of files that were not saved when that
  /// cannot be read: nobody knows then which of its files are padding. Empty when all is well.
  std::string doBeginDisc(const DiscInHand& disc);

  /// The message of the error row for a file that must not be restored; empty for a good one.
  /// `wanted` is its size in the opened index, which of a piece may not tell any. The first file of
  /// a disc that is good by the disc's own word alone gives an event line.
  std::string doFindFault(const std::string& discPath, std::optional<Fixed4> wanted, Fixed4 onDisc);

 private:
  using Sizes = std::unordered_map<std::string, std::int64_t>;  ///< disc path -> bytes

  std::string doReadFaults();
  std::vector<std::string> faultLists() const;
  bool isBurnedAsChanged(const std::string& discPath, Fixed4 onDisc);
  void doReadOwnIndex();

  const RestoreServices& services_;
  std::string root_;                          ///< of the session
  int number_ = 0;                            ///< of the disc
  bool isOfSet_ = false;                      ///< its own index can be asked
  std::unordered_set<std::string> notSaved_;  ///< disc paths
  std::optional<Sizes> own_;  ///< by the disc's own index; nothing before it is asked for
  bool told_ = false;         ///< the event line was given
};

}  // namespace korvenal
