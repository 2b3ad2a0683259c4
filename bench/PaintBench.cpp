// What painting costs beside the platform's own plainest calls over the same area, in the same run.
// Prints "name median minimum" lines, in nanoseconds a call.
#include <windows.h>

#include <objidl.h>

#include <gdiplus.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <initializer_list>
#include <optional>
#include <vector>

#include "ui/Form.h"
#include "ui/MemoryContext.h"
#include "ui/MessageLoop.h"
#include "ui/ModTheme.h"
#include "ui/PictureBox.h"
#include "ui/clsLictView.h"
#include "ui/clsProgress.h"

namespace tellurvane {
namespace {

constexpr int kRepetitions = 31;
constexpr int kRowWidth = 330;
constexpr int kRowHeight = 40;
constexpr int kSliderWidth = 240;
constexpr int kSliderHeight = 18;
constexpr int kListHeight = 200;
constexpr int kFewRows = 10;
constexpr int kManyRows = 1'000'000;
constexpr wchar_t kText[] = L"每天早上 07:30 播放新聞";
const ModTheme::TextFont kFont = {.size = 16};

using SteadyClock = std::chrono::steady_clock;

struct Measure {
  const char* name;
  int calls;  // in one reading of the clock
  std::function<void()> run;
  std::vector<double> nanoseconds = {};
};

void RunOnce(Measure& measure) {
  const auto start = SteadyClock::now();
  for (int i = 0; i < measure.calls; ++i) measure.run();
  GdiFlush();
  const std::chrono::duration<double, std::nano> elapsed = SteadyClock::now() - start;
  measure.nanoseconds.push_back(elapsed.count() / measure.calls);
}

void Print(Measure& measure) {
  std::sort(measure.nanoseconds.begin(), measure.nanoseconds.end());
  std::printf("%s %.0f %.0f\n", measure.name, measure.nanoseconds[measure.nanoseconds.size() / 2],
              measure.nanoseconds.front());
}

void Fill(HDC target, int width, int height, Color color) {
  const RECT area = {0, 0, width, height};
  const UniqueBrush brush(CreateSolidBrush(color));
  FillRect(target, &area, brush.Get());
}

// One pass, in the face and with the quality of the themed text.
void DrawPlainText(HDC target) {
  Gdiplus::Graphics graphics(target);
  graphics.SetTextRenderingHint(Gdiplus::TextRenderingHintAntiAlias);
  const Gdiplus::FontFamily family(ModTheme::AvailableFace(kFont.face).c_str());
  const Gdiplus::Font font(&family, kFont.size, kFont.style, Gdiplus::UnitPixel);
  const Gdiplus::SolidBrush brush{Gdiplus::Color(ModTheme::kIndigoText)};
  graphics.DrawString(kText, -1, &font, Gdiplus::PointF(10, 10), &brush);
}

// A list whose rows are drawn by its owner, as the program's are.
class DrawnList {
 public:
  DrawnList(const Form& form, int x, int rows) {
    host_.Create(
        {.parent = form.hwnd(), .x = x, .y = 40, .width = kRowWidth, .height = kListHeight});
    list_.Create(host_);
    list_.ColumnAdd(L"專案名稱", kRowWidth - 20);
    list_.RowHeight(kRowHeight);
    list_.AutoDraw(true);
    list_.CustomDraw = [](NMLVCUSTOMDRAW& draw, LRESULT& result) {
      result = CDRF_NOTIFYITEMDRAW;
      if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return;
      const int top = static_cast<int>(draw.nmcd.rc.top);
      ModTheme::SolidFill(draw.nmcd.hdc, 0, top, kRowWidth, kRowHeight, kWhite);
      ModTheme::Text(draw.nmcd.hdc, kText, 20, top + 8, {}, kFont);
      result = CDRF_SKIPDEFAULT;
    };
    list_.ListCount(rows);
  }

  void RepaintAll() {
    InvalidateRect(list_.hwnd(), nullptr, FALSE);
    UpdateWindow(list_.hwnd());
  }

