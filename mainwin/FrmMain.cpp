#include "mainwin/FrmMain.h"

#include <commctrl.h>
#include <oleacc.h>

#include <utility>

#include "base/LocaleDates.h"
#include "base/Pause.h"
#include "base/PlatformText.h"
#include "cmd/ModCMD.h"
#include "ui/AccessibleObject.h"
#include "ui/Density.h"
#include "ui/MessageLoop.h"
#include "ui/ModTheme.h"
#include "ui/Strip.h"

namespace tellurvane {
namespace {

// Twips.
constexpr int kWidth = 5'320;
constexpr int kHeight = 5'000;

// Pixels of 96 dpi. The band holds the toolbar and the sliders; the list is below it.
constexpr int kBandHeight = 49;
constexpr int kToolbarX = 5;
constexpr int kSliderY = 28;
constexpr int kSliderHeight = 19;
constexpr int kVolumeWidth = 70;
constexpr int kSliderGap = 8;
constexpr int kStatusHeight = 22;
constexpr int kStatusTextX = 2;  // ModTheme::Text doubles it
constexpr int kStatusTextY = 1;
constexpr int kStatusTextSize = 12;

constexpr unsigned kDesignedTaskMilliseconds = 2'000;

// The system uses the lowest four bits itself.
constexpr WPARAM kSystemCommand = 0xFFF0;

constexpr Color kStatusGround = Adaptive(Rgb(0xFB, 0xFA, 0xFE), COLOR_WINDOW);
constexpr Color kPercentGrey = 0x979797;

RunOutcome StartCommand(const std::wstring& commandLine) {
  DWORD error = ERROR_SUCCESS;
  if (RunCommand(commandLine, PipeRefusesCollection, &error)) return {};
  const bool hasWords = error != ERROR_SUCCESS;
  return ProgramNotStarted(hasWords ? SystemErrorText(error, commandLine) : std::wstring());
}

std::wstring PercentOf(const clsProgress& slider, int decimals) {
  return FormatPercent(slider.Value() / slider.Max(), decimals);
}

}  // namespace

FrmMain::FrmMain(ModGeneral& general, MediaPlayer& player, TickCount milliseconds)
    : general_(general),
      player_(player),
      milliseconds_(std::move(milliseconds)),
      rows_(general, Now),
      clock_(MakeClockCallbacks()),
      // Deliberately blocking while a note or the clock fades.
      notes_(SleepFor, MakeNoteKeyboard()),
      playback_(player, *this, general.radioFlag, MakePlaybackCallbacks()),
      runner_(general.tasks, rows_, *this, playback_, MakeTaskCallbacks(), AppendLocaleDateText,
              Now) {}

TaskCallbacks FrmMain::MakeTaskCallbacks() {
  return {.pathExists = PathExists,
          .startCommand = StartCommand,
          .showNote = [this](const std::wstring& text,
                             const std::wstring& time) { notes_.Show(text, time); },
          .saveList = [this] { (void)general_.taskListFile.Save(general_.tasks); },
          .processPendingMessages = ProcessPendingMessages};
}

PlaybackCallbacks FrmMain::MakePlaybackCallbacks() {
  return {
      .songLoop = [this] { return IsOn(general_.settings.SongLoop); },
      .runSelectedTask = [this] { runner_.RunForContinuousPlay(rows_.SelectedRow()); },
      .writeSavedVolume =
          [this](std::int32_t volume) {
            (void)general_.settingsFile.Write(L"SavedVolume", volume);
          },
      .milliseconds = milliseconds_,
      .keepAwake =
          [](bool isAwake) {
            SetThreadExecutionState(isAwake ? ES_CONTINUOUS | ES_SYSTEM_REQUIRED : ES_CONTINUOUS);
          }};
}

ClockCallbacks FrmMain::MakeClockCallbacks() {
  return {
      .clock = Now,
      .pause = SleepFor,
      .dayHalf = [this](DateSerial moment) { return FormatMoment(L"AMPM", moment, dayHalves_); },
      .openTrayMenu = [this](HWND clock,
                             std::optional<POINT> place) { IconMenuClick(clock, place); },
      .keyboardIsFree = [this] { GiveKeyboardBack(); },
      .nextWindow = [this] { GoToNextWindow(); }};
}

void FrmMain::Create() {
  InitCommonControls();
  taskbarOwner_.Load({.caption = kApplicationTitle, .border = FormBorder::kNone});
  Load({.caption = kApplicationTitle,
        .border = FormBorder::kFixedSingle,
        .widthTwips = kWidth,
        .heightTwips = kHeight,
        .backColor = ModTheme::kWindowGround,
        .owner = taskbarOwner_.hwnd()});
}

void FrmMain::Form_Load() {
  tmrJob_.Interval(kDesignedTaskMilliseconds);
  const DateFormat format = UserDateFormat();
  dayHalves_ = {format.amDesignator, format.pmDesignator};
  CreateTrayIcon();
  AddBox(PicListView_, hwnd());
  AddBox(picStatusBar_, PicListView_.hwnd());
  CreateList();
  CreateToolbar();
  CreateSliders();
  OrderTabStops();
  FirstFocus(rows_.hwnd());
  player_.Volume(general_.settings.SavedVolume);
  if (IsOn(general_.settings.TimeForm)) clock_.ShowClock();
  ReloadTaskList();
  CreateStatusBar();
  StartTimers();
}

void FrmMain::Open() {
  CancelPendingHide();
  Show();
  Form_Resize();
  // The screens may have changed while the window was hidden.
  PullInside();
  TimerSet_Tick();
}

PictureBox& FrmMain::AddBox(PictureBox& box, HWND parent, bool isTabStop) {
  box.Create({.parent = parent, .backColor = ModTheme::kWindowGround, .isTabStop = isTabStop});
  return box;
}

void FrmMain::CreateList() {
  rows_.RightClick = [this] { ListView_Click({}); };
  rows_.DblClick = [this] { ListView_DblClick(); };
  rows_.Create(PicListView_, AddBox(listHost_, PicListView_.hwnd()));
}

void FrmMain::CreateToolbar() {
  ToolBar_.TargetPictureBox(AddBox(picToolbar_, hwnd()));
  ToolBar_.ButtonClick = [this](int id) { ToolBar_ButtonClick(id); };
  const Strip images = ToolbarImages();
  ToolBar_.Create(images.size);
  ShowToolbarImages(images);
  ToolBar_.AccessibleName(L"工具列");
  constexpr std::pair<const wchar_t*, const wchar_t*> kButtons[] = {{L"新 增", L"Insert"},
                                                                    {L"播 放", L"Enter"},
                                                                    {L"停 止", L"Ctrl+S"},
                                                                    {L"設 定", L"F10"},
                                                                    {L"離 開", L"Ctrl+Q"}};
  int image = 0;
  for (const auto& [caption, key] : kButtons) {
    ToolBar_.AddButton(image++, std::wstring(caption) + L" (" + key + L")", caption);
  }
  ToolBar_.Enabled(kStopButton, false);
  const SIZE size = ToolBar_.ButtonsSize();
  picToolbar_.Move(Scaled(kToolbarX), 0, static_cast<int>(size.cx), static_cast<int>(size.cy));
}

void FrmMain::CreateSliders() {
  SliderH_.TargetPictureBox(AddBox(picSliderH_, hwnd(), true));
  SliderH_.PostRender = [this](bool) { SliderH_PostRender(); };
  SliderH_.AccessibleName(L"播放位置");
  SliderH_.ValueText = [this] { return PercentOf(SliderH_, 2); };
  SliderH_.Create();
  SliderH_.Max(100);
  SliderH_.Value(0);
  SliderH_.Enabled(false);
  SliderH_.PositionSetByMouse = [this](double seconds) {
    playback_.SliderH_PositionSetByMouse(seconds);
  };

  SliderVolH_.TargetPictureBox(AddBox(picSliderVolH_, hwnd(), true));
  SliderVolH_.PostRender = [this](bool) { SliderVolH_PostRender(); };
  SliderVolH_.AccessibleName(L"音量");
  SliderVolH_.ValueText = [this] { return PercentOf(SliderVolH_, 0); };
  SliderVolH_.Create();
  SliderVolH_.Max(100);
  SliderVolH_.Value(general_.settings.SavedVolume);
  // Set last: the value that was just read is not written.
  SliderVolH_.PositionSet = [this](double value, double) {
    playback_.SliderVolH_PositionSet(value);
  };
}

void FrmMain::CreateStatusBar() {
  picStatusBar_.BackColor(kStatusGround);
  picStatusBar_.Paint = [this](HDC context) { picStatusBar_Paint(context); };
  const HWND strip = picStatusBar_.hwnd();
  MakeAccessible(strip, {.role = ROLE_SYSTEM_STATUSBAR, .name = [this] { return statusText_; }});
  const LONG_PTR style = GetWindowLongPtrW(strip, GWL_EXSTYLE);
  SetWindowLongPtrW(strip, GWL_EXSTYLE,
                    (style & ~(WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE)) | WS_EX_STATICEDGE);
  SetWindowPos(strip, nullptr, 0, 0, 0, 0,
               SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_FRAMECHANGED | SWP_NOOWNERZORDER);
}

void FrmMain::ReloadTaskList() {
  (void)general_.taskListFile.Load(general_.tasks);
  ShowTaskList();
}

void FrmMain::ShowTaskList() {
  rows_.Refill();
  runner_.SetTaskTimer(rows_.RowCount() > 0);
}

void FrmMain::Form_Resize() {
  if (!IsOnScreen()) return;
  CancelPendingHide();
  if (PixelsFromTwips(Width()) != PixelsFromTwips(kWidth) ||
      PixelsFromTwips(Height()) != PixelsFromTwips(kHeight)) {
    // Calls this again with the right size.
    Move(Left(), Top(), kWidth, kHeight);
    return;
  }
  const int width = ScaleWidth();
  const int bandHeight = Scaled(kBandHeight);
  const int statusHeight = Scaled(kStatusHeight);
  const int areaHeight = ScaleHeight() - bandHeight;
  const int listHeight = areaHeight - statusHeight;
  const int margin = Scaled(kToolbarX);
  const int sliderY = Scaled(kSliderY);
  const int sliderHeight = Scaled(kSliderHeight);
  const int volumeWidth = Scaled(kVolumeWidth);
  const int positionX = margin + volumeWidth + Scaled(kSliderGap);
  picSliderVolH_.Move(margin, sliderY, volumeWidth, sliderHeight);
  picSliderH_.Move(positionX, sliderY, width - positionX - margin, sliderHeight);
  PicListView_.Move(0, bandHeight, width, areaHeight);
  listHost_.Move(0, 0, width, listHeight);
  picStatusBar_.Move(0, listHeight, width, statusHeight);
  rows_.FitColumn();
  // While nobody saw the window the slider was not drawn.
  const bool isFollowing = TimerVis_.Enabled();
  if (isFollowing) SliderH_.Max(player_.Duration());
  SliderH_.Value(isFollowing ? player_.Position() : 0);
}

bool FrmMain::Form_Unload() {
  if (!quitFlag_) {
    // Minimising would take the editor away from the user, and would show a hidden window.
    if (editor_ != nullptr || !Visible()) return false;
    ShowWindow(hwnd(), SW_MINIMIZE);
    HideToTray();
    return false;
  }
  playback_.StopPlayback();
  SaveAll();
  ReleaseChildren();
  // If the clock is active, its end would activate a note, which would draw its focus after the end
  // of GDI+.
  SetActiveWindow(hwnd());
  if (releaseProcess_) releaseProcess_();
  clock_.Unload();
  notes_.CloseAll();
  return true;
}

void FrmMain::SaveAll() {
  (void)general_.taskListFile.Save(general_.tasks);
  (void)general_.settingsFile.Write(L"FilesPath", general_.settings.FilesPath);
}

// Destroys the windows but not the objects: a task that was just started may still call these.
void FrmMain::ReleaseChildren() {
  for (Timer* const timer : {&tmrJob_, &TimerVis_, &TimerOpening_, &TimerSet_, &WakeUp_}) {
    timer->Enabled(false);
  }
  clsIcon_.IconDelete();
  for (PictureBox* const box : {&PicListView_, &picToolbar_, &picSliderH_, &picSliderVolH_}) {
    DestroyWindow(box->hwnd());
  }
  general_.ReleaseIcons();
}

LRESULT FrmMain::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_CONTEXTMENU:
      // Only from the keyboard: the list and the caption handle the mouse.
      if (lParam != -1) return Form::HandleMessage(message, wParam, lParam);
      if (rows_.HasFocus()) (void)rows_.TakeRow();
      ListView_Click(rows_.MenuPlace());
      return 0;
    case WM_APPCOMMAND:
      return StopByMediaKey(lParam) ? TRUE : Form::HandleMessage(message, wParam, lParam);
    case kPostedTick:
      // The editor may have been opened since it was posted.
      if (tmrJob_.Enabled()) runner_.Tick();
      return 0;
    case WM_SYSCOMMAND:
      // Windows shows a minimised window without a taskbar button as a stub above the taskbar.
      if ((wParam & kSystemCommand) != SC_MINIMIZE || !clsIcon_.IsInTray()) {
        return Form::HandleMessage(message, wParam, lParam);
      }
      // Not while a dialog is open: it would stay alone on the screen.
      if (Enabled()) HideToTray();
      return 0;
    case WM_POWERBROADCAST:
      HandlePower(wParam);
      return TRUE;
    case WM_ENDSESSION:
      // Windows ends the process after this message.
      if (wParam != FALSE) SaveAll();
      return 0;
    case kPostedLeave:
      Leave();
      return 0;
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
    default:
      return Form::HandleMessage(message, wParam, lParam);
  }
}

