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
#include <string>
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

void MeasureAll() {
  Form form;
  form.Load({.caption = L"PaintBench", .border = FormBorder::kNone});
  form.ResizeInside(2 * kRowWidth, 300);
  PictureBox plainHost;
  plainHost.Create({.parent = form.hwnd(), .width = kSliderWidth, .height = kSliderHeight});
  PictureBox sliderHost;
  sliderHost.Create(
      {.parent = form.hwnd(), .x = kRowWidth, .width = kSliderWidth, .height = kSliderHeight});
  clsProgress slider;
  slider.TargetPictureBox(sliderHost);
  slider.Create();
  slider.text(L"50 %");
  slider.Value(0.5);
  DrawnList few(form, 0, kFewRows);
  DrawnList many(form, kRowWidth, kManyRows);
  form.Show();
  ProcessPendingMessages();

  const auto canvas = MemoryContext::Create(kRowWidth, kRowHeight);
  if (!canvas) return;
  const HDC row = canvas->Dc();
  const Color light = Rgb(216, 240, 248);
  const Color base = Rgb(128, 208, 224);
  std::vector<Measure> measures = {
      // To the screen, as the slider goes: filled in memory and copied.
      {"slider_fill", 20,
       [&] {
         Fill(plainHost.Dc(), kSliderWidth, kSliderHeight, base);
         plainHost.Refresh();
       }},
      {"slider", 20, [&] { slider.Refresh(); }},
      {"row_fill", 50, [&] { Fill(row, kRowWidth, kRowHeight, base); }},
      {"solid_fill", 50, [&] { ModTheme::SolidFill(row, 0, 0, kRowWidth, kRowHeight, base); }},
      {"simple_highlight", 20,
       [&] { ModTheme::SimpleHighlight(row, 0, 0, kRowWidth, kRowHeight, light, base); }},
      {"rich_highlight", 20,
       [&] { ModTheme::RichHighlight(row, 0, 0, kRowWidth, kRowHeight, light, base); }},
      {"plain_text", 10, [&] { DrawPlainText(row); }},
      {"themed_text", 10, [&] { ModTheme::Text(row, kText, 5, 10, {}, kFont); }},
      {"repaint_few", 2, [&] { few.RepaintAll(); }},
      {"repaint_many", 2, [&] { many.RepaintAll(); }},
      {"scroll_few", 2, [&] { few.Scroll(); }},
      {"scroll_many", 2, [&] { many.Scroll(); }},
  };
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
