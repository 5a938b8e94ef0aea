#include "job/JobOptions.h"

#include "platform/Text.h"

namespace korvenal {

namespace {

constexpr std::size_t FieldLength = 10;
constexpr std::size_t AttributeField = 2;

std::string field(std::int64_t number) {
  return Text::zeroPadded(number, static_cast<int>(FieldLength));
}

/// The fields of an option text, from 0.
class Fields {
 public:
  explicit Fields(std::string_view text) : text_(text) { text_.resize(OptionTextLength, '0'); }

  std::string_view at(std::size_t index) const {
    return std::string_view(text_).substr(index * FieldLength, FieldLength);
  }
  std::int64_t number(std::size_t index) const { return Text::toInteger(at(index)); }
  bool flag(std::size_t index) const { return number(index) > 0; }
  /// The number, or `otherwise` when it lies outside.
  int ranged(std::size_t index, int first, int last, int otherwise) const {
    const std::int64_t value = number(index);
    return static_cast<int>(value < first || value > last ? otherwise : value);
  }

 private:
  std::string text_;
};

}  // namespace

std::string buildOptionText(const Job& job) {
  std::string attributes;
  for (const bool box : job.chkAttribute) attributes += box ? '1' : '0';
  attributes.resize(FieldLength, '0');
  return field(job.optBackupType == 0 ? 0 : 1) + field(Text::toInteger(job.txDateFilter)) +
         attributes + field(job.comboDiscType) + field(job.FinalizeDisc) + field(job.AutoErase) +
         field(Text::toInteger(job.FileSize)) + field(Text::toInteger(job.DiscSize)) +
         field(job.SkipError) + field(job.optFileSystem == 0 ? 0 : 1) + field(job.BurnBackupIndex) +
         field(job.optSplitAndSpan == 0 ? 0 : 1) + field(job.BurnRestoreKit);
}

void applyOptionText(Job& job, std::string_view text) {
  const Fields fields(text);
  job.optBackupType = fields.ranged(0, 0, 1, 0);
  const int days = fields.ranged(1, 0, MaxFilterDays, 0);
  job.chkDateFilter = days > 0;
  job.txDateFilter = std::to_string(days);
  const std::string_view attributes = fields.at(AttributeField);
  for (std::size_t i = 0; i < job.chkAttribute.size(); ++i)
    job.chkAttribute[i] = Text::toInteger(attributes.substr(i, 1)) > 0;
  job.comboDiscType = fields.ranged(3, 0, 2, 0);
  job.FinalizeDisc = fields.flag(4);
  job.AutoErase = fields.flag(5);
  job.FileSize = std::to_string(fields.ranged(6, 5, 700, 20)) + " MB";
  job.DiscSize = std::to_string(fields.ranged(7, 1, 500, 10)) + " MB";
  job.SkipError = fields.flag(8);
  job.optFileSystem = fields.ranged(9, 0, 1, 0);
  job.BurnBackupIndex = fields.flag(10);
  job.optSplitAndSpan = fields.ranged(11, 0, 1, 0);
  job.BurnRestoreKit = fields.flag(12);
}

}  // namespace korvenal
