#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <memory_resource>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/BurnEngine.h"
#include "platform/Clock.h"
#include "platform/linux/engine/BlockReader.h"
#include "platform/linux/engine/DiscLibraries.h"
#include "platform/linux/engine/ReleaseThread.h"
#include "platform/linux/engine/SourceStream.h"

struct Iso_Image;
struct iso_write_opts;

namespace korvenal {

struct EarlierImage;

struct ImageRelease {
  void operator()(Iso_Image* image) const;
};
struct WriteOptionsRelease {
  void operator()(iso_write_opts* options) const;
};
using ImagePtr = std::unique_ptr<Iso_Image, ImageRelease>;
using WriteOptionsPtr = std::unique_ptr<iso_write_opts, WriteOptionsRelease>;

/// A tree that is ready to be written. Its parts refer to each other, so it stays where it is.
struct PreparedTrack {
  static constexpr std::size_t HeadBytes = 65536;

  std::vector<StreamSource> sources;
  StreamContext context;
  std::vector<FileFault> leftOut;  ///< files that are not in the tree
  std::uint32_t startBlock = 0;
  std::int64_t blocks = 0;  ///< size of the track
  std::int64_t gap = 0;     ///< blocks in front of it that it takes from the disc's room as well
  bool joliet = true;
  bool appended = false;
  /// What goes to the start of the disc after the track, to lead to its tree.
  std::vector<std::uint8_t> head = std::vector<std::uint8_t>(HeadBytes);
  ImagePtr image;

  std::int64_t imageBlocks() const { return gap + blocks; }
  /// Options for one run over the image.
  WriteOptionsPtr writeOptions();
};

/// The tree of the next track, gathered name by name and turned into the library's at the end.
class IsoLayout {
 public:
  /// A range of a source file; `length` -1 takes the whole file.
  struct Range {
    std::int64_t offset = 0;
    std::int64_t length = -1;
  };
  struct NewFile {
    std::string_view parent;  ///< disc path; "\" is the root
    std::string_view name;
    std::string_view source;  ///< native path
    Range range;
    std::optional<PlannedSource> planned;
  };
  struct Request {
    const DiscLibraries& libraries;
    std::uint32_t startBlock = 0;
    std::int64_t gap = 0;  ///< as in PreparedTrack
    bool joliet = true;
    bool skipFaults = true;  ///< leaves out files that cannot be read; else the preparation fails
    bool replace = false;    ///< a new file takes the place of an imported one of the same name
    /// The earlier sessions, when they are at hand.
    std::shared_ptr<EarlierImage> earlier = nullptr;
    /// Where they are taken from otherwise; with neither the tree stands alone.
    std::function<std::unique_ptr<BlockReader>()> openEarlier = nullptr;
    std::uint32_t earlierStart = 0;
    /// Called on the calling thread while another one works, some fifty times a second; true stops.
    std::function<bool()> pump = nullptr;
    std::string faultListName = {};  ///< at the root; empty for none
    std::int64_t faultListBytes = 0;
    std::int64_t roomBlocks = 0;  ///< which the track must stay below for the list to stand in it
    /// Where tracks are let go. Those under way are waited for: the library's images share a
    /// counter that is not safe among threads.
    ReleaseThread* release = nullptr;
  };

  explicit IsoLayout(const Clock& clock) : clock_(clock) {
    folders_.emplace_back();
    ids_.emplace("", 0);
  }
  IsoLayout(const IsoLayout&) = delete;
  IsoLayout& operator=(const IsoLayout&) = delete;

  /// `source`: a native path, whose folder the new one shall look like; empty for none.
  void createDir(std::string_view parent, std::string_view name, std::string_view source = {});
  void insert(NewFile file);
  /// As `BurnEngine::do_MeasureSources`.
  std::vector<SourceFinding> measure(const std::function<bool()>& pump);
  /// Null for a file that was not found, and for a number of no file.
  const SourceState* measured(std::size_t file) const;
  void leaveOut(std::size_t file);
  /// Null when it failed or was stopped; `why` tells.
  std::shared_ptr<PreparedTrack> prepare(Request request, std::string& why) const;

 private:
  struct Folder {
    std::string_view name;
    std::uint32_t parent = 0;
    std::string_view source = {};
  };
  struct File {
    std::string_view name;
    std::uint32_t parent = 0;
    std::string_view source;
    Range range;
    std::optional<PlannedSource> planned;
    std::optional<SourceState> found = std::nullopt;  ///< when it was measured
    bool leftOut = false;
    bool unsaved = false;  ///< measured, and cannot be saved
  };
  friend class TreeBuilder;

  /// Why the file cannot be saved as it is; empty when it can.
  static std::string findFault(const File& file, const SourceState& state);
  /// A finding when the source is not as planned.
  std::optional<SourceFinding> measureFile(std::size_t index);

  std::uint32_t folderId(std::string_view path);
  std::string_view keep(std::string_view text);
  std::string pathOf(std::uint32_t folder, std::string_view name) const;

  const Clock& clock_;
  // A million files must neither be moved when there are more nor given back one by one: both would
  // keep a window waiting.
  std::pmr::monotonic_buffer_resource memory_;
  std::pmr::deque<Folder> folders_{&memory_};  ///< the root first, parents before their children
  std::pmr::deque<File> files_{&memory_};
  std::pmr::map<std::string_view, std::uint32_t> ids_{&memory_};  ///< by disc path; "" is the root
  std::string lastPath_;
  std::uint32_t lastId_ = 0;
};

}  // namespace korvenal
