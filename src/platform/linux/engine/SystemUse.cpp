#include "platform/linux/engine/SystemUse.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace korvenal {

namespace {

constexpr std::size_t EntryHead = 4;   ///< signature, length, version
constexpr std::size_t EntryFlags = 5;  ///< with the byte of flags behind it
constexpr std::uint8_t KnownVersion = 1;

bool hasSignature(ByteArea entry, std::string_view signature) {
  return entry.size >= EntryHead && std::memcmp(entry.bytes, signature.data(), 2) == 0;
}

bool isSignatureByte(std::uint8_t byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
}

/// Do the parts, each with a byte of flags and one of its length in front, end where the entry
/// ends?
bool arePartsSound(ByteArea parts) {
  while (parts.size > 0) {
    const std::size_t length = parts.size < 2 ? parts.size : std::size_t{2} + parts.bytes[1];
    if (parts.size < 2 || length > parts.size) return false;
    parts = parts.behind(length);
  }
  return true;
}

}  // namespace

std::uint32_t littleEndian32(const std::uint8_t* bytes) {
  return bytes[0] | bytes[1] << 8U | bytes[2] << 16U | std::uint32_t{bytes[3]} << 24U;
}

bool SystemUse::announcesItself(ByteArea area) {
  return area.size >= 7 && hasSignature(area, "SP") && area.bytes[3] == KnownVersion &&
         area.bytes[4] == 0xBE && area.bytes[5] == 0xEF;
}

bool SystemUse::endsAt(ByteArea area) {
  return area.size < EntryHead || hasSignature(area, "ST");
}

bool SystemUse::isKindKnown() const {
  return S_ISDIR(mode) || S_ISREG(mode) || S_ISLNK(mode) || S_ISCHR(mode) || S_ISBLK(mode) ||
         S_ISFIFO(mode) || S_ISSOCK(mode);
}

bool SystemUse::read(ByteArea area, SystemUseContinuation& next) {
  while (!endsAt(area)) {
    const std::size_t length = area.bytes[2];
    const bool named = isSignatureByte(area.bytes[0]) && isSignatureByte(area.bytes[1]);
    if (!named || length < EntryHead || length > area.size) return false;
    if (!take({area.bytes, length}, next)) return false;
    area = area.behind(length);
  }
  return true;
}

bool SystemUse::take(ByteArea entry, SystemUseContinuation& next) {
  if (hasSignature(entry, "CE")) {
    if (entry.size < 28 || next.bytes != 0) return false;
    next = {littleEndian32(entry.bytes + 4), littleEndian32(entry.bytes + 12),
            littleEndian32(entry.bytes + 20)};
    return true;
  }
  if (entry.bytes[3] != KnownVersion) return true;
  if (hasSignature(entry, "PX")) {
    if (entry.size != 36 && entry.size != 44) return false;
    mode = littleEndian32(entry.bytes + 4);
  } else if (hasSignature(entry, "SL")) {
    return takeTarget(entry);
  } else if (hasSignature(entry, "RE")) {
    moved = true;
  } else if (hasSignature(entry, "CL")) {
    if (entry.size < 12) return false;
    childBlock = littleEndian32(entry.bytes + 4);
    return childBlock != 0;
  } else if (hasSignature(entry, "SP")) {
    if (entry.size < 7) return false;
    skip = entry.bytes[6];
  } else if (hasSignature(entry, "ER")) {
    return takeReference(entry);
  } else if (hasSignature(entry, "NM") || hasSignature(entry, "TF") || hasSignature(entry, "AA")) {
    return entry.size >= EntryFlags;
  } else if (hasSignature(entry, "AL")) {
    return entry.size >= EntryFlags && arePartsSound(entry.behind(EntryFlags));
  } else if (hasSignature(entry, "ZF")) {
    return entry.size >= 16;
  }
  return true;
}

/// Where a link leads to, part by part.
bool SystemUse::takeTarget(ByteArea entry) {
  constexpr std::uint8_t Special = 0x0E;  ///< this folder, the one above, the root
  if (entry.size < EntryFlags || !arePartsSound(entry.behind(EntryFlags))) return false;
  for (ByteArea part = entry.behind(EntryFlags); part.size >= 2;
       part = part.behind(std::size_t{2} + part.bytes[1])) {
    const std::size_t length = part.bytes[1];
    if (std::memchr(part.bytes + 2, 0, length) != nullptr) return false;
    // The library looks at the last character before it adds to a target.
    if (!hasTarget && (part.bytes[0] & Special) == 0 && length == 0) return false;
    hasTarget = true;
  }
  return true;
}

/// Which extension the entries belong to.
bool SystemUse::takeReference(ByteArea entry) {
  constexpr std::size_t NameAt = 8;
  if (entry.size < NameAt || NameAt + entry.bytes[4] > entry.size) return false;
  const std::string_view name(reinterpret_cast<const char*>(entry.bytes) + NameAt, entry.bytes[4]);
  rockRidge = rockRidge || name == "RRIP_1991A" || name == "IEEE_P1282" || name == "IEEE_1282";
  return true;
}

}  // namespace korvenal
