#include "platform/linux/ZipIndexArchive.h"

#include <fcntl.h>
#include <libdeflate.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <ctime>
#include <future>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/Paths.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/SystemFiles.h"

namespace korvenal {

namespace {

constexpr int Failed = -1;
constexpr int Level = 7;  ///< about as small as other packers at their best, in a fifth of the time
constexpr std::int64_t MaxArchiveBytes = 1LL << 30;
constexpr std::int64_t PieceBytes = FileView::PieceBytes;

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

/// Bytes that libzip asks for, or writes, by calls.
class ZipContent {
 public:
  ZipContent(const ZipContent&) = delete;
  ZipContent& operator=(const ZipContent&) = delete;

  /// The function for libzip; `self` is a pointer to a ZipContent.
  static zip_int64_t serve(void* self, void* data, zip_uint64_t size, zip_source_cmd_t command) {
    return static_cast<ZipContent*>(self)->answer(data, size, command);
  }

 protected:
  /// `supports` is a set of the library's source commands.
  explicit ZipContent(zip_int64_t supports) : supports_(supports) {
    zip_error_init(&error_);
    zip_stat_init(&stat_);
  }
  virtual ~ZipContent() { zip_error_fini(&error_); }

  /// The bytes from the place `at_` on; their number, or -1 with `error_` set.
  virtual zip_int64_t read(void* data, zip_uint64_t size) = 0;
  /// All other commands; -1 with `error_` set for those that it does not know.
  virtual zip_int64_t answerMore(void*, zip_uint64_t, zip_source_cmd_t) {
    zip_error_set(&error_, ZIP_ER_OPNOTSUPP, 0);
    return -1;
  }

  zip_stat_t stat_{};
  zip_error_t error_{};
  std::int64_t at_ = 0;

 private:
  zip_int64_t answer(void* data, zip_uint64_t size, zip_source_cmd_t command);
  zip_int64_t seek(void* data, zip_uint64_t size);

  zip_int64_t supports_;
};

zip_int64_t ZipContent::seek(void* data, zip_uint64_t size) {
  const auto place = zip_source_seek_compute_offset(static_cast<zip_uint64_t>(at_), stat_.size,
                                                    data, size, &error_);
  if (place < 0) return -1;
  at_ = place;
  return 0;
}

zip_int64_t ZipContent::answer(void* data, zip_uint64_t size, zip_source_cmd_t command) {
  switch (command) {
    case ZIP_SOURCE_OPEN:
      at_ = 0;
      return 0;
    case ZIP_SOURCE_READ: {
      const zip_int64_t count = read(data, size);
      if (count > 0) at_ += count;
      return count;
    }
    case ZIP_SOURCE_SEEK:
      return seek(data, size);
    case ZIP_SOURCE_TELL:
      return at_;
    case ZIP_SOURCE_STAT:
      if (size < sizeof stat_) return -1;
      std::memcpy(data, &stat_, sizeof stat_);
      return sizeof stat_;
    case ZIP_SOURCE_ERROR:
      return zip_error_to_data(&error_, data, size);
    case ZIP_SOURCE_SUPPORTS:
      return supports_;
    case ZIP_SOURCE_CLOSE:
    case ZIP_SOURCE_FREE:
      return 0;
    default:
      return answerMore(data, size, command);
  }
}

/// Hands the packed form to libzip as the content of an entry that needs no more packing.
class PackedSource : public ZipContent {
 public:
  PackedSource(const MappedFile& text, const Packed& packed)
      : ZipContent(ZIP_SOURCE_SUPPORTS_READABLE), packed_(packed) {
    stat_.valid =
        ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_MTIME | ZIP_STAT_CRC | ZIP_STAT_COMP_METHOD;
    stat_.size = text.size();
    stat_.comp_size = packed.size;
    stat_.mtime = text.modified();
    stat_.crc = libdeflate_crc32(0, text.bytes(), text.size());
    stat_.comp_method = ZIP_CM_DEFLATE;
  }

 private:
  zip_int64_t read(void* data, zip_uint64_t size) override {
    const auto done = static_cast<std::size_t>(at_);
    const std::size_t count = std::min<std::size_t>(size, packed_.size - done);
    std::memcpy(data, packed_.bytes.get() + done, count);
    return static_cast<zip_int64_t>(count);
  }

  const Packed& packed_;
};

/// Takes an archive as libzip writes it, straight into an open file: the library's own way of
/// writing goes through a second file, which a killed program leaves behind.
class ArchiveTarget : public ZipContent {
 public:
  explicit ArchiveTarget(int file) : ZipContent(Supported), file_(file) {
    stat_.valid = ZIP_STAT_SIZE;
  }

  /// Everything that the library wrote has arrived.
  bool isComplete() const { return complete_; }

 private:
  static const zip_int64_t Supported;

