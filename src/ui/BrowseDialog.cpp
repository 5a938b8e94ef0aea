#include "ui/BrowseDialog.h"

#include <QAbstractFileIconProvider>
#include <QActionGroup>
#include <QCheckBox>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QStackedWidget>
#include <QTableView>
#include <QToolButton>
#include <QTreeView>

#include "ui/DialogParts.h"
#include "ui/Texts.h"
#include "ui/Theme.h"

namespace korvenal::ui {

namespace {

/// All folders look alike: the tree looks nothing up for the files that it leaves out.
class FolderIcons : public QAbstractFileIconProvider {
 public:
  QIcon icon(IconType) const override { return icons_.folder(); }
  QIcon icon(const QFileInfo&) const override { return icons_.folder(); }
  QString type(const QFileInfo&) const override { return {}; }

 private:
  FileIcons icons_;
};

constexpr int TwipsPerPixel = 15;
constexpr int FirstWidth = 900;
constexpr int FirstHeight = 600;
constexpr int SmallPixels = 16;
constexpr int LargePixels = 48;

}  // namespace

BrowseDialog::BrowseDialog(frmBrowse& form, const DialogServices& services, QWidget* parent)
    : FormDialog(form, parent),
      form_(form),
      services_(services),
      model_(form, *services.desktop),
      folderIcons_(std::make_unique<FolderIcons>()),
      folderModel_(std::make_unique<QFileSystemModel>()) {
  setObjectName(QStringLiteral("frmBrowse"));
  setWindowTitle(tr("Select Item"));
  setMinimumSize(frmBrowse::MinimumWidth, frmBrowse::MinimumHeight);
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  auto* halves = new QSplitter(this);
  halves->addWidget(folders());
  halves->addWidget(entries());
  halves->setStretchFactor(1, 1);
  halves->setChildrenCollapsible(false);
  auto* column = new QVBoxLayout(this);
  column->addWidget(pathRow());
  column->addWidget(halves, 1);
  column->addWidget(foot());
  doSetView(form_.view);
  refreshPlace();
  connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this,
          [this] { services_.showHelp("Backup Item Selector Window"); });
  connect(&model_, &BrowseModel::ticked, this, [this](std::size_t entry, bool on) {
    act([this, entry, on] { form_.doTick(entry, on); });
    model_.refreshTicks();
  });
}

BrowseDialog::~BrowseDialog() = default;

void BrowseDialog::refreshPlace() {
  const BrowserSize kept = form_.keptSize();
  const QScreen* at = screen();
  const bool maximized = at != nullptr && form_.opensMaximized(at->size().width() * TwipsPerPixel);
  // A maximized window gets a size as well: the one for when it is so no longer.
  if (kept.width > 0 && !maximized)
    resize(kept.width / TwipsPerPixel, kept.height / TwipsPerPixel);
  else
    resize(FirstWidth, FirstHeight);
  if (maximized) setWindowState(Qt::WindowMaximized);
}

QWidget* BrowseDialog::pathRow() {
  auto* whole = new QWidget(this);
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  auto* up = new QToolButton(whole);
  up->setObjectName(QStringLiteral("parent"));
  up->setIcon(Theme::icon(QStringLiteral("go-up")));
  up->setToolTip(tr("To the folder above (Alt+Up)"));
  up->setAccessibleName(up->toolTip());
  up->setShortcut(QKeySequence(QStringLiteral("Alt+Up")));
  path_ = new QLineEdit(whole);
  path_->setObjectName(QStringLiteral("path"));
  path_->setAccessibleName(tr("Folder"));
  filter_ = new QLineEdit(whole);
  filter_->setObjectName(QStringLiteral("filter"));
  filter_->setPlaceholderText(tr("Filter by name"));
  filter_->setClearButtonEnabled(true);
  auto* view = new QToolButton(whole);
  view->setObjectName(QStringLiteral("view"));
  view->setIcon(Theme::icon(QStringLiteral("view-list-details")));
  view->setToolTip(tr("How the entries are shown"));
  view->setAccessibleName(view->toolTip());
  view->setPopupMode(QToolButton::InstantPopup);
  auto* menu = new QMenu(view);
  auto* choices = new QActionGroup(menu);
  int number = 0;
  for (const char* text : frmBrowse::ViewTexts) {
    QAction* choice = menu->addAction(QString::fromLatin1(text));
    choice->setCheckable(true);
    choice->setChecked(number == form_.view);
    choices->addAction(choice);
    connect(choice, &QAction::triggered, this, [this, number] { doSetView(number); });
    ++number;
  }
  view->setMenu(menu);
  row->addWidget(up);
  row->addWidget(path_, 3);
  row->addWidget(filter_, 1);
  row->addWidget(view);
  connect(up, &QToolButton::clicked, this, [this] { act([this] { form_.doShowParent(); }); });
  // Enter here opens the folder and presses no button.
  connect(path_, &QLineEdit::returnPressed, this, [this] { doShowFolder(path_->text()); });
  connect(filter_, &QLineEdit::textChanged, &model_, &BrowseModel::setFilter);
  connect(filter_, &QLineEdit::textChanged, this, [this] { act([] {}); });
  return whole;
}

