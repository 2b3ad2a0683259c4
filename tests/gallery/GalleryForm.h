// Every control of the toolkit, in its states, on one form.
#pragma once

#include <array>
#include <deque>
#include <string>

#include "ui/ClsDate.h"
#include "ui/Form.h"
#include "ui/PictureBox.h"
#include "ui/clsControl.h"
#include "ui/clsLictView.h"
#include "ui/clsProgress.h"
#include "ui/clsToolbar.h"

namespace tellurvane {

class GalleryForm : public Form {
 protected:
  void Form_Load() override;
  bool Form_Unload() override;

 private:
  struct Hosted {
    PictureBox host;
    clsControl control;
  };

  void MakeToolbar();
  void MakeControls();
  void MakeLists(int y);
  void MakeNote(int y);
  Hosted& AddControl(ControlKind kind, int x, int y, int width, int height,
                     const std::wstring& text);
  void MakeSliders();
  void AddSlider(int x, int y, int width, double value, bool isEnabled);
  void MakeDates();
  void MakeList();

  void ToolBar_ButtonClick(int id);
  void ShowMenu();
  // What the user did last, at the foot of the form.
  void Report(const std::wstring& what);

  PictureBox toolbarHost_;
  clsToolbar toolbar_;
  std::deque<Hosted> controls_;
  std::deque<PictureBox> sliderHosts_;
  std::deque<clsProgress> sliders_;
  std::array<ClsDate, 4> dates_;
  PictureBox listHost_;
  clsLictView list_;
  PictureBox report_;
  std::wstring reported_;
};

}  // namespace tellurvane
