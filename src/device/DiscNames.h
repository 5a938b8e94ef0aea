#pragma once

#include <string>

#include "platform/ImageTrays.h"

namespace korvenal {

/// What discs of image drives are called, so that a person and the feeder know them again.
namespace DiscNames {

/// The volume label of a disc of a backup: "Backup #2".
std::string labelOf(int disc);
/// The file name, without extension, of a disc of a set: "Photos (2026-11-22-10-00-F) disc 02".
std::string ofSet(const std::string& setName, int disc);

/// One of its sessions bears the label.
bool bears(const ImageDisc& disc, const std::string& label);
/// A tree on the disc bears the label of some disc of a set.
bool isOfAnySet(const ImageDisc& disc);
bool isOfSet(const ImageDisc& disc, const std::string& setName);
/// True for "name.iso" and, when that was taken, "name 2.iso".
bool isNamed(const ImageDisc& disc, const std::string& name);
/// The name says a disc of a set, and another than this one.
bool isMeantForAnother(const ImageDisc& disc, const std::string& name);
/// The name says a disc of a set, and of another set than this one.
bool isOfAnotherSet(const ImageDisc& disc, const std::string& setName);
/// Nothing was ever tried on it, or it was erased, and no other program is at work on it.
bool isBlank(const ImageDisc& disc);

}  // namespace DiscNames

}  // namespace korvenal
