#include "platform/linux/engine/ImageDriveSettings.h"

#include <algorithm>

#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::string_view Section = "ImageDrives";
constexpr int NumberDigits = 10;

DriveAbility abilityOf(std::string_view text) {
  if (Text::equalsIgnoreCase(text, "ROM")) return DriveAbility::Reads;
  if (Text::equalsIgnoreCase(text, "CD")) return DriveAbility::WritesCd;
  if (Text::equalsIgnoreCase(text, "DVD")) return DriveAbility::WritesDvd;
  return DriveAbility::WritesDualLayer;
}

}  // namespace

ImageShelf::Options readImageDrives(const Profile& profile, const std::string& folder) {
  ImageShelf::Options options;
  options.folder = folder;
  options.drives = static_cast<int>(std::clamp<std::int64_t>(
      profile.doReadProfile(Section, "Drives", "1", NumberDigits), 1, ImageShelf::MaxDrives));
  options.feeder = profile.doReadProfile(Section, "Feeder", "1", NumberDigits) == 1;
  for (int number = 1; number <= options.drives; ++number)
    options.abilities.push_back(
        abilityOf(profile.doReadProfile(Section, "Drive" + std::to_string(number), "DL")));
  return options;
}

}  // namespace korvenal
