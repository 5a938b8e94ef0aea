#include "ui/DiscTexts.h"

#include <QCoreApplication>
#include <array>

#include "burn/DiscTexts.h"
#include "core/SizeText.h"
#include "platform/BurnEngine.h"
#include "platform/DiscType.h"
#include "ui/Texts.h"

namespace korvenal::ui {

namespace {

constexpr std::array<std::uint8_t, 8> BlankTypes = {DiscCdR,        DiscCdRw,      DiscDvdR,
                                                    DiscDvdRw,      DiscDvdPlusRw, DiscDvdPlusR,
                                                    DiscDvdPlusRDl, DiscDvdRam};

QString translated(const char* text) {
  return QCoreApplication::translate("DiscTexts", text);
}

QString capacityText(const ImageDisc& disc) {
  return toQt(formatSizeText(Fixed4(disc.capacityBlocks * BlockBytes), true));
}

}  // namespace

std::span<const std::uint8_t> blankDiscTypes() {
  return BlankTypes;
}

QString discTypeText(std::uint8_t type) {
  return toQt(doGetDiscTypeName(type));
}

QString discDescription(const ImageDisc& disc) {
  if (disc.file.empty()) return translated("no disc");
  const QString type = discTypeText(disc.typeCode);
  if (disc.sessions == 0 && disc.closed)
    return QStringLiteral("%1, %2").arg(type, translated("damaged"));
  if (disc.sessions == 0)
    return QStringLiteral("%1, %2, %3").arg(type, translated("blank"), capacityText(disc));
  return QStringLiteral("%1, %2").arg(type, toQt(disc.label));
}

}  // namespace korvenal::ui
