#include "platform/linux/ZipIndexArchive.h"

#include <fcntl.h>
#include <libdeflate.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <future>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include <minizip/unzip.h>
#include <minizip/zip.h>

#include "platform/Paths.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/SystemFiles.h"

namespace korvenal {

namespace {

constexpr int Failed = -1;
constexpr int Level = 6;  ///< as small as other packers at their best, in a third of the time
constexpr std::int64_t MaxArchiveBytes = 1LL << 30;
constexpr std::size_t PieceBytes = 262144;

/// A file's bytes, read through its pages.
class MappedFile {
 public:
  explicit MappedFile(const std::string& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat info {};
    if (!file || fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode)) return;
    modified_ = info.st_mtime;
    size_ = static_cast<std::size_t>(info.st_size);
    if (size_ > 0) bytes_ = mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, file.get(), 0);
    valid_ = bytes_ != MAP_FAILED;
  }
  ~MappedFile() {
    if (valid_ && size_ > 0) munmap(bytes_, size_);
  }
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  bool valid() const { return valid_; }
  const void* bytes() const { return bytes_; }
  std::size_t size() const { return size_; }
  std::time_t modified() const { return modified_; }

 private:
  void* bytes_ = nullptr;
  std::size_t size_ = 0;
  std::time_t modified_ = 0;
  bool valid_ = false;
};

/// A new file that only its owner reads; an older one is replaced.
Descriptor createPrivate(const std::string& path) {
  if (unlink(path.c_str()) != 0 && errno != ENOENT) return {};
  return Descriptor(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600));
}

/// Runs the work on a thread of its own while the caller pumps; without a pump, or without a
/// thread to be had, on the caller's.
int runBeside(const std::function<int()>& work, const IndexArchive::Pump& pump) {
  const auto guarded = [&work] {
    try {
      return work();
    } catch (const std::exception&) {
      return Failed;
    }
  };
  if (!pump) return guarded();
  std::future<int> done;
  try {
    done = std::async(std::launch::async, guarded);
  } catch (const std::exception&) {
    return guarded();
  }
  while (done.wait_for(std::chrono::milliseconds(5)) != std::future_status::ready) pump();
  return done.get();
}

struct Packed {
  std::unique_ptr<char[]> bytes;
  std::size_t size = 0;
};

std::optional<Packed> pack(const MappedFile& text) {
  const std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> compressor(
      libdeflate_alloc_compressor(Level), libdeflate_free_compressor);
  if (!compressor) return std::nullopt;
  // The bound is as large as the text, but pages that stay untouched take no memory.
  const std::size_t bound = libdeflate_deflate_compress_bound(compressor.get(), text.size());
  Packed packed{std::make_unique_for_overwrite<char[]>(bound), 0};
  packed.size = libdeflate_deflate_compress(compressor.get(), text.bytes(), text.size(),
                                            packed.bytes.get(), bound);
  if (packed.size == 0) return std::nullopt;
  return packed;
}

zip_fileinfo entryInfo(std::time_t modified) {
  zip_fileinfo info{};
  std::tm local{};
  localtime_r(&modified, &local);
  info.tmz_date.tm_sec = static_cast<uInt>(local.tm_sec);
  info.tmz_date.tm_min = static_cast<uInt>(local.tm_min);
  info.tmz_date.tm_hour = static_cast<uInt>(local.tm_hour);
  info.tmz_date.tm_mday = static_cast<uInt>(local.tm_mday);
  info.tmz_date.tm_mon = static_cast<uInt>(local.tm_mon);
  info.tmz_date.tm_year = static_cast<uInt>(std::max(local.tm_year + 1900, 1980));
  info.external_fa = static_cast<uLong>(S_IFREG | 0600) << 16;
  return info;
}

bool writePacked(zipFile zip, const Packed& packed) {
  for (std::size_t at = 0; at < packed.size; at += PieceBytes) {
    const std::size_t count = std::min(PieceBytes, packed.size - at);
    if (zipWriteInFileInZip(zip, packed.bytes.get() + at, static_cast<unsigned>(count)) != ZIP_OK)
      return false;
  }
  return true;
}

bool addEntry(zipFile zip, const std::string& name, const MappedFile& text, const Packed& packed,
              const std::string& password) {
  constexpr uLong UnixMadeBy = (3 << 8) | 20;
  constexpr uLong NameIsUtf8 = 1 << 11;
  const uLong checksum = libdeflate_crc32(0, text.bytes(), text.size());
  const zip_fileinfo info = entryInfo(text.modified());
  const int zip64 = text.size() >= 0xFFFFFFFF ? 1 : 0;
  constexpr int Raw = 1;
  if (zipOpenNewFileInZip4_64(zip, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED,
                              Level, Raw, -MAX_WBITS, DEF_MEM_LEVEL, Z_DEFAULT_STRATEGY,
                              password.c_str(), checksum, UnixMadeBy, NameIsUtf8, zip64) != ZIP_OK)
    return false;
  const bool written = writePacked(zip, packed);
  return zipCloseFileInZipRaw64(zip, text.size(), checksum) == ZIP_OK && written;
}

int compressFile(const std::string& archive, const std::string& file, const std::string& password) {
  const MappedFile text(file);
  if (!text.valid()) return Failed;
  const std::optional<Packed> packed = pack(text);
  if (!packed) return Failed;
  // minizip opens by path; the file is there already, with the right permissions.
  if (!createPrivate(archive)) return Failed;
  zipFile zip = zipOpen64(archive.c_str(), APPEND_STATUS_CREATE);
  if (zip == nullptr) return Failed;
  const std::string name(Paths::doGetFilePart(file));
  const bool added = addEntry(zip, name, text, *packed, password);
  return zipClose(zip, nullptr) == ZIP_OK && added ? 0 : Failed;
}

