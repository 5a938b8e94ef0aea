#pragma once

#include <cstddef>
#include <cstdint>

namespace korvenal {

std::uint32_t littleEndian32(const std::uint8_t* bytes);

/// Bytes somewhere in a block.
struct ByteArea {
  const std::uint8_t* bytes = nullptr;
  std::size_t size = 0;

  /// Without the first `count`; empty when there are not as many.
  ByteArea behind(std::size_t count) const {
    return count < size ? ByteArea{bytes + count, size - count} : ByteArea{};
  }
};

/// Where the entries of a record go on, as it is told; with no bytes they do not.
struct SystemUseContinuation {
  std::uint32_t block = 0;
  std::uint32_t offset = 0;
  std::uint32_t bytes = 0;
};

/// What the system use entries behind the name of a record tell: those of Rock Ridge, as far as
/// they decide what the record is. No entry reaches past its area, and nothing in an entry past its
/// end; the values themselves may be anything.
struct SystemUse {
  std::uint32_t mode = 0;        ///< permissions and kind; 0 without any
  std::uint32_t childBlock = 0;  ///< stands for the folder that begins there; 0: for itself
  bool moved = false;            ///< a folder that another record stands for
  bool hasTarget = false;        ///< of a link
  bool rockRidge = false;        ///< in the root: these entries are used on the disc
  std::size_t skip = 0;          ///< in the root: bytes in front of them in each other record

  /// Does the record of a root say that there are such entries?
  static bool announcesItself(ByteArea area);
  /// Is nothing more to be read from here on?
  static bool endsAt(ByteArea area);

  /// Adds what the entries of one area tell. False when one is malformed.
  bool read(ByteArea area, SystemUseContinuation& next);
  /// Is it one of the kinds that there are?
  bool isKindKnown() const;

 private:
  bool take(ByteArea entry, SystemUseContinuation& next);
  bool takeTarget(ByteArea entry);
  bool takeReference(ByteArea entry);
};

}  // namespace korvenal
