#pragma once

#include <string>

#include "platform/Files.h"
#include "platform/IndexArchive.h"

namespace korvenal {

/// IndexArchive as zip files: packed in one go by libdeflate, framed, encrypted and unpacked by
/// libzip. Packing maps the text into memory and holds the packed form beside it.
class ZipIndexArchive : public IndexArchive {
 public:
  /// `files` reads archives that lie on discs.
  explicit ZipIndexArchive(const FileView& files) : files_(files) {}

  int compress(const std::string& archive, const std::string& file, const std::string& password,
               const Pump& pump) override;
  int extract(const std::string& archive, const std::string& file, const std::string& password,
              long long maxBytes, const Pump& pump) override;
  std::string entryName(const std::string& archive) override;
  bool isArchive(const std::string& path) override;

 private:
  const FileView& files_;
};

}  // namespace korvenal