QWidget* BrowseDialog::folders() {
  folderModel_->setIconProvider(folderIcons_.get());
  folderModel_->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
  folderModel_->setRootPath(QStringLiteral("/"));
  folders_ = new QTreeView(this);
  folders_->setObjectName(QStringLiteral("folders"));
  folders_->setModel(folderModel_.get());
  folders_->setHeaderHidden(true);
  folders_->setUniformRowHeights(true);
  for (int column = 1; column < folderModel_->columnCount(); ++column) folders_->hideColumn(column);
  connect(folders_, &QTreeView::clicked, this,
          [this](const QModelIndex& at) { doShowFolder(folderModel_->filePath(at)); });
  connect(folders_, &QTreeView::activated, this,
          [this](const QModelIndex& at) { doShowFolder(folderModel_->filePath(at)); });
  return folders_;
}

QWidget* BrowseDialog::entries() {
  report_ = new QTableView(this);
  report_->setObjectName(QStringLiteral("entries"));
  report_->setModel(&model_);
  report_->setSelectionBehavior(QAbstractItemView::SelectRows);
  report_->setShowGrid(false);
  report_->setWordWrap(false);
  report_->setTabKeyNavigation(false);
  report_->verticalHeader()->hide();
  report_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  report_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
  report_->horizontalHeader()->setStretchLastSection(true);
  report_->horizontalHeader()->setHighlightSections(false);
  const int unit = fontMetrics().averageCharWidth();
  report_->setColumnWidth(BrowseModel::NameColumn, unit * 38);
  report_->setColumnWidth(BrowseModel::SizeColumn, unit * 11);
  report_->setColumnWidth(BrowseModel::TypeColumn, unit * 20);
  icons_ = new QListView(this);
  icons_->setObjectName(QStringLiteral("entryIcons"));
  icons_->setModel(&model_);
  icons_->setUniformItemSizes(true);
  icons_->setLayoutMode(QListView::Batched);
  icons_->setResizeMode(QListView::Adjust);
  icons_->setMovement(QListView::Static);
  views_ = new QStackedWidget(this);
  views_->addWidget(report_);
  views_->addWidget(icons_);
  for (QAbstractItemView* view : std::initializer_list<QAbstractItemView*>{report_, icons_}) {
    view->installEventFilter(this);
    connect(&model_, &BrowseModel::looksChanged, view->viewport(), qOverload<>(&QWidget::update));
    connect(view, &QAbstractItemView::doubleClicked, this, &BrowseDialog::doOpen);
  }
  return views_;
}

QWidget* BrowseDialog::foot() {
  auto* whole = new QWidget(this);
  auto* row = new QHBoxLayout(whole);
  row->setContentsMargins(0, 0, 0, 0);
  SelectAll_ = new QCheckBox(tr("Select &all"), whole);
  SelectAll_->setObjectName(QStringLiteral("SelectAll"));
  count_ = new QLabel(whole);
  count_->setObjectName(QStringLiteral("count"));
  CMD_[frmBrowse::CloseCommand] = namedButton("CMD0", tr("&Close"), whole);
  CMD_[frmBrowse::AddCommand] = namedButton("CMD1", tr("A&dd to Job"), whole);
  row->addWidget(SelectAll_);
  row->addWidget(count_);
  row->addStretch();
  for (QPushButton* button : CMD_) row->addWidget(button);
  connect(SelectAll_, &QCheckBox::clicked, this, &BrowseDialog::doSelectAll);
  for (int command = 0; command < 2; ++command)
    connect(CMD_[static_cast<std::size_t>(command)], &QPushButton::clicked, this, [this, command] {
      act([this, command] { form_.CMD(command); });
      model_.refreshTicks();
    });
  return whole;
}

void BrowseDialog::doShowFolder(const QString& path) {
  act([this, &path] { form_.doShowFolder(fromQt(path)); });
  // What is no folder leaves the old one, and its name comes back.
  path_->setText(toQt(form_.folder()));
}

void BrowseDialog::doOpen(const QModelIndex& index) {
  const frmBrowse::Entry& entry = model_.entry(index);
  if (!entry.isFolder()) return doTick(index);
  const std::string path = form_.pathOf(entry);
  act([this, &path] { form_.doShowFolder(path); });
}

