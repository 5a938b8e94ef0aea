#include "console/ItemCommandGroup.h"

#include <algorithm>

#include "job/frmBrowse.h"
#include "job/frmCreateItem.h"
#include "platform/Pattern.h"
#include "platform/Text.h"

namespace korvenal::console {

namespace {

struct SortName {
  std::string_view name;
  int column;
};
constexpr SortName SortNames[] = {
    {"name", ContentsName}, {"size", ContentsSize}, {"modified", ContentsModified}};

}  // namespace

Commands ItemCommandGroup::commands() {
  using A = const Arguments&;
  constexpr int Any = Command::Any;
  return {
      {"add", "PATH...", "adds files and folders", 1, Any,
       [this](A a) { return doAdd(a, Way::Picked); }},
      {"drop", "PATH...", "adds files and folders as if they were dropped on the job", 1, Any,
       [this](A a) { return doAdd(a, Way::Dropped); }},
      {"browse", "FOLDER [PATTERN]", "adds what lies in a folder", 1, 2,
       [this](A a) { return doBrowse(a); }},
      {"create", "file|folder NAME PATH", "adds an item whose path need not exist now", 3, 3,
       [this](A a) { return doCreate(a); }},
      {"import", "FILE.m3u", "adds the files that a play list names", 1, 1,
       [this](A a) { return doImport(a); }},
      {"remove", "NAME", "removes an item", 1, 1, [this](A a) { return doRemove(a); }},
      {"clear", "", "removes all items", 0, 0, [this](A) { return doClear(); }},
      {"rename", "NAME NEWNAME", "gives an item another name on disc", 2, 2,
       [this](A a) { return doRename(a); }},
      {"sort", "name|size|modified", "sorts the items, a second time the other way round", 1, 1,
       [this](A a) { return doSort(a); }},
      {"randomize", "", "brings the items into a random order", 0, 0,
       [this](A) { return doRandomize(); }},
      {"move", "NAME up|down", "moves an item by one place", 2, 2,
       [this](A a) { return doMove(a); }},
  };
}

ExitCode ItemCommandGroup::addedCode(int rowsBefore, std::size_t wanted) const {
  const int added = session_.main.job.vsContents.Rows() - rowsBefore;
  if (static_cast<std::size_t>(added) == wanted) return ExitCode::Ok;
  return session_.main.state.StopAction ? ExitCode::Stopped : ExitCode::Failed;
}

ExitCode ItemCommandGroup::doAdd(const Arguments& arguments, Way way) {
  if (!session_.beginEdit()) return ExitCode::Failed;
  std::vector<std::string> paths;
  std::transform(arguments.begin(), arguments.end(), std::back_inserter(paths), absolutePath);
  const int before = session_.main.job.vsContents.Rows();
  AddItems& items = session_.main.addItems;
  if (way == Way::Picked)
    items.doPickItems(paths);
  else
    items.doDropItems(paths);
  return addedCode(before, paths.size());
}

ExitCode ItemCommandGroup::doBrowse(const Arguments& arguments) {
  if (!session_.beginEdit()) return ExitCode::Failed;
  frmMain& main = session_.main;
  frmBrowse form({session_.desktop, session_.files, main.profile, main.addItems, main.browserSize},
                 main.workspace.homeFolder);
  const std::string folder = absolutePath(arguments[0]);
  if (!form.doShowFolder(folder)) return session_.fail("There is no folder " + folder + ".");
  const PatternList pattern({arguments.size() > 1 ? arguments[1] : "*"});
  for (std::size_t i = 0; i < form.entries().size(); ++i)
    form.doTick(i, pattern.matchesAny(form.entries()[i].name));
  const std::size_t wanted = form.tickedCount();
  const int before = main.job.vsContents.Rows();
  form.CMD(frmBrowse::AddCommand);
  form.CMD(frmBrowse::CloseCommand);
  return wanted == 0 ? session_.fail("Nothing there matches.") : addedCode(before, wanted);
}

ExitCode ItemCommandGroup::doCreate(const Arguments& arguments) {
  frmMain& main = session_.main;
  const bool folder = arguments[0] == "folder";
  if (!folder && arguments[0] != "file") return ExitCode::Usage;
  if (!session_.beginEdit()) return ExitCode::Failed;
  frmCreateItem form(main.addItems, main.job, session_.desktop);
  form.TypeOpt = folder ? 1 : 0;
  form.setName(arguments[1]);
  form.setSource(arguments[2]);
  if (form.txName() != arguments[1] || form.txSource() != arguments[2] || !form.isOkEnabled())
    return session_.fail("The name or the path holds characters that are not possible there.");
  form.pbOK();
  return form.isClosed() ? ExitCode::Ok : ExitCode::Failed;
}

ExitCode ItemCommandGroup::doImport(const Arguments& arguments) {
  frmMain& main = session_.main;
  const std::string list = absolutePath(arguments[0]);
  if (!session_.files.doIsFile(list)) return session_.fail("There is no file " + list + ".");
  if (!session_.beginEdit()) return ExitCode::Failed;
  session_.desktop.prepareFile(list);
  const int before = main.job.vsContents.Rows();
  if (!main.addItems.doImportM3U()) return ExitCode::Failed;
  session_.screen.line(Text::counted(main.job.vsContents.Rows() - before, "item") + " added.");
  return ExitCode::Ok;
}

ExitCode ItemCommandGroup::doRemove(const Arguments& arguments) {
  if (!session_.beginEdit()) return ExitCode::Failed;
  const int row = session_.findItem(arguments[0]);
  if (row == 0) return ExitCode::Failed;
  session_.main.job.vsContents.Row = row;
  session_.main.contentsEditing.doDeleteItem();
  return ExitCode::Ok;
}

ExitCode ItemCommandGroup::doClear() {
  if (!session_.beginEdit()) return ExitCode::Failed;
  session_.main.contentsEditing.doClearAllFiles();
  return session_.main.job.hasItems() ? ExitCode::Failed : ExitCode::Ok;
}

ExitCode ItemCommandGroup::doRename(const Arguments& arguments) {
  if (!session_.beginEdit()) return ExitCode::Failed;
  const int row = session_.findItem(arguments[0]);
  if (row == 0) return ExitCode::Failed;
  ContentsEditing& editing = session_.main.contentsEditing;
  if (editing.typedName(row, arguments[1]) != Text::trim(arguments[1]))
    return session_.fail("A new name on disc holds none of " + ForbiddenChars);
  return editing.doRename(row, arguments[1]) == NameEdit::Taken ? ExitCode::Ok : ExitCode::Failed;
}

ExitCode ItemCommandGroup::doSort(const Arguments& arguments) {
  const auto wanted = std::find_if(std::begin(SortNames), std::end(SortNames),
                                   [&](const SortName& sort) { return sort.name == arguments[0]; });
  if (wanted == std::end(SortNames)) return ExitCode::Usage;
  if (!session_.beginEdit()) return ExitCode::Failed;
  session_.main.contentsEditing.doSortColumn(wanted->column);
  return ExitCode::Ok;
}

ExitCode ItemCommandGroup::doRandomize() {
  if (!session_.beginEdit()) return ExitCode::Failed;
  ContentsEditing& editing = session_.main.contentsEditing;
  if (!editing.doUpdateJobCommands().randomize)
    return session_.fail("There are not two items to bring into an order.");
  editing.doRandomize();
  return ExitCode::Ok;
}

ExitCode ItemCommandGroup::doMove(const Arguments& arguments) {
  const bool up = arguments[1] == "up";
  if (!up && arguments[1] != "down") return ExitCode::Usage;
  if (!session_.beginEdit()) return ExitCode::Failed;
  const int row = session_.findItem(arguments[0]);
  if (row == 0) return ExitCode::Failed;
  ContentsEditing& editing = session_.main.contentsEditing;
  session_.main.job.vsContents.Row = row;
  const JobCommands possible = editing.doUpdateJobCommands();
  if (!(up ? possible.moveUp : possible.moveDown))
    return session_.fail("\"" + arguments[0] + "\" cannot go further " + arguments[1] + ".");
  if (up)
    editing.doMoveUp();
  else
    editing.doMoveDown();
  return ExitCode::Ok;
}

}  // namespace korvenal::console
