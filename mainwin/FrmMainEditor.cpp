// Opening the schedule editor.

#include <chrono>

#include "app/OpenFileDialog.h"
#include "base/LocaleDates.h"
#include "base/PlatformText.h"
#include "mainwin/FrmMain.h"
#include "notes/NoteText.h"
#include "notes/frmNotesEdit.h"
#include "radio/HttpGetText.h"
#include "radio/HttpsGet.h"
#include "radio/RadioBrowser.h"
#include "radio/StationXml.h"
#include "radio/frmRadioList.h"
#include "scheduler/Schedule.h"
#include "scheduler/TaskValidation.h"

namespace tellurvane {

EditorCallbacks FrmMain::MakeEditorCallbacks() {
  return {
      .browseForSource =
          [this](bool wantExecutables) {
            return BrowseForSource(hwnd(), wantExecutables, general_.settings.FilesPath);
          },
      .chooseStation =
          [this](HWND owner) {
            RadioBrowser radioBrowser(
                {.fetch = HttpsGet,
                 .read = ReadStationXml,
                 .elapsed = [this] { return std::chrono::milliseconds(milliseconds_()); },
                 .isUsable = IsStreamAddress});
            frmRadioList directory(
                {.readSetting =
                     [this](const std::wstring& key) { return general_.settingsFile.Read(key); },
                 .writeSetting =
                     [this](const std::wstring& key, const std::wstring& value) {
                       (void)general_.settingsFile.Write(key, value);
                     },
                 .directories = {.fetch = HttpGetText,
                                 .toCapitals = Capitals,
                                 .hinetUrl = general_.settings.HinetUrl,
                                 .searchRadioBrowser =
                                     [&radioBrowser](const DirectoryQuery& query) {
                                       return radioBrowser.Search(query);
                                     }}});
            return directory.Open(owner);
          },
      .editNote =
          [](HWND owner, const std::wstring& text) {
            std::optional<std::wstring> edited;
            frmNotesEdit editor(text, [&](const std::wstring& stored) { edited = stored; });
            editor.Open(owner);
            return edited;
          },
      .ask = [](HWND owner, const std::wstring& text,
                UINT flags) { return MessageBoxW(owner, text.c_str(), kApplicationTitle, flags); },
      .noteForScreen = NoteTextWithBreaks,
      .noteForList = StoredNoteText};
}

// Not while the editor works on the list.
void FrmMain::RetryUnreadList() {
  if (editor_ != nullptr || !general_.taskListFile.IsUnread()) return;
  (void)general_.taskListFile.Load(general_.tasks);
  if (!general_.taskListFile.IsUnread()) ShowTaskList();
}

void FrmMain::OpenEditor(std::optional<size_t> row) {
  if (editor_ != nullptr) return;
  // Otherwise a new task would replace the list in the file.
  RetryUnreadList();
  runner_.SetTaskTimer(false);
  bool isSaved = general_.taskListFile.Save(general_.tasks);
  bool isEdited = false;
  const auto save = [&] {
    isEdited = true;
    isSaved = general_.taskListFile.Save(general_.tasks);
  };
  FrmSet editor(general_.tasks,
                {.clock = Now, .pathExists = PathExists, .isSameName = EqualsIgnoringCase}, save,
                MakeEditorCallbacks());
  editor_ = &editor;
  editor.Open(hwnd(), row);
  editor_ = nullptr;
  // The program may have ended while the editor was open.
  if (!IsLoaded()) return;
  const bool isKept = TakeOverEditedList(isSaved);
  // The only message of this window: without it the user would lose the changes silently.
  if (isKept || !isEdited) return;
  MessageBoxW(hwnd(), L"排程清單無法寫入磁碟，變更只保留到程式結束為止。", kApplicationTitle,
              MB_OK | MB_ICONWARNING);
}

// Keeps the edited list also when the file cannot be written or read again. Tasks that fell due
// while the editor was open are moved on, not run. False when the list is only in memory.
bool FrmMain::TakeOverEditedList(bool isSaved) {
  rows_.DropRemoved();
  const std::optional<size_t> selected = rows_.SelectedRow();
  const TaskList edited = general_.tasks;
  if (isSaved) {
    ReloadTaskList();
    if (!general_.tasks.empty() || edited.empty()) return true;
  }
  general_.tasks = edited;
  for (TaskRecord& task : general_.tasks) {
    task.NextRun = CaughtUpNextRun(task, Now(), CatchUp::kStrict);
  }
  ShowTaskList();
  // The list was empty for a moment if it could not be read.
  if (selected) rows_.SelectRow(*selected);
  return general_.taskListFile.Save(general_.tasks);
}

}  // namespace tellurvane
