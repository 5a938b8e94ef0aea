#include "platform/linux/engine/MmcFacts.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/DiscType.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

/// Blocks of padding behind a track of a CD, which the read-ahead of other readers runs into.
constexpr std::int64_t CdTail = 150;

struct ProfileTraits {
  int profile = 0;
  DiscType type = DiscNone;
  bool overwritable = false;
  bool erasable = false;
};

constexpr std::array<ProfileTraits, 13> Profiles = {{
    {MmcCdRom, DiscCdRom, false, false},
    {MmcCdR, DiscCdR, false, false},
    {MmcCdRw, DiscCdRw, false, true},
    {MmcDvdRom, DiscDvdRom, false, false},
    {MmcDvdR, DiscDvdR, false, false},
    {MmcDvdRam, DiscDvdRam, true, true},
    {MmcDvdRwOverwrite, DiscDvdRwRestricted, true, true},
    {MmcDvdRwSequential, DiscDvdRw, false, true},
    {MmcDvdRDl, DiscDvdR, false, false},
    {MmcDvdRDlJump, DiscDvdR, false, false},
    {MmcDvdPlusRw, DiscDvdPlusRw, true, true},
    {MmcDvdPlusR, DiscDvdPlusR, false, false},
    {MmcDvdPlusRDl, DiscDvdPlusRDl, false, false},
}};

ProfileTraits traitsOf(int profile) {
  for (const ProfileTraits& traits : Profiles)
    if (traits.profile == profile) return traits;
  return {};
}

bool needsFormat(const MmcReport& report) {
  return report.profile == MmcDvdPlusRw && report.format == MmcReport::Format::Unformatted;
}

std::int64_t overwritableBlocks(const MmcReport& report) {
  return report.formatBlocks > 0 ? report.formatBlocks : report.freeBlocks;
}

void tellOverwritable(const MmcReport& report, const SessionChain& chain, DiscState& state) {
  state.erasable = true;
  state.writable = true;
  state.totalBlocks = overwritableBlocks(report);
  if (needsFormat(report)) return;
  // A formatted DVD+RW has one session, whatever it holds.
  state.sessions = report.profile == MmcDvdPlusRw ? 1 : static_cast<int>(chain.starts.size());
  if (chain.holdsOther) {
    state.sessions = 1;
    return;
  }
  state.freeBlocks = chain.end == 0 ? state.totalBlocks
                                    : std::max<std::int64_t>(0, state.totalBlocks - chain.next());
}

void tellSequential(const MmcReport& report, DiscState& state) {
  const bool takesData =
      report.medium == MmcReport::Medium::Blank || report.medium == MmcReport::Medium::Appendable;
  state.freeBlocks = takesData ? report.freeBlocks : 0;
  state.totalBlocks = takesData ? report.nextBlock + report.freeBlocks : report.readableBlocks;
  state.sessions = report.sessions;
  // A burn that was broken off leaves a disc that is neither blank nor has a session.
  if (report.medium != MmcReport::Medium::Blank) state.sessions = std::max(state.sessions, 1);
  // What can be erased can take data again, whatever it holds now.
  const bool isRom = state.type == DiscCdRom || state.type == DiscDvdRom;
  state.writable = !isRom && (state.erasable || state.freeBlocks > 0);
}

/// What a name may not hold in a device path.
std::string pathPart(std::string_view text) {
  std::string part(Text::trim(text));
  for (char& c : part)
    if (c == ' ' || c == '#' || c == '&' || static_cast<unsigned char>(c) < ' ') c = '_';
  return part;
}

std::optional<int> hexNumber(std::string_view text) {
  int number = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
  if (text.empty() || error != std::errc() || stop != text.data() + text.size())
    return std::nullopt;
  return number;
}

/// The words of a line of the system's table behind its title, one a drive.
std::vector<std::string> columnsOf(const std::string& line) {
  std::vector<std::string> columns;
  for (const std::string& word : Text::split(line.substr(line.find(':') + 1), '\t'))
    if (!Text::trim(word).empty()) columns.emplace_back(Text::trim(word));
  return columns;
}

}  // namespace

std::uint8_t MmcFacts::discTypeOf(int profile) {
  return traitsOf(profile).type;
}

bool MmcFacts::isOverwritable(int profile) {
  return traitsOf(profile).overwritable;
}

bool MmcFacts::isCd(int profile) {
  return profile == MmcCdR || profile == MmcCdRw || profile == MmcCdRom;
}

DiscState MmcFacts::stateOf(const MmcReport& report, const SessionChain& chain) {
  DiscState state;
  if (report.medium == MmcReport::Medium::None) return state;
  const ProfileTraits traits = traitsOf(report.profile);
  state.type = traits.type;
  if (state.type == DiscNone || report.medium == MmcReport::Medium::Unsuitable) return state;
  if (traits.overwritable) {
    tellOverwritable(report, chain, state);
  } else {
    state.erasable = traits.erasable;
    tellSequential(report, state);
  }
  return state;
}

