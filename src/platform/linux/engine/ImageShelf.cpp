#include "platform/linux/engine/ImageShelf.h"

#include <algorithm>

#include "platform/Paths.h"
#include "platform/Text.h"
#include "platform/linux/engine/VolumeLabel.h"

namespace korvenal {

namespace {

constexpr char FirstLetter = 'V';
constexpr std::int64_t MaxTraysBytes = 65536;
constexpr std::size_t MaxStemBytes = 200;
constexpr std::string_view ImageEnd = ".iso";
const std::string TraysName = "trays";

/// A file name that no file system objects to.
std::string fileNameOf(std::string_view text) {
  std::string name;
  for (const char c : Text::firstBytes(text, MaxStemBytes))
    name += c == '/' || c == '\\' || static_cast<unsigned char>(c) < ' ' ? '_' : c;
  if (name.empty() || name[0] == '.') name.insert(0, "Disc");
  return name;
}

}  // namespace

ImageShelf::ImageShelf(Files& files, Options options)
    : files_(files), folder_(Paths::withEnd(options.folder)), feeder_(options.feeder) {
  const int count = std::clamp(options.drives, 1, MaxDrives);
  options.abilities.resize(static_cast<std::size_t>(count), DriveAbility::WritesDualLayer);
  for (int i = 0; i < count; ++i) {
    const ImageDrive::Identity identity{static_cast<char>(FirstLetter + i), i + 1,
                                        options.abilities[static_cast<std::size_t>(i)]};
    drives_.push_back(std::make_unique<ImageDrive>(files_, identity, [this] { storeTrays(); }));
  }
  loadTrays();
}

std::vector<char> ImageShelf::letters() const {
  std::vector<char> all;
  for (const auto& drive : drives_) all.push_back(drive->letter());
  return all;
}

std::vector<Drive*> ImageShelf::drives() const {
  std::vector<Drive*> all;
  for (const auto& drive : drives_) all.push_back(drive.get());
  return all;
}

ImageDrive* ImageShelf::find(char letter) const {
  for (const auto& drive : drives_)
    if (drive->letter() == letter) return drive.get();
  return nullptr;
}

bool ImageShelf::isInUse(const std::string& image) const {
  return std::any_of(drives_.begin(), drives_.end(),
                     [&](const auto& drive) { return drive->disc() == image; });
}

ImageUse ImageShelf::usedElsewhere(const std::string& image) const {
  // The drive's own lock does not count, and only the drive can tell it from others.
  for (const auto& drive : drives_)
    if (drive->disc() == image) return drive->elsewhere();
  return ImageLock().others(image);
}

ImageDisc ImageShelf::describe(const std::string& image) const {
  ImageDisc disc;
  const auto profile = ImageDrive::profileOf(files_, image);
  if (!profile) return disc;
  disc.file = image;
  disc.typeCode = profile->type;
  disc.capacityBlocks = profile->capacity;
  disc.sessions = static_cast<int>(profile->sessions.size());
  disc.closed = profile->formatted && !profile->isAppendable();
  disc.modified = files_.doGetInfo(image).modified;
  disc.elsewhere = usedElsewhere(image);
  if (profile->sessions.empty() || disc.elsewhere == ImageUse::Written) return disc;
  const auto blocks = openImageBlocks(image);
  const auto head = blocks ? readVolumeHead(*blocks, 0) : std::nullopt;
  if (!head) return disc;
  disc.label = head->label;
  disc.trees = readSessions(*blocks, ImageDrive::startsOn(*blocks, *profile));
  return disc;
}

ImageDisc ImageShelf::discIn(char letter) const {
  const ImageDrive* drive = find(letter);
  return drive != nullptr && !drive->disc().empty() ? describe(drive->disc()) : ImageDisc();
}

bool ImageShelf::isOpen(char letter) const {
  const ImageDrive* drive = find(letter);
  return drive != nullptr && drive->isOpen();
}

std::vector<ImageDisc> ImageShelf::discsOnShelf() const {
  std::vector<ImageDisc> discs;
  for (const std::string& name : files_.listFolder(folder_)) {
    const std::string image = folder_ + name;
    if (!Text::endsWith(Text::toLower(name), ImageEnd) || isInUse(image)) continue;
    ImageDisc disc = describe(image);
    if (!disc.file.empty()) discs.push_back(std::move(disc));
  }
  return discs;
}

/// An image without a profile was not made here: it is a person's own file.
std::vector<std::string> ImageShelf::discFiles() const {
  const std::string profileEnd = ImageDrive::profileFileOf("");
  std::vector<std::string> all = {folder_ + TraysName};
  const auto add = [&](const std::string& profile) {
    all.push_back(profile);
    all.push_back(profile.substr(0, profile.size() - profileEnd.size()));
  };
  for (const std::string& name : files_.listFolder(folder_))
    if (Text::endsWith(Text::toLower(name), std::string(ImageEnd) + profileEnd))
      add(folder_ + name);
  for (const auto& drive : drives_)
    if (const std::string profile = ImageDrive::profileFileOf(drive->disc());
        !drive->disc().empty() && files_.doFileExists(profile))
      add(profile);
  return all;
}

std::vector<std::string> ImageShelf::writtenFiles() const {
  std::vector<std::string> all = {folder_ + TraysName};
  for (const auto& drive : drives_) {
    const auto profile = ImageDrive::profileOf(files_, drive->disc());
    if (!profile || !(profile->isAppendable() || DiscTypes::isRewritable(profile->type))) continue;
    all.push_back(drive->disc());
    all.push_back(ImageDrive::profileFileOf(drive->disc()));
  }
  return all;
}

std::string ImageShelf::freeName(const std::string& name) const {
  const std::string stem = folder_ + fileNameOf(name);
  std::string image = stem + std::string(ImageEnd);
  for (int number = 2; files_.doFileExists(image); ++number)
    image = stem + " " + std::to_string(number) + std::string(ImageEnd);
  return image;
}

TrayResult ImageShelf::insertBlank(char letter, std::uint8_t typeCode, const std::string& name,
                                   std::int64_t blocks) {
  const ImageDrive* drive = find(letter);
  if (drive == nullptr || drive->isBusy()) return {TrayResult::DriveBusy};
  if (!DiscTypes::isRecordable(typeCode) || blocks < 0) return {TrayResult::NotADisc};
  if (!files_.doCreateFolderPath(folder_)) return {TrayResult::NotMade};
  const std::string image = freeName(name);
  // The profile first: an image without one would pass for a pressed disc.
  const std::string profile = DiscProfile::blank(typeCode, blocks).toText();
  if (!files_.writeAll(ImageDrive::profileFileOf(image), profile)) return {TrayResult::NotMade};
  const auto file = files_.doCreateFile(image);
  if (!file || !file->finish()) {
    files_.doDeleteFile(ImageDrive::profileFileOf(image));
    return {TrayResult::NotMade};
  }
  return insert(letter, image);
}

TrayResult ImageShelf::insert(char letter, const std::string& file) {
  ImageDrive* drive = find(letter);
  const std::string image = Paths::isNative(file) ? file : folder_ + file;
  if (drive == nullptr || drive->isBusy()) return {TrayResult::DriveBusy};
  if (drive->disc() != image && isInUse(image)) return {TrayResult::InAnotherDrive};
  if (!ImageDrive::profileOf(files_, image)) return {TrayResult::NotADisc};
  if (usedElsewhere(image) == ImageUse::Written) return {TrayResult::InUse};
  drive->setTray(image, false);
  storeTrays();
  return {};
}

TrayResult ImageShelf::remove(char letter) {
  ImageDrive* drive = find(letter);
  if (drive == nullptr || drive->isBusy()) return {TrayResult::DriveBusy};
  drive->setTray({}, true);
  storeTrays();
  return {};
}

void ImageShelf::loadTrays() {
  const auto text = files_.readAll(folder_ + TraysName, MaxTraysBytes);
  if (!text) return;
  for (const std::string& line : Text::split(*text, '\n')) {
    const auto fields = Text::split(line, '\t');
    if (fields.size() != 3 || fields[0].size() != 1) continue;
    ImageDrive* drive = find(fields[0][0]);
    if (drive == nullptr) continue;
    std::string image = fields[2];
    if (!image.empty() && !Paths::isNative(image)) image.insert(0, folder_);
    const bool there = !image.empty() && files_.doFileExists(image) && !isInUse(image);
    drive->setTray(there ? image : std::string(), fields[1] == "open");
  }
}

void ImageShelf::storeTrays() {
  std::string text;
  for (const auto& drive : drives_) {
    std::string image = drive->disc();
    if (image.find_first_of("\t\n") != std::string::npos) image.clear();
    if (Paths::doGetFolderPart(image) == Paths::withoutEnd(folder_))
      image = Paths::doGetFilePart(image);
    text += std::string(1, drive->letter()) + '\t' + (drive->isOpen() ? "open" : "closed") + '\t' +
            image + '\n';
  }
  // A tray whose state cannot be kept still works until the program ends.
  if (files_.doCreateFolderPath(folder_)) files_.writeAll(folder_ + TraysName, text);
}

}  // namespace korvenal
