// A whole settings file, as the tests put it on the disk.
#pragma once

#include <string>

#include "tests/support/Utf16.h"

namespace tellurvane {

// Its bytes. What a test is about can be another value.
struct WholeSettings {
  std::wstring volume = L"37";
  std::wstring timeForm = L"0";
  std::wstring filesPath = L"C:\\Music\\";

  std::string Bytes() const {
    return Utf16Bytes(L"[Setting]\r\nSavedVolume=" + volume + L"\r\nTimeForm=" + timeForm +
                      L"\r\nSongLoop=0\r\nStartPlay=0\r\nFilesPath=" + filesPath +
                      L"\r\nHinetUrl=mms://host/RA\r\n");
  }
};

}  // namespace tellurvane