  zip_int64_t read(void*, zip_uint64_t) override { return 0; }  // it begins empty
  zip_int64_t answerMore(void* data, zip_uint64_t size, zip_source_cmd_t command) override;
  zip_int64_t write(const void* data, zip_uint64_t size);
  zip_int64_t seekWritten(void* data, zip_uint64_t size);

  int file_;
  std::int64_t writtenTo_ = 0;  ///< the place of the next byte
  std::int64_t end_ = 0;
  bool complete_ = false;
};

const zip_int64_t ArchiveTarget::Supported =
    ZIP_SOURCE_SUPPORTS_SEEKABLE |
    zip_source_make_command_bitmap(
        ZIP_SOURCE_BEGIN_WRITE, ZIP_SOURCE_COMMIT_WRITE, ZIP_SOURCE_ROLLBACK_WRITE,
        ZIP_SOURCE_WRITE, ZIP_SOURCE_SEEK_WRITE, ZIP_SOURCE_TELL_WRITE, ZIP_SOURCE_REMOVE, -1);

zip_int64_t ArchiveTarget::write(const void* data, zip_uint64_t size) {
  const int failed = lseek(file_, writtenTo_, SEEK_SET) < 0
                         ? errno
                         : SystemFiles::writeFully(file_, static_cast<const char*>(data),
                                                   static_cast<std::size_t>(size));
  if (failed != 0) {
    zip_error_set(&error_, ZIP_ER_WRITE, failed);
    return -1;
  }
  writtenTo_ += static_cast<std::int64_t>(size);
  end_ = std::max(end_, writtenTo_);
  return static_cast<zip_int64_t>(size);
}

zip_int64_t ArchiveTarget::seekWritten(void* data, zip_uint64_t size) {
  const auto place = zip_source_seek_compute_offset(
      static_cast<zip_uint64_t>(writtenTo_), static_cast<zip_uint64_t>(end_), data, size, &error_);
  if (place < 0) return -1;
  writtenTo_ = place;
  return 0;
}

zip_int64_t ArchiveTarget::answerMore(void* data, zip_uint64_t size, zip_source_cmd_t command) {
  switch (command) {
    case ZIP_SOURCE_BEGIN_WRITE:
    case ZIP_SOURCE_ROLLBACK_WRITE:
    case ZIP_SOURCE_REMOVE:
      return 0;
    case ZIP_SOURCE_COMMIT_WRITE:
      complete_ = true;
      return 0;
    case ZIP_SOURCE_WRITE:
      return write(data, size);
    case ZIP_SOURCE_SEEK_WRITE:
      return seekWritten(data, size);
    case ZIP_SOURCE_TELL_WRITE:
      return writtenTo_;
    default:
      return ZipContent::answerMore(data, size, command);
  }
}

using Zip = std::unique_ptr<zip_t, void (*)(zip_t*)>;

bool addEntry(zip_t* zip, const std::string& name, ZipContent& content,
              const std::string& password) {
  zip_source_t* source = zip_source_function(zip, &ZipContent::serve, &content);
  if (source == nullptr) return false;
  const zip_int64_t index = zip_file_add(zip, name.c_str(), source, ZIP_FL_ENC_UTF_8);
  if (index < 0) {
    zip_source_free(source);
    return false;
  }
  const auto entry = static_cast<zip_uint64_t>(index);
  constexpr zip_uint32_t Attributes = static_cast<zip_uint32_t>(S_IFREG | 0600) << 16;
  return zip_file_set_external_attributes(zip, entry, 0, ZIP_OPSYS_UNIX, Attributes) == 0 &&
         zip_file_set_encryption(zip, entry, ZIP_EM_TRAD_PKWARE, password.c_str()) == 0;
}

/// An empty archive that is written to the target; null when there is none.
Zip newArchive(ZipContent& target) {
  Zip zip(nullptr, zip_discard);
  zip_source_t* source = zip_source_function_create(&ZipContent::serve, &target, nullptr);
  if (source == nullptr) return zip;
  zip.reset(zip_open_from_source(source, ZIP_CREATE | ZIP_TRUNCATE, nullptr));
  if (!zip) zip_source_free(source);
  return zip;
}

int compressFile(const std::string& archive, const std::string& file, const std::string& password) {
  const MappedFile text(file);
  if (!text.valid()) return Failed;
  const std::optional<Packed> packed = pack(text);
  if (!packed) return Failed;
  Descriptor out = createPrivate(archive);
  if (!out) return Failed;
  ArchiveTarget target(out.get());
  PackedSource content(text, *packed);
  Zip zip = newArchive(target);
  if (!zip || !addEntry(zip.get(), std::string(Paths::doGetFilePart(file)), content, password))
    return Failed;
  if (zip_close(zip.get()) != 0) return Failed;
  static_cast<void>(zip.release());  // closed, and so freed
  // Some file systems report a failed write only here.
  return close(out.release()) == 0 && target.isComplete() ? 0 : Failed;
}

/// Lets libzip read an archive place by place, wherever it lies.
class ArchiveSource : public ZipContent {
 public:
  ArchiveSource(const FileView& files, const std::string& path)
      : ZipContent(ZIP_SOURCE_SUPPORTS_SEEKABLE), files_(files), path_(path) {
    stat_.valid = ZIP_STAT_SIZE;
    stat_.size = static_cast<zip_uint64_t>(files.doGetFileSize(path).whole());
  }