void BrowseDialog::doTick(const QModelIndex& index) {
  const QModelIndex name = index.siblingAtColumn(BrowseModel::NameColumn);
  if (!name.isValid()) return;
  model_.setData(name, model_.entry(name).ticked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

Qt::CheckState BrowseDialog::allState() const {
  if (filter_->text().isEmpty()) {
    const frmBrowse::Ticks ticks = form_.SelectAll();
    if (ticks == frmBrowse::Ticks::None) return Qt::Unchecked;
    return ticks == frmBrowse::Ticks::All ? Qt::Checked : Qt::PartiallyChecked;
  }
  int ticked = 0;
  for (int row = 0; row < model_.rowCount(); ++row)
    if (model_.entry(model_.index(row, BrowseModel::NameColumn)).ticked) ++ticked;
  if (ticked == 0) return Qt::Unchecked;
  return ticked == model_.rowCount() ? Qt::Checked : Qt::PartiallyChecked;
}

void BrowseDialog::doSelectAll() {
  // A click on the mixed state ticks what is not ticked yet.
  model_.finish();
  const bool on = allState() != Qt::Checked;
  act([this, on] {
    if (filter_->text().isEmpty()) return form_.doSelectAll(on);
    // What the filter hides is left alone: nobody ticks what cannot be seen.
    const auto& entries = form_.entries();
    for (int row = 0; row < model_.rowCount(); ++row) {
      const auto& entry = model_.entry(model_.index(row, BrowseModel::NameColumn));
      form_.doTick(static_cast<std::size_t>(&entry - entries.data()), on);
    }
  });
  model_.refreshTicks();
}

bool BrowseDialog::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return FormDialog::eventFilter(watched, event);
  const auto& key = static_cast<const QKeyEvent&>(*event);
  const QModelIndex current = static_cast<QAbstractItemView*>(watched)->currentIndex();
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (current.isValid()) doOpen(current);
      return true;
    case Qt::Key_Space:
      doTick(current);
      return true;
    case Qt::Key_Backspace:
      act([this] { form_.doShowParent(); });
      return true;
    default:
      break;
  }
  return FormDialog::eventFilter(watched, event);
}

void BrowseDialog::doSetView(int view) {
  form_.view = static_cast<frmBrowse::View>(view);
  const bool asReport = view == frmBrowse::Report;
  const bool large = view == frmBrowse::Thumbnails || view == frmBrowse::LargeIcon;
  const int pixels = view == frmBrowse::Thumbnails  ? Thumbnails::Pixels
                     : view == frmBrowse::LargeIcon ? LargePixels
                                                    : SmallPixels;
  model_.setThumbnails(view == frmBrowse::Thumbnails);
  icons_->setViewMode(large ? QListView::IconMode : QListView::ListMode);
  icons_->setMovement(QListView::Static);
  icons_->setWrapping(view != frmBrowse::List);
  icons_->setIconSize({pixels, pixels});
  const int unit = fontMetrics().averageCharWidth();
  icons_->setGridSize(large ? QSize(pixels + unit * 8, pixels + fontMetrics().height() * 2)
                            : QSize(unit * 34, fontMetrics().height() * 3 / 2));
  views_->setCurrentWidget(asReport ? static_cast<QWidget*>(report_) : icons_);
}

void BrowseDialog::refreshFolder() {
  const QString folder = toQt(form_.folder());
  if (folder == folderShown_ && form_.entries().size() == entriesShown_) return;
  folderShown_ = folder;
  entriesShown_ = form_.entries().size();
  path_->setText(folder);
  filter_->clear();
  model_.refresh();
  const QModelIndex at = folderModel_->index(folder);
  folders_->setCurrentIndex(at);
  // Only for folders below: the tree looks at everything in what it expands, and watches it.
  if (!form_.entries().empty() && form_.entries().front().isFolder()) folders_->expand(at);
  folders_->scrollTo(at);
}

void BrowseDialog::refresh() {
  refreshFolder();
  const Qt::CheckState all = allState();
  SelectAll_->setTristate(all == Qt::PartiallyChecked);
  SelectAll_->setCheckState(all);
  const auto count = static_cast<int>(form_.tickedCount());
  count_->setText(count > 0 ? tr("%1 selected").arg(count) : QString());
  CMD_[frmBrowse::AddCommand]->setEnabled(form_.isAddEnabled());
}

void BrowseDialog::hideEvent(QHideEvent* event) {
  form_.doKeepSize(width() * TwipsPerPixel, height() * TwipsPerPixel);
  FormDialog::hideEvent(event);
}

}  // namespace korvenal::ui
