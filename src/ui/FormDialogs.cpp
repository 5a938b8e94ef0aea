#include "ui/FormDialogs.h"

#include "ui/BrowseDialog.h"
#include "ui/CreateItemDialog.h"
#include "ui/DefaultDialog.h"
#include "ui/DeviceDialog.h"
#include "ui/EstimateDialog.h"
#include "ui/FindDialog.h"
#include "ui/LoadDiscDialog.h"
#include "ui/NoticeDialog.h"
#include "ui/PickDiscDialog.h"
#include "ui/ReadLogDialog.h"
#include "ui/ReplaceDialog.h"
#include "ui/SplitDialog.h"
#include "ui/WorkerDialog.h"

namespace korvenal::ui {

namespace {

/// The dialog of a form of this kind; null for a form of another one.
template <typename FormKind, typename Dialog, typename... Services>
std::unique_ptr<FormDialog> make(Form& form, QWidget* parent, const Services&... services) {
  auto* found = dynamic_cast<FormKind*>(&form);
  if (found == nullptr) return nullptr;
  return std::make_unique<Dialog>(*found, services..., parent);
}

}  // namespace

std::unique_ptr<FormDialog> makeFormDialog(Form& form, const DialogServices& services,
                                           QWidget* parent) {
  if (auto dialog = make<frmAddFiles, WorkerDialog>(form, parent)) return dialog;
  if (auto dialog = make<frmBrowse, BrowseDialog>(form, parent, services)) return dialog;
  if (auto dialog = make<frmCreateItem, CreateItemDialog>(form, parent)) return dialog;
  if (auto dialog = make<frmDefault, DefaultDialog>(form, parent, services)) return dialog;
  if (auto dialog = make<frmDevice, DeviceDialog>(form, parent, services)) return dialog;
  if (auto dialog = make<frmEstimateInfo, EstimateDialog>(form, parent)) return dialog;
  if (auto dialog = make<frmFind, FindDialog>(form, parent)) return dialog;
  if (auto dialog = make<frmLoadDisc, LoadDiscDialog>(form, parent, services)) return dialog;
  if (auto dialog = make<frmNotice, NoticeDialog>(form, parent)) return dialog;
  if (auto dialog = make<frmPickDisc, PickDiscDialog>(form, parent)) return dialog;
  if (auto dialog = make<frmReadLog, ReadLogDialog>(form, parent)) return dialog;
  if (auto dialog = make<frmReplace, ReplaceDialog>(form, parent)) return dialog;
  if (auto dialog = make<frmSplit, SplitDialog>(form, parent)) return dialog;
  return nullptr;
}

}  // namespace korvenal::ui