void FrmMain::RunSelectedTask() { runner_.RunNow(rows_.SelectedRow()); }

void FrmMain::ShowPlaying(size_t row) {
  EnablePlayButtons(true);
  rows_.ShowPlaying(row);
}

void FrmMain::ShowStopped() {
  EnablePlayButtons(false);
  rows_.ShowPlaying(std::nullopt);
}

void FrmMain::EnablePlayButtons(bool isPlaying) {
  ToolBar_.Enabled(kPlayButton, !isPlaying);
  ToolBar_.Enabled(kStopButton, isPlaying);
}

// Each setter of the slider draws it, ten times a second. Form_Resize draws it when the window
// comes back.
void FrmMain::PositionRange(double seconds) {
  if (IsOnScreen()) SliderH_.Max(seconds);
}

void FrmMain::PositionValue(double seconds) {
  if (IsOnScreen()) SliderH_.Value(seconds);
}

void FrmMain::ToolBar_ButtonClick(int id) {
  switch (id) {
    case kNewButton:
      OpenEditor({});
      break;
    case kPlayButton:
      RunSelectedTask();
      break;
    case kStopButton:
      playback_.StopPlayback();
      break;
    case kOptionsButton:
      OptionsMenuClick(ToolBar_.IsPressedByKey() ? std::optional(OptionsPlace()) : std::nullopt);
      break;
    case kLeaveButton:
      // Later: leaving destroys the toolbar, which is still inside its click.
      if (!PostMessageW(hwnd(), kPostedLeave, 0, 0)) Leave();
      break;
    default:
      break;
  }
}

void FrmMain::SliderH_PostRender() { SliderH_.PrintText(PercentOf(SliderH_, 2), kPercentGrey); }

void FrmMain::SliderVolH_PostRender() {
  SliderVolH_.PrintText(PercentOf(SliderVolH_, 0), kPercentGrey);
}

void FrmMain::picStatusBar_Paint(HDC context) {
  ModTheme::Text(context, statusText_, kStatusTextX, kStatusTextY, {.text = ModTheme::kBlueText},
                 {.size = kStatusTextSize, .style = ModTheme::kBold});
}

}  // namespace tellurvane