  // One row on and back again.
  void Scroll() {
    for (const WPARAM direction : std::initializer_list<WPARAM>{SB_LINEDOWN, SB_LINEUP}) {
      SendMessageW(list_.hwnd(), WM_VSCROLL, direction, 0);
      UpdateWindow(list_.hwnd());
    }
  }

 private:
  PictureBox host_;
  clsLictView list_;
};

// A window with all that is painted on the screen.
struct Screen {
  Screen() {
    form.Load({.caption = L"PaintBench", .border = FormBorder::kNone});
    form.ResizeInside(2 * kRowWidth, 300);
    plainHost.Create({.parent = form.hwnd(), .width = kSliderWidth, .height = kSliderHeight});
    sliderHost.Create(
        {.parent = form.hwnd(), .x = kRowWidth, .width = kSliderWidth, .height = kSliderHeight});
    slider.TargetPictureBox(sliderHost);
    slider.Create();
    slider.text(L"50 %");
    slider.Value(0.5);
    few.emplace(form, 0, kFewRows);
    many.emplace(form, kRowWidth, kManyRows);
    form.Show();
    ProcessPendingMessages();
  }

  Form form;
  PictureBox plainHost;
  PictureBox sliderHost;
  clsProgress slider;
  std::optional<DrawnList> few;
  std::optional<DrawnList> many;
};

std::vector<Measure> Measures(Screen& screen, HDC row) {
  constexpr Color kLight = Rgb(216, 240, 248);
  constexpr Color kBase = Rgb(128, 208, 224);
  return {
      // To the screen, as the slider goes: filled in memory and copied.
      {"slider_fill", 20,
       [&] {
         Fill(screen.plainHost.Dc(), kSliderWidth, kSliderHeight, kBase);
         screen.plainHost.Refresh();
       }},
      {"slider", 20, [&] { screen.slider.Refresh(); }},
      {"row_fill", 50, [row] { Fill(row, kRowWidth, kRowHeight, kBase); }},
      {"solid_fill", 50, [row] { ModTheme::SolidFill(row, 0, 0, kRowWidth, kRowHeight, kBase); }},
      {"simple_highlight", 20,
       [row] { ModTheme::SimpleHighlight(row, 0, 0, kRowWidth, kRowHeight, kLight, kBase); }},
      {"rich_highlight", 20,
       [row] { ModTheme::RichHighlight(row, 0, 0, kRowWidth, kRowHeight, kLight, kBase); }},
      {"plain_text", 10, [row] { DrawPlainText(row); }},
      {"themed_text", 10, [row] { ModTheme::Text(row, kText, 5, 10, {}, kFont); }},
      {"repaint_few", 2, [&] { screen.few->RepaintAll(); }},
      {"repaint_many", 2, [&] { screen.many->RepaintAll(); }},
      {"scroll_few", 2, [&] { screen.few->Scroll(); }},
      {"scroll_many", 2, [&] { screen.many->Scroll(); }},
  };
}

void MeasureAll() {
  Screen screen;
  const auto canvas = MemoryContext::Create(kRowWidth, kRowHeight);
  if (!canvas) return;
  std::vector<Measure> measures = Measures(screen, canvas->Dc());
  // In turns, so that whatever else the machine does falls upon all alike. The first turn warms up.
  for (int i = 0; i <= kRepetitions; ++i) {
    for (Measure& measure : measures) {
      RunOnce(measure);
      if (i == 0) measure.nanoseconds.clear();
    }
  }
  for (Measure& measure : measures) Print(measure);
}

}  // namespace
}  // namespace tellurvane

int main() {
  ULONG_PTR session = 0;
  const Gdiplus::GdiplusStartupInput input;
  if (Gdiplus::GdiplusStartup(&session, &input, nullptr) != Gdiplus::Ok) return 1;
  tellurvane::MeasureAll();
  Gdiplus::GdiplusShutdown(session);
  return 0;
}
