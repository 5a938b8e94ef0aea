#include "platform/linux/engine/DiscProfile.h"

#include <array>
#include <charconv>

#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::string_view FirstLine = "KORVENAL-DISC 1";
/// The blocks in front of the first session are kept for the pointer to the newest tree, and
/// sessions begin at multiples of as many.
constexpr std::int64_t HeadBlocks = 32;
constexpr std::size_t MaxSessions = 255;
constexpr std::int64_t MaxCapacity = std::int64_t{1} << 31;

struct TypeTraits {
  std::int64_t capacity = 0;
  std::int32_t speed = 0;
  bool rewritable = false;
  bool overwritable = false;
};

constexpr std::int32_t CdUnit = 176;
constexpr std::int32_t DvdUnit = 1385;

constexpr std::array<TypeTraits, 13> Traits = {{
    {},
    {0, 48 * CdUnit, false, false},
    {359849, 48 * CdUnit, false, false},
    {359849, 24 * CdUnit, true, false},
    {0, 16 * DvdUnit, false, false},
    {2298496, 16 * DvdUnit, false, false},
    {2236704, 5 * DvdUnit, true, true},
    {2298496, 6 * DvdUnit, true, false},
    {2298496, 6 * DvdUnit, true, false},
    {2298496, 6 * DvdUnit, true, false},
    {2295104, 8 * DvdUnit, true, true},
    {2295104, 16 * DvdUnit, false, false},
    {4173824, 8 * DvdUnit, false, false},
}};

const TypeTraits& traitsOf(std::uint8_t type) {
  return Traits[type < Traits.size() ? type : 0];
}

std::optional<std::int64_t> numberOf(std::string_view text) {
  std::int64_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || number < 0 || number > MaxCapacity)
    return std::nullopt;
  return number;
}

bool parseSessions(std::string_view text, std::vector<std::uint32_t>& sessions) {
  if (text.empty()) return true;
  for (const std::string& piece : Text::split(text, ',')) {
    const auto start = numberOf(piece);
    if (!start || sessions.size() >= MaxSessions) return false;
    if (!sessions.empty() && *start <= sessions.back()) return false;
    sessions.push_back(static_cast<std::uint32_t>(*start));
  }
  return true;
}

struct FaultKey {
  std::string_view key;
  std::int64_t DiscFaults::*value;
};
constexpr std::array<FaultKey, 7> FaultKeys = {{{"fail-prepare", &DiscFaults::prepare},
                                                {"fail-burn", &DiscFaults::burnAfter},
                                                {"fail-erase", &DiscFaults::erase},
                                                {"fail-number", &DiscFaults::number},
                                                {"bad-block", &DiscFaults::badBlock},
                                                {"pull-after", &DiscFaults::pullAfter},
                                                {"not-ready", &DiscFaults::notReady}}};

bool parseLine(std::string_view line, DiscProfile& profile) {
  const std::size_t cut = line.find('=');
  if (cut == std::string_view::npos) return false;
  const std::string_view key = line.substr(0, cut);
  const std::string_view value = line.substr(cut + 1);
  if (key == "sessions") return parseSessions(value, profile.sessions);
  const auto number = numberOf(value);
  if (!number) return false;
  if (key == "type") {
    if (*number >= static_cast<std::int64_t>(Traits.size())) return false;
    profile.type = static_cast<std::uint8_t>(*number);
  } else if (key == "capacity") {
    profile.capacity = *number;
  } else if (key == "end") {
    profile.end = *number;
  } else if (key == "formatted") {
    profile.formatted = *number != 0;
  } else if (key == "closed") {
    profile.closed = *number != 0;
  } else if (key == "writing") {
    profile.writing = *number != 0;
  } else if (key == "damaged") {
    profile.damaged = *number != 0;
  }
  for (const FaultKey& fault : FaultKeys)
    if (key == fault.key) profile.faults.*fault.value = *number;
  return true;
}

}  // namespace

