// A job of this process and its children, which counts them.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include "ui/Handle.h"

namespace tellurvane {

// This process and, since the first call, its children.
inline JOBOBJECT_BASIC_ACCOUNTING_INFORMATION JobAccounting() {
  static const UniqueKernelHandle job = [] {
    UniqueKernelHandle made(CreateJobObjectW(nullptr, nullptr));
    EXPECT_TRUE(AssignProcessToJobObject(made.Get(), GetCurrentProcess()));
    return made;
  }();
  JOBOBJECT_BASIC_ACCOUNTING_INFORMATION accounting = {};
  EXPECT_TRUE(QueryInformationJobObject(job.Get(), JobObjectBasicAccountingInformation, &accounting,
                                        sizeof(accounting), nullptr));
  EXPECT_GT(accounting.TotalProcesses, 0U);
  return accounting;
}

}  // namespace tellurvane