TrackPlace MmcFacts::placeOf(const MmcReport& report, const SessionChain& chain) {
  TrackPlace place;
  if (isOverwritable(report.profile)) {
    place.startBlock = chain.next();
    if (chain.end == 0) place.gap = place.startBlock;
    if (!chain.starts.empty()) place.lastSession = chain.starts.back();
    place.overwritable = true;
    place.refuses = chain.holdsOther;
    return place;
  }
  place.startBlock = report.nextBlock;
  place.lastSession = report.sessions > 0 ? report.lastSession : -1;
  if (isCd(report.profile)) place.tailBlocks = CdTail;
  return place;
}

std::vector<std::uint32_t> MmcFacts::sessionStarts(const MmcReport& report,
                                                   const SessionChain& chain) {
  if (isOverwritable(report.profile)) return chain.starts;
  std::vector<std::uint32_t> starts = report.sessionStarts;
  // What the drive calls the last one is where the newest tree is read.
  if (report.sessions > 0 && report.lastSession >= 0) {
    const auto last = static_cast<std::uint32_t>(report.lastSession);
    std::erase_if(starts, [last](std::uint32_t start) { return start >= last; });
    starts.push_back(last);
  }
  return starts;
}

EraseKind MmcFacts::eraseKindOf(const MmcReport& report, bool quick) {
  if (!isOverwritable(report.profile)) return EraseKind::Blank;
  if (needsFormat(report)) return EraseKind::Format;
  return quick ? EraseKind::ClearHead : EraseKind::ClearAll;
}

bool MmcFacts::can(std::uint8_t code, const std::vector<int>& profiles) {
  constexpr std::uint8_t FirstCode = 13;
  constexpr std::array<std::array<int, 2>, 6> Wanted = {{{MmcDvdR, MmcDvdRDl},
                                                         {MmcDvdRwSequential, MmcDvdRwOverwrite},
                                                         {MmcDvdRam, MmcDvdRam},
                                                         {MmcDvdPlusR, MmcDvdPlusR},
                                                         {MmcDvdPlusRw, MmcDvdPlusRw},
                                                         {MmcDvdPlusRDl, MmcDvdPlusRDl}}};
  if (code < FirstCode || code >= FirstCode + Wanted.size()) return false;
  const auto& wanted = Wanted[code - FirstCode];
  return std::find_first_of(profiles.begin(), profiles.end(), wanted.begin(), wanted.end()) !=
         profiles.end();
}

std::int32_t MmcFacts::speedFor(std::int32_t wanted, const std::vector<int>& speeds) {
  if (speeds.empty()) return 0;
  if (wanted <= 0) return *std::max_element(speeds.begin(), speeds.end());
  std::int32_t best = 0;
  for (const int speed : speeds)
    if (speed <= wanted) best = std::max(best, speed);
  return best > 0 ? best : *std::min_element(speeds.begin(), speeds.end());
}

std::string MmcFacts::devicePathOf(std::string_view vendor, std::string_view model,
                                   std::string_view revision, std::string_view node) {
  return "SCSI#CDROM&VEN_" + pathPart(vendor) + "&PROD_" + pathPart(model) + "&REV_" +
         pathPart(revision) + "#" + std::string(node);
}

std::optional<bool> MmcFacts::writesDiscs(std::string_view table, std::string_view node) {
  std::optional<std::size_t> column;
  bool writes = false;
  for (const std::string& line : Text::split(table, '\n')) {
    const std::vector<std::string> columns = columnsOf(line);
    if (line.starts_with("drive name:")) {
      const auto at = std::find(columns.begin(), columns.end(), node);
      if (at == columns.end()) return std::nullopt;
      column = static_cast<std::size_t>(at - columns.begin());
    } else if (line.starts_with("Can write") && column && *column < columns.size()) {
      writes = writes || columns[*column] == "1";
    }
  }
  return column ? std::optional(writes) : std::nullopt;
}

std::optional<MmcFacts::Sense> MmcFacts::senseOf(std::string_view message) {
  for (std::size_t open = 0; (open = message.find('[', open)) != std::string_view::npos; ++open) {
    const std::size_t close = message.find(']', open);
    if (close == std::string_view::npos) return std::nullopt;
    const auto words = Text::split(message.substr(open + 1, close - open - 1), ' ');
    if (words.size() != 3) continue;
    const auto key = hexNumber(words[0]);
    const auto code = hexNumber(words[1]);
    const auto qualifier = hexNumber(words[2]);
    if (!key || !code || !qualifier || *code > 0xFF || *qualifier > 0xFF) continue;
    Sense sense{*code << 8 | *qualifier, std::string(Text::trim(message.substr(close + 1)))};
    while (sense.text.ends_with('.')) sense.text.pop_back();
    return sense;
  }
  return std::nullopt;
}

}  // namespace korvenal