bool DiscTypes::isRecordable(std::uint8_t type) {
  return traitsOf(type).capacity > 0;
}
bool DiscTypes::isRewritable(std::uint8_t type) {
  return traitsOf(type).rewritable;
}
bool DiscTypes::isOverwritable(std::uint8_t type) {
  return traitsOf(type).overwritable;
}
std::int64_t DiscTypes::capacityBlocks(std::uint8_t type) {
  return traitsOf(type).capacity;
}
std::int32_t DiscTypes::maxSpeed(std::uint8_t type) {
  return traitsOf(type).speed;
}

DiscProfile DiscProfile::blank(std::uint8_t type, std::int64_t blocks) {
  DiscProfile profile;
  profile.type = type;
  profile.capacity = blocks > 0 ? blocks : DiscTypes::capacityBlocks(type);
  profile.formatted = type != DiscDvdPlusRw;
  return profile;
}

DiscProfile DiscProfile::pressed(std::int64_t blocks) {
  DiscProfile profile;
  profile.type = blocks > DiscTypes::capacityBlocks(DiscCdR) ? DiscDvdRom : DiscCdRom;
  profile.capacity = blocks;
  profile.end = blocks;
  profile.closed = true;
  profile.sessions = {0};
  return profile;
}

std::optional<DiscProfile> DiscProfile::parse(std::string_view text) {
  DiscProfile profile;
  bool first = true;
  for (const std::string& line : Text::split(text, '\n')) {
    if (first && line != FirstLine) return std::nullopt;
    if (!first && !line.empty() && !parseLine(line, profile)) return std::nullopt;
    first = false;
  }
  if (profile.type == DiscNone || profile.capacity <= 0) return std::nullopt;
  if (!profile.sessions.empty() && profile.sessions.back() >= profile.end) return std::nullopt;
  return profile;
}

std::string DiscProfile::toText() const {
  std::string starts;
  for (const std::uint32_t start : sessions) {
    if (!starts.empty()) starts += ',';
    starts += std::to_string(start);
  }
  const auto flag = [](bool on) { return on ? "1" : "0"; };
  std::string text = std::string(FirstLine) + "\ntype=" + std::to_string(type) +
                     "\ncapacity=" + std::to_string(capacity) + "\nformatted=" + flag(formatted) +
                     "\nclosed=" + flag(closed) + "\nwriting=" + flag(writing) +
                     "\nsessions=" + starts + "\nend=" + std::to_string(end) +
                     "\ndamaged=" + flag(damaged) + "\n";
  for (const FaultKey& fault : FaultKeys)
    if (faults.*fault.value != DiscFaults().*fault.value)
      text += std::string(fault.key) + '=' + std::to_string(faults.*fault.value) + '\n';
  return text;
}

bool DiscProfile::isAppendable() const {
  return freeBlocks() > 0;
}

int DiscProfile::sessionsTold() const {
  if (type == DiscDvdPlusRw) return formatted ? 1 : 0;
  return static_cast<int>(sessions.size()) + (damaged ? 1 : 0);
}

std::int64_t DiscProfile::freeBlocks() const {
  if (closed || damaged || !formatted || !DiscTypes::isRecordable(type)) return 0;
  if (end == 0) return capacity;
  return capacity > nextSession() ? capacity - nextSession() : 0;
}

std::int64_t DiscProfile::nextSession() const {
  if (end == 0) return HeadBlocks;
  return (end + HeadBlocks - 1) / HeadBlocks * HeadBlocks;
}

void DiscProfile::erase() {
  formatted = true;
  closed = false;
  writing = false;
  damaged = false;
  sessions.clear();
  end = 0;
}

void DiscProfile::failWriting() {
  writing = false;
  // Blocks that can be written again at any time forgive: the last complete state still holds.
  if (!DiscTypes::isOverwritable(type)) damaged = true;
}

}  // namespace korvenal
