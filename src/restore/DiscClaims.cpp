#include "restore/DiscClaims.h"

#include "platform/FaultList.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "restore/IndexNames.h"
#include "restore/IndexReading.h"
#include "restore/IndexText.h"

namespace korvenal {

namespace {

constexpr const char* NotSaved = "The file was not saved when this disc was burned.";
constexpr int PieceType = 4;

/// The path on disc of the file that a line tells of; empty for folders and split files.
std::string fileOf(const IndexLine& line) {
  const std::int64_t type = Text::toInteger(line[IndexType]);
  std::string path(line[IndexName]);
  if (type == PieceType) return path + "." + Text::zeroPadded(Text::toInteger(line[IndexSplit]), 3);
  return type == static_cast<int>(RestoreKind::File) ? path : std::string();
}

}  // namespace

std::string DiscClaims::doBeginDisc(const DiscInHand& disc) {
  root_ = disc.pathOf("");
  number_ = disc.number;
  isOfSet_ = disc.isOfSet;
  own_.reset();
  told_ = false;
  notSaved_.clear();
  const std::string unreadable = doReadFaults();
  return unreadable.empty() ? unreadable : Paths::onDrive(disc.letter, unreadable);
}

std::string DiscClaims::doReadFaults() {
  for (const std::string& name : faultLists()) {
    const std::string path = root_ + name;
    if (!services_.files.doFileExists(path)) continue;
    const auto text = services_.files.readAll(path, FaultList::Bytes);
    const auto paths = text ? FaultList::parse(*text) : std::nullopt;
    if (!paths) return name;
    notSaved_.insert(paths->begin(), paths->end());
  }
  return {};
}

std::vector<std::string> DiscClaims::faultLists() const {
  const std::string name = FaultList::nameBeside(services_.page.IndexName);
  // Of an index file that somebody renamed the name on the discs is not known: where its present
  // one is that of no index, any list may be it, else any that a backup of its date has made.
  const auto mayBeIt = [&](const std::string& one) {
    if (!FaultList::isName(name) || one == name) return true;
    const std::string index = one.substr(0, one.size() - FaultList::Extension.size()) + ".bdx";
    return IndexNames::isOf(index, services_.page.identity);
  };
  std::vector<std::string> lists = services_.files.listFolder(root_);
  std::erase_if(lists,
                [&](const std::string& one) { return !FaultList::isName(one) || !mayBeIt(one); });
  return lists;
}

std::string DiscClaims::doFindFault(const std::string& discPath, std::optional<Fixed4> wanted,
                                    Fixed4 onDisc) {
  if (notSaved_.contains(discPath)) return NotSaved;
  if (!wanted || *wanted == onDisc) return {};
  if (!isBurnedAsChanged(discPath, onDisc)) return WrongSize;
  if (!told_)
    services_.grids.doEventMessage("Files of backup disc #" + std::to_string(number_) +
                                   " had changed when it was burned; its own index holds.");
  told_ = true;
  return {};
}

bool DiscClaims::isBurnedAsChanged(const std::string& discPath, Fixed4 onDisc) {
  if (!own_) doReadOwnIndex();
  const auto own = own_->find(discPath);
  return own != own_->end() && Fixed4(own->second) == onDisc;
}

void DiscClaims::doReadOwnIndex() {
  own_.emplace();
  if (!isOfSet_) return;
  const IndexReading reading(services_.desktop, services_.files, services_.archive,
                             services_.workspace);
  const auto pump = [this] { services_.desktop.doYield(); };
  IndexText index;
  auto content = reading.doRead(root_ + services_.page.IndexName);
  if (!content || !index.load(std::move(content->text), pump)) return;
  IndexCursor cursor(index.text());
  IndexLine line;
  for (cursor.next(line); cursor.next(line);) {
    pump();
    if (Text::toInteger(line[IndexDisc]) != number_) continue;
    if (std::string path = fileOf(line); !path.empty())
      own_->emplace(std::move(path), Text::toInteger(line[IndexSize]));
  }
}

}  // namespace korvenal
