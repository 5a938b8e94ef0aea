#include "plan/RunNames.h"

#include "platform/FaultList.h"
#include "platform/Text.h"

namespace korvenal {

namespace {

const std::string IndexExtension = ".bdx";
/// 255 bytes of a file name less "_KORVEN{", "(", the stamp of 18 bytes, ")}" and the longest
/// extension of a file that stands beside the index.
constexpr std::size_t JobNameBytes = 226 - FaultList::Extension.size();

bool isUnsafe(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7F || c == '/' || c == '\\';
}

}  // namespace

std::string makeRunStamp(UnixTime moment, bool differential) {
  const Dates::Fields f = Dates::fieldsOf(moment);
  return Text::zeroPadded(f.year, 4) + "-" + Text::zeroPadded(f.month, 2) + "-" +
         Text::zeroPadded(f.day, 2) + "-" + Text::zeroPadded(f.hour, 2) + "-" +
         Text::zeroPadded(f.minute, 2) + "-" + (differential ? "D" : "F");
}

std::string jobNameForFiles(std::string_view jobName) {
  std::string name(Text::firstBytes(jobName, JobNameBytes));
  for (char& c : name)
    if (isUnsafe(c)) c = '_';
  return name;
}

void nameRun(Plan& plan, const Workspace& workspace, std::string_view jobName, UnixTime now) {
  plan.RunDate = now;
  plan.RunStamp = makeRunStamp(now, plan.IsDifferential);
  plan.identity = SetIdentity::ofRun(now, plan.IsDifferential, jobName);
  const std::string name = "_KORVEN{" + jobNameForFiles(jobName) + "(" + plan.RunStamp + ")}";
  plan.IndexDiscName = name + IndexExtension;
  plan.FaultListName = FaultList::nameBeside(plan.IndexDiscName);
  plan.IndexTempPath = workspace.TempFolder + name + IndexExtension;
  plan.IndexZipPath = workspace.TempFolder + name + ".zip";
}

}  // namespace korvenal
