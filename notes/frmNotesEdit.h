// The small dialog in which the text of a reminder note is written.
#pragma once

#include <functional>
#include <string>

#include "ui/BoxedControl.h"
#include "ui/Form.h"

namespace tellurvane {

class frmNotesEdit final : public Form {
 public:
  // `source` is the note as the task list stores it. `write` is called if the user confirms another
  // text that is not empty.
  frmNotesEdit(std::wstring source, std::function<void(const std::wstring&)> write);

  // Returns when the dialog is closed.
  void Open(HWND owner);

 private:
  void Form_Load() override;
  void Form_Resize() override;
  void Form_Escape() override { cmdCancel_Click(); }

  bool picText_KeyDown(UINT key);
  void ShowExtent();
  void cmdOk_Click();
  void cmdCancel_Click();

  std::wstring source_;
  std::function<void(const std::wstring&)> write_;
  std::wstring opened_;  // the box's text before the user changed it
  BoxedControl picNote_;
  BoxedControl picText_;
  BoxedControl picCount_;
  BoxedControl picOK_;
  BoxedControl picCancel_;
};

}  // namespace tellurvane
