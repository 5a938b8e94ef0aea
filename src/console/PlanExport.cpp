#include "console/PlanExport.h"

#include <cstddef>

#include "platform/Text.h"

namespace korvenal::console {

FileOutcome writePlanRows(Files& files, const std::string& path, const Plan& plan) {
  constexpr std::size_t FlushBytes = 1 << 20;
  const auto file = files.doCreateFile(path);
  if (!file) return {.code = 1, .text = "The file cannot be written."};
  std::string lines;
  const PlanTable& rows = plan.vsBuffer;
  for (int row = 1; row < rows.Rows(); ++row) {
    for (int column = 0; column < PlanColumns; ++column) {
      if (column > 0) lines += '\t';
      rows.appendText(lines, row, column);
    }
    lines += '\n';
    if (lines.size() < FlushBytes) continue;
    if (!file->write(lines)) break;
    lines.clear();
  }
  file->write(lines);
  return file->finish();
}

std::string jsonString(std::string_view text) {
  constexpr char Digits[] = "0123456789abcdef";
  std::string result = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      result += '\\';
      result += c;
    } else if (byte < 0x20) {
      result += "\\u00";
      result += Digits[byte >> 4];
      result += Digits[byte & 15];
    } else {
      result += c;
    }
  }
  return result + '"';
}

std::string planSummary(const Plan& plan, const ActionState& state) {
  const auto flag = [](bool value) { return value ? "true" : "false"; };
  std::string used;
  for (int disc = 1; disc <= plan.TotalDiscs; ++disc)
    used += (disc > 1 ? ", " : "") + plan.doGetDiscSZ(disc).toText();
  std::string json = "{\n";
  json += "  \"TotalDiscs\": " + std::to_string(plan.TotalDiscs) + ",\n";
  json += "  \"TotalFiles\": " + std::to_string(plan.TotalFiles) + ",\n";
  json += "  \"TotalSplits\": " + std::to_string(plan.TotalSplits) + ",\n";
  json += "  \"TotalSize\": " + plan.TotalSize.toText() + ",\n";
  json += "  \"DiscUsed\": [" + used + "],\n";
  json += "  \"IndexSizePreliminary\": " + plan.IndexSizePreliminary.toText() + ",\n";
  json += "  \"IndexSizeFinal\": " + plan.IndexSizeFinal.toText() + ",\n";
  json += "  \"RunStamp\": " + jsonString(plan.RunStamp) + ",\n";
  json += std::string("  \"StopAction\": ") + flag(state.StopAction) + ",\n";
  json += std::string("  \"LimitExceeded\": ") + flag(state.LimitExceeded) + "\n}\n";
  return json;
}

}  // namespace korvenal::console