 private:
  zip_int64_t read(void* data, zip_uint64_t size) override;

  const FileView& files_;
  const std::string& path_;
};

zip_int64_t ArchiveSource::read(void* data, zip_uint64_t size) {
  const auto wanted = static_cast<std::int64_t>(std::min<zip_uint64_t>(size, PieceBytes));
  const auto part = files_.readPart(path_, at_, wanted);
  if (!part) {
    zip_error_set(&error_, ZIP_ER_READ, EIO);
    return -1;
  }
  std::memcpy(data, part->data(), part->size());
  return static_cast<zip_int64_t>(part->size());
}

/// An archive of one entry; null for anything else. Takes the source, which may be null.
Zip openArchive(zip_source_t* source) {
  Zip zip(nullptr, zip_discard);
  if (source == nullptr) return zip;
  zip.reset(zip_open_from_source(source, ZIP_RDONLY, nullptr));
  if (!zip) zip_source_free(source);
  if (zip && zip_get_num_entries(zip.get(), 0) != 1) zip.reset();
  return zip;
}

/// All bytes of a file, read in pieces with `pump` between them.
std::optional<std::string> readInPieces(const FileView& files, const std::string& path,
                                        const IndexArchive::Pump& pump) {
  const std::int64_t size = files.doGetFileSize(path).whole();
  if (size > MaxArchiveBytes) return std::nullopt;
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(size));
  while (static_cast<std::int64_t>(bytes.size()) < size) {
    const auto part = files.readPart(path, static_cast<std::int64_t>(bytes.size()), PieceBytes);
    if (!part || part->empty()) return std::nullopt;
    bytes += *part;
    if (pump) pump();
  }
  return bytes;
}

bool copyEntry(zip_file_t* entry, int target, std::uint64_t maxBytes) {
  std::vector<char> piece(static_cast<std::size_t>(PieceBytes));
  std::uint64_t total = 0;
  for (;;) {
    // The last read compares the checksum, and so finds a wrong password as well.
    const zip_int64_t count = zip_fread(entry, piece.data(), piece.size());
    if (count <= 0) return count == 0;
    const auto bytes = static_cast<std::size_t>(count);
    total += bytes;
    if (total > maxBytes || SystemFiles::writeFully(target, piece.data(), bytes) != 0) return false;
  }
}

/// The methods that indexes use. The library loses memory over those that it does not know.
bool isReadable(zip_t* zip) {
  zip_stat_t facts;
  if (zip_stat_index(zip, 0, 0, &facts) != 0) return false;
  const bool plain = facts.encryption_method == ZIP_EM_NONE;
  return (plain || facts.encryption_method == ZIP_EM_TRAD_PKWARE) &&
         (facts.comp_method == ZIP_CM_STORE || facts.comp_method == ZIP_CM_DEFLATE);
}

int extractEntry(const std::string& bytes, const std::string& file, const std::string& password,
                 std::uint64_t maxBytes) {
  const Zip zip = openArchive(zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr));
  if (!zip || !isReadable(zip.get())) return Failed;
  const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> entry(
      zip_fopen_index_encrypted(zip.get(), 0, 0, password.c_str()), zip_fclose);
  if (!entry) return Failed;
  const Descriptor target = createPrivate(file);
  return target && copyEntry(entry.get(), target.get(), maxBytes) ? 0 : Failed;
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
  const auto bytes = readInPieces(files_, archive, pump);
  if (!bytes || maxBytes < 0) return Failed;
  const auto limit = static_cast<std::uint64_t>(maxBytes);
  const int result = runBeside([&] { return extractEntry(*bytes, file, password, limit); }, pump);
  if (result != 0) unlink(file.c_str());
  return result;
}

std::string ZipIndexArchive::entryName(const std::string& archive) {
  ArchiveSource source(files_, archive);
  ZipContent& content = source;  // what the function gets back as its untyped pointer
  const Zip zip = openArchive(zip_source_function_create(&ZipContent::serve, &content, nullptr));
  const char* name = zip ? zip_get_name(zip.get(), 0, ZIP_FL_ENC_GUESS) : nullptr;
  return name != nullptr ? name : "";
}

bool ZipIndexArchive::isArchive(const std::string& path) {
  constexpr std::string_view Signature = "PK\3\4";
  return files_.readPart(path, 0, Signature.size()) == Signature;
}

}  // namespace korvenal