/// An archive in memory, as minizip reads it.
class MemoryArchive {
 public:
  explicit MemoryArchive(const std::string& bytes) : bytes_(bytes) {
    zlib_filefunc64_def functions{};
    functions.zopen64_file = [](voidpf self, const void*, int) -> voidpf { return self; };
    functions.zread_file = [](voidpf self, voidpf, void* out, uLong count) {
      return of(self).read(static_cast<char*>(out), count);
    };
    functions.ztell64_file = [](voidpf self, voidpf) -> ZPOS64_T { return of(self).at_; };
    functions.zseek64_file = [](voidpf self, voidpf, ZPOS64_T offset, int origin) {
      return of(self).seek(offset, origin);
    };
    functions.zclose_file = [](voidpf, voidpf) { return 0; };
    functions.zerror_file = [](voidpf, voidpf) { return 0; };
    functions.opaque = this;
    zip_ = unzOpen2_64("", &functions);
  }
  ~MemoryArchive() {
    if (zip_ != nullptr) unzClose(zip_);
  }
  MemoryArchive(const MemoryArchive&) = delete;
  MemoryArchive& operator=(const MemoryArchive&) = delete;

  unzFile zip() const { return zip_; }

  /// Goes to the one entry of the archive. Nothing when it is no zip archive of one entry.
  std::optional<std::pair<std::string, std::uint64_t>> findEntry() const {
    unz_global_info64 all{};
    if (zip_ == nullptr || unzGetGlobalInfo64(zip_, &all) != UNZ_OK || all.number_entry != 1)
      return std::nullopt;
    unz_file_info64 info{};
    std::array<char, 1024> name{};
    if (unzGoToFirstFile(zip_) != UNZ_OK ||
        unzGetCurrentFileInfo64(zip_, &info, name.data(), name.size() - 1, nullptr, 0, nullptr,
                                0) != UNZ_OK)
      return std::nullopt;
    return std::pair{std::string(name.data()), static_cast<std::uint64_t>(info.uncompressed_size)};
  }

 private:
  static MemoryArchive& of(voidpf self) { return *static_cast<MemoryArchive*>(self); }

  uLong read(char* out, uLong count) {
    const std::size_t taken = std::min<std::size_t>(count, bytes_.size() - at_);
    std::memcpy(out, bytes_.data() + at_, taken);
    at_ += taken;
    return taken;
  }

  long seek(ZPOS64_T offset, int origin) {
    const std::size_t base = origin == ZLIB_FILEFUNC_SEEK_CUR   ? at_
                             : origin == ZLIB_FILEFUNC_SEEK_END ? bytes_.size()
                                                                : 0;
    if (offset > bytes_.size() - base) return -1;
    at_ = base + offset;
    return 0;
  }

  const std::string& bytes_;
  std::size_t at_ = 0;
  unzFile zip_ = nullptr;
};

bool copyEntry(unzFile zip, int target, std::uint64_t maxBytes) {
  std::vector<char> piece(PieceBytes);
  std::uint64_t total = 0;
  for (;;) {
    const int count = unzReadCurrentFile(zip, piece.data(), static_cast<unsigned>(piece.size()));
    if (count <= 0) return count == 0;
    total += static_cast<std::uint64_t>(count);
    if (total > maxBytes ||
        SystemFiles::writeFully(target, piece.data(), static_cast<std::size_t>(count)) != 0)
      return false;
  }
}

int extractEntry(const std::string& bytes, const std::string& file, const std::string& password,
                 std::uint64_t maxBytes) {
  const MemoryArchive archive(bytes);
  const auto entry = archive.findEntry();
  if (!entry || entry->second > maxBytes) return Failed;
  const Descriptor target = createPrivate(file);
  if (!target) return Failed;
  if (unzOpenCurrentFilePassword(archive.zip(), password.c_str()) != UNZ_OK) return Failed;
  const bool copied = copyEntry(archive.zip(), target.get(), maxBytes);
  // Closing compares the checksum, and so finds a wrong password as well.
  return unzCloseCurrentFile(archive.zip()) == UNZ_OK && copied ? 0 : Failed;
}

}  // namespace

int ZipIndexArchive::compress(const std::string& archive, const std::string& file,
                              const std::string& password, const Pump& pump) {
  const int result = runBeside([&] { return compressFile(archive, file, password); }, pump);
  if (result != 0) unlink(archive.c_str());
  return result;
}

int ZipIndexArchive::extract(const std::string& archive, const std::string& file,
                             const std::string& password, long long maxBytes, const Pump& pump) {
  const auto bytes = files_.readAll(archive, MaxArchiveBytes);
  if (!bytes || maxBytes < 0) return Failed;
  const auto limit = static_cast<std::uint64_t>(maxBytes);
  const int result = runBeside([&] { return extractEntry(*bytes, file, password, limit); }, pump);
  if (result != 0) unlink(file.c_str());
  return result;
}

std::string ZipIndexArchive::entryName(const std::string& archive) {
  const auto bytes = files_.readAll(archive, MaxArchiveBytes);
  if (!bytes) return {};
  const auto entry = MemoryArchive(*bytes).findEntry();
  return entry ? entry->first : std::string();
}

bool ZipIndexArchive::isArchive(const std::string& path) {
  constexpr std::string_view Signature = "PK\3\4";
  if (!Paths::isNative(path)) {
    const auto bytes = files_.readAll(path, MaxArchiveBytes);
    return bytes && bytes->starts_with(Signature);
  }
  std::array<char, Signature.size()> start{};
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  return file &&
         read(file.get(), start.data(), start.size()) == static_cast<ssize_t>(start.size()) &&
         std::string_view(start.data(), start.size()) == Signature;
}

}  // namespace korvenal
