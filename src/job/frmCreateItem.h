#pragma once

#include <string>
#include <string_view>

#include "job/AddItems.h"
#include "platform/Form.h"

namespace korvenal {

/// Makes an item by hand, for a path that need not exist now.
class frmCreateItem : public Form {
 public:
  frmCreateItem(AddItems& items, const Job& job, Desktop& desktop)
      : items_(items), job_(job), desktop_(desktop) {}

  enum class Field { Name, Source };

  int TypeOpt = 0;            ///< 0 file, 1 folder
  Field focus = Field::Name;  ///< the field that the last message was about
  const std::string& txName() const { return name_; }
  const std::string& txSource() const { return source_; }
  /// Characters that a name or path may not hold are dropped, and so are line ends.
  void setName(std::string_view text);
  void setSource(std::string_view text);
  std::string nameLabel() const;
  std::string sourceLabel() const;

  bool isOkEnabled() const;
  /// Adds the item and closes, or tells what is wrong and stays, with the focus where it is wrong.
  void pbOK();
  void pbCancel() { doClose(); }

 private:
  /// The message for what was typed; empty when all is well.
  std::string pathError(const std::string& source) const;
  bool isNameTaken() const;
  void doTellError(Field field, const std::string& text);

  AddItems& items_;
  const Job& job_;
  Desktop& desktop_;
  std::string name_;
  std::string source_;
};

}  // namespace korvenal
