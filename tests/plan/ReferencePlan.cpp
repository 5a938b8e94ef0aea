#include "plan/ReferencePlan.h"

#include <ctime>

namespace korvenal::test {

namespace {

enum Col { Mark, Flag, Name, Origin, Size, Type, Date, Source, Split, Start, End, Disc, Used };

constexpr std::int64_t GiB2 = 2147483648LL;

std::string dateText(UnixTime time, const char* format = "%Y%m%d%H%M%S") {
  const std::time_t seconds = time;
  char text[64];
  std::strftime(text, sizeof text, format, std::localtime(&seconds));
  return text;
}

std::int64_t number(const std::string& text) {
  return text.empty() ? 0 : std::stoll(text);
}
std::string text(std::int64_t value) {
  return std::to_string(value);
}

std::string withoutSlash(const std::string& name) {
  return name.ends_with('\\') ? name.substr(0, name.size() - 1) : name;
}

std::string lastPart(const std::string& path) {
  const auto at = path.rfind('\\');
  return at == std::string::npos ? path : path.substr(at + 1);
}

bool isCharacterStart(const std::string& s, std::size_t at) {
  return at >= s.size() || (s[at] & 0xC0) != 0x80;
}

std::string shortComponent(const std::string& base, const std::string& stamp, int counter) {
  std::size_t head = 50, tail = base.size() - 10;
  while (!isCharacterStart(base, head)) --head;
  while (!isCharacterStart(base, tail)) ++tail;
  char digits[16];
  std::snprintf(digits, sizeof digits, "%06d", counter);
  return base.substr(0, head) + "-" + stamp + "-" + digits + "-" + base.substr(tail);
}

}  // namespace

ReferencePlan::ReferencePlan(const ScanFixture& input, std::deque<int> choices)
    : in_(input),
      choices_(std::move(choices)),
      splitAndSpan_(input.job.optSplitAndSpan == 1),
      dropTop_(input.job.vsContents.Rows() == 2 && input.settings.ExcludeTopFolder),
      stamp_(dateText(input.clock.time, "%Y-%m-%d-%H-%M-") +
             (input.job.isDifferential() ? "D" : "F")) {
  make();
  if (stopped || limitExceeded) rows.clear();
}

void ReferencePlan::make() {
  expand();
  if (dropTop_ && rows.size() == 1) rows.clear();
  if (rows.empty()) return;
  if (!splitAndSpan_ && !checkLargeFiles()) return;
  order();
  shorten();
  if (rows.empty()) return;
  cutForJoliet();
  addHeadRows();
  if (!allocate()) return;
  count();
  if (in_.job.isDifferential() || in_.settings.ExcludeEmptyFolder) removeEmptyFolders();
  indexOnDiscs = totalSplits > 0 || in_.job.BurnBackupIndex;
  if (!indexOnDiscs) {
    rows.erase(rows.begin());
  } else if (in_.plan.ScanMode == 0) {
    finalIndex = indexText(true);
    rows[0][Size] = text(static_cast<std::int64_t>(finalIndex.size()));
  }
}

void ReferencePlan::expand() {
  for (int item = 1; item < in_.job.vsContents.Rows(); ++item) {
    const std::string path = in_.job.vsContents.text(item, ContentsPath);
    const auto found = in_.list.trees.find(path);
    if (found == in_.list.trees.end()) continue;
    const ListEntry& tree = found->second;
    if (tree.isFolder) {
      prefix_ = in_.job.vsContents.text(item, ContentsName) + "\\";
      flag_ = "2";
      rows.push_back({"", "1", prefix_, "", "0", "1", dateText(tree.modified)});
      walk(tree, "", path + "/",
           in_.job.vsContents.check(item, ContentsSubfolder) == Table::Check::Ticked);
    } else {
      dropTop_ = false;
      prefix_ = "";
      flag_ = "1";
      event(tree, in_.job.vsContents.text(item, ContentsName), path);
    }
  }
}

void ReferencePlan::walk(const ListEntry& tree, const std::string& relative,
                         const std::string& source, bool descend) {
  for (const ListEntry& entry : tree.entries) {
    if (entry.isFolder && !descend) continue;
    const std::string name = relative + entry.name;
    const std::string path = source + entry.name;
    if (entry.isFolder) walk(entry, name + "\\", path + "/", descend);
    event(entry, entry.isFolder ? name + "\\" : name, entry.isFolder ? path + "/" : path);
  }
}

void ReferencePlan::event(const ListEntry& entry, const std::string& name,
                          const std::string& source) {
  if (!entry.isFolder && in_.job.isDifferential() && in_.bits.cleared.contains(source)) return;
  if (!entry.isFolder) totalSize += entry.size;
  rows.push_back({"", flag_, dropTop_ ? name : prefix_ + name, "", text(entry.size),
                  entry.isFolder ? "1" : "2", dateText(entry.modified), source});
}

std::int64_t ReferencePlan::capacity() const {
  constexpr std::int64_t Bytes[] = {720183296, 4689297408, 8531214336};
  return Bytes[in_.job.comboDiscType];
}

bool ReferencePlan::checkLargeFiles() {
  for (std::size_t at = 0; at < rows.size();) {
    const std::int64_t size = number(rows[at][Size]);
    const bool large = rows[at][Type] == "2" && (size + 4096 > capacity() || size > GiB2);
    int choice = 0;
    if (large && !choices_.empty()) {
      choice = choices_.front();
      choices_.pop_front();
    }
    if (choice == 1) {
      totalSize -= size;
      rows.erase(rows.begin() + static_cast<long>(at));
      continue;
    }
    if (choice == 2) {
      stopped = true;
      return false;
    }
    if (choice == 3) {
      splitAndSpan_ = true;
      return true;
    }
    ++at;
  }
  return true;
}

void ReferencePlan::order() {
  if (dropTop_) rows.erase(rows.begin());
  for (std::size_t at = rows.size(); at-- > 0;) {
    while (rows[at][Mark] != "*" && rows[at][Flag] == "2" && rows[at][Type] == "1") {
      const std::string folder = rows[at][Name];
      std::size_t to = at;
      while (to > 0 && rows[to - 1][Name].substr(0, folder.size()) == folder) --to;
      Row row = rows[at];
      rows.erase(rows.begin() + static_cast<long>(at));
      row[Mark] = "*";
      rows.insert(rows.begin() + static_cast<long>(to), row);
    }
  }
}

void ReferencePlan::shorten() {
  int counter = 0;
  for (std::size_t at = 0; at < rows.size(); ++at) {
    Row& row = rows[at];
    if (row[Type] == "2" && row[Flag] == "1") continue;
    const std::string path = withoutSlash(row[Name]);
    const std::string base = lastPart(path);
    if (base.size() <= (row[Type] == "4" ? 103U : 107U)) continue;
    if (row[Origin].empty()) row[Origin] = row[Name];
    const std::string component = shortComponent(base, stamp_, ++counter);
    row[Name] = path.substr(0, path.size() - base.size()) + component;
    if (row[Type] != "1") continue;
    row[Name] += "\\";
    for (std::size_t below = at + 1; below < rows.size(); ++below) {
      const std::size_t hit = rows[below][Name].find(base);
      if (hit == std::string::npos) break;
      if (rows[below][Origin].empty()) rows[below][Origin] = rows[below][Name];
      rows[below][Name].replace(hit, base.size(), component);
    }
  }
}

void ReferencePlan::cutForJoliet() {
  if (in_.job.optFileSystem != 0 || in_.job.comboDiscType == 0) return;
  for (std::size_t at = rows.size(); at-- > 0;) {
    if (rows[at][Type] != "2" || number(rows[at][Size]) <= GiB2) continue;
    std::int64_t left = number(rows[at][Size]), pos = 0;
    const auto count = static_cast<int>(static_cast<double>(left) / 1073741824.0) + 1;
    const std::string base = lastPart(rows[at][Name]);
    rows[at][Name] += "\\";
    rows[at][Type] = "3";
    for (int n = 1; n <= count && left > 0; ++n) {
      const std::int64_t size = left > 1084227584 ? 1073741824 : left;
      const Row piece = {
          "",      "2",           rows[at][Name] + base, "", text(size), "4", "", rows[at][Source],
          text(n), text(pos + 1), text(pos + size)};
      pos += size;
      left -= size;
      rows.insert(rows.begin() + static_cast<long>(at) + n, piece);
    }
  }
}

void ReferencePlan::addHeadRows() {
  rows.insert(rows.begin(), {"", "1", "_KORVEN{" + in_.job.txJobName + "(" + stamp_ + ")}.bdx", "",
                             "0", "2", dateText(in_.clock.time)});
  rows[0][Source] = "/tmp/" + rows[0][Name];
  preliminaryIndex = indexText(false);
  rows[0][Size] = text(static_cast<std::int64_t>(preliminaryIndex.size()));
  const std::string kit = "_RestoreKit_Installer.exe";
  const auto look = in_.files.looks.find("/app/BIN/" + kit);
  if (in_.job.BurnRestoreKit && look != in_.files.looks.end())
    rows.insert(rows.begin() + 1, {"", "1", kit, "", look->second.size.toText(), "2",
                                   dateText(look->second.modified), "/app/BIN/" + kit});
}

bool ReferencePlan::aloneOnDisc(std::size_t at, int disc) const {
  for (std::size_t above = at; above-- > 0;) {
    if (rows[above][Disc] != text(disc)) return true;
    const bool ownSplitRow = above + 1 == at && rows[above][Type] == "3" && rows[at][Split] == "1";
    if (rows[above][Type] != "5" && !ownSplitRow) return false;
  }
  return true;
}

void ReferencePlan::cutRow(std::size_t at, std::int64_t first) {
  Row& row = rows[at];
  const std::int64_t size = number(row[Size]);
  if (row[Type] == "4") {
    Row rest;
    for (int col = Flag; col <= Split; ++col)
      rest[static_cast<std::size_t>(col)] = row[static_cast<std::size_t>(col)];
    rest[End] = row[End];
    row[Size] = text(first);
    row[End] = text(number(row[Start]) + first - 1);
    rest[Size] = text(size - first);
    rest[Start] = text(number(row[End]) + 1);
    rows.insert(rows.begin() + static_cast<long>(at) + 1, rest);
    for (std::size_t below = at + 1; below < rows.size() && !rows[below][Split].empty(); ++below)
      rows[below][Split] = text(number(rows[below - 1][Split]) + 1);
    return;
  }
  const std::string base = lastPart(row[Name]);
  row[Name] += "\\";
  row[Type] = "3";
  const Row one = {"",  "2", row[Name] + base, "", text(first), "4", "", row[Source],
                   "1", "1", text(first)};
  const Row two = {"",          "2", row[Name] + base, "",        text(size - first), "4", "",
                   row[Source], "2", text(first + 1),  text(size)};
  rows.insert(rows.begin() + static_cast<long>(at) + 1, {one, two});
}

bool ReferencePlan::allocate() {
  constexpr std::int64_t Files[] = {5, 10, 20, 30, 40, 50, 100, 200, 300, 400, 500, 600, 700};
  constexpr std::int64_t Rests[] = {1, 2, 3, 4, 5, 10, 20, 30, 40, 50, 100, 200, 300, 400, 500};
  const std::int64_t minFile = Files[in_.settings.SplitSize] * 1048576;
  const std::int64_t minRest = Rests[in_.settings.SplitSize2] * 1048576;
  int disc = 1;
  std::int64_t used = 16777216;
  for (std::size_t at = 0; at < rows.size();) {
    const bool free = rows[at][Type] == "3" || rows[at][Type] == "1";
    const std::int64_t size = free ? 0 : number(rows[at][Size]);
    if (used + size + 4096 <= capacity()) {
      used += size + 4096;
      rows[at][Disc] = text(disc);
      rows[at][Used] = text(used);
      ++at;
      continue;
    }
    const bool tooLate = used >= capacity() - minRest - 8192 || size <= minFile;
    const bool wouldFit = !splitAndSpan_ && size + 4096 <= capacity() && size < GiB2;
    if ((!tooLate && !wouldFit) || aloneOnDisc(at, disc)) {
      const auto sectors = static_cast<double>(capacity() - used - 8192) / 2048;
      cutRow(at, static_cast<std::int64_t>(sectors) * 2048);
      continue;
    }
    discUsed.push_back(used);
    if (++disc > 100) {
      limitExceeded = true;
      return false;
    }
    if (at > 0 && rows[at - 1][Type] == "3") --at;
    used = 16777216;
    if (rows[at][Flag] == "1") continue;
    const std::string path = withoutSlash(rows[at][Name]);
    std::size_t to = at;
    for (std::size_t slash = path.find('\\'); slash != std::string::npos;
         slash = path.find('\\', slash + 1)) {
      const Row repeated = {"", to == at ? "1" : "2", path.substr(0, slash + 1), "", "0", "5"};
      rows.insert(rows.begin() + static_cast<long>(to++), repeated);
    }
  }
  discUsed.push_back(used);
  totalDiscs = disc;
  return true;
}

void ReferencePlan::count() {
  for (std::size_t at = rows.size(); at-- > 1;) {
    if (rows[at][Type] == "2" || rows[at][Type] == "3") ++totalFiles;
    if (rows[at][Type] == "4") ++pieces_;
    if (rows[at][Type] != "3") continue;
    ++totalSplits;
    std::size_t last = at + 1;
    while (last < rows.size() && rows[last][End] != rows[at][Size]) ++last;
    if (last == rows.size()) continue;
    rows[at][Split] = rows[last][Split];
    rows[at][Start] = rows[at][Disc];
    rows[at][End] = rows[last][Disc];
  }
}

void ReferencePlan::removeEmptyFolders() {
  for (std::size_t at = rows.size(); at-- > 0;) {
    if (rows[at][Type] != "1" && rows[at][Type] != "5") continue;
    if (at + 1 == rows.size() || rows[at + 1][Disc] != rows[at][Disc] ||
        rows[at + 1][Name].find(rows[at][Name]) == std::string::npos)
      rows.erase(rows.begin() + static_cast<long>(at));
  }
}

std::string ReferencePlan::indexText(bool withHeader) const {
  std::string lines;
  int count = 0;
  for (std::size_t at = 1; at < rows.size(); ++at) {
    if (rows[at][Type] == "5") continue;
    ++count;
    std::string line;
    for (const Col col : {Flag, Name, Origin, Size, Type, Date, Split, Start, End, Disc})
      line += (line.empty() ? "" : "\t") + rows[at][col];
    lines += line + "\r\n";
  }
  if (!withHeader) return lines;
  return "KORVEN2.0-UTF8\t" + in_.job.txJobName + "\t" + text(totalFiles) + "\t" + text(totalSize) +
         "\t0\t" + dateText(in_.clock.time) + "\t" + text(totalSplits) + "\t" + text(pieces_) +
         "\t" + text(count) + "\t" + text(totalDiscs) + "\r\n" + lines;
}

}  // namespace korvenal::test
