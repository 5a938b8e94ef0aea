#include "platform/linux/engine/BlockReader.h"

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/BurnEngine.h"
#include "platform/linux/Descriptor.h"

namespace korvenal {

namespace {

class ImageBlocks : public BlockReader {
 public:
  explicit ImageBlocks(Descriptor file) : file_(std::move(file)) {}

  std::int64_t read(std::uint32_t first, std::uint32_t count, std::uint8_t* buffer) override {
    const std::size_t wanted = std::size_t{count} * BlockBytes;
    std::size_t done = 0;
    while (done < wanted) {
      const auto place = std::int64_t{first} * BlockBytes + static_cast<std::int64_t>(done);
      const ssize_t got = ::pread(file_.get(), buffer + done, wanted - done, place);
      if (got < 0 && errno == EINTR) continue;
      if (got < 0 && done < BlockBytes) return -errno;
      if (got <= 0) break;
      done += static_cast<std::size_t>(got);
    }
    return static_cast<std::int64_t>(done / BlockBytes);
  }

  std::int64_t copyTo(int target, std::uint32_t first, std::uint32_t count) override {
    off_t place = std::int64_t{first} * BlockBytes;
    const off_t begin = place, end = begin + std::int64_t{count} * BlockBytes;
    while (place < end) {
      const ssize_t got =
          ::sendfile(target, file_.get(), &place, static_cast<std::size_t>(end - place));
      if (got > 0 || (got < 0 && errno == EINTR)) continue;
      if (place > begin) break;
      if (got == 0) return -EIO;
      return errno == EINVAL || errno == ENOSYS ? 0 : -errno;
    }
    return place - begin;
  }

 private:
  Descriptor file_;
};

}  // namespace

std::unique_ptr<BlockReader> openImageBlocks(const std::string& file) {
  Descriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!descriptor || ::fstat(descriptor.get(), &status) != 0 || !S_ISREG(status.st_mode))
    return nullptr;
  return std::make_unique<ImageBlocks>(std::move(descriptor));
}

}  // namespace korvenal
