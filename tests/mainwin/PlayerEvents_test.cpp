#include "mainwin/PlayerEvents.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace tellurvane {
namespace {

constexpr DISPID kPlayStateChange = 5101;
constexpr DISPID kOpenStateChange = 5001;

class PlayerEventsTest : public testing::Test {
 protected:
  HRESULT Raise(DISPID event, DISPPARAMS* parameters) const {
    return sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, parameters, nullptr,
                        nullptr, nullptr);
  }
  HRESULT Raise(DISPID event, VARTYPE type, LONG value) const {
    VARIANT state = {};
    state.vt = type;
    state.lVal = value;
    DISPPARAMS parameters = {&state, nullptr, 1, 0};
    return Raise(event, &parameters);
  }

  std::shared_ptr<PlayerReports> reports = std::make_shared<PlayerReports>();
  ComPtr<IDispatch> sink = MakePlayerEvents(reports);
};

TEST_F(PlayerEventsTest, StoresAPlayStateOfEitherSignAndThatTheMediaIsOpen) {
  EXPECT_EQ(Raise(kPlayStateChange, VT_UI4, kPlayingState), S_OK);
  EXPECT_EQ(reports->PlayState(), kPlayingState);
  EXPECT_EQ(Raise(kPlayStateChange, VT_I4, kStoppedState), S_OK);
  EXPECT_EQ(reports->PlayState(), kStoppedState);
  constexpr LONG kMediaOpen = 13;
  EXPECT_EQ(Raise(kPlayStateChange, VT_UI4, kMediaOpen), S_OK);
  EXPECT_FALSE(reports->IsMediaOpen(kPlayingState));
  EXPECT_EQ(Raise(kOpenStateChange, VT_UI4, kMediaOpen), S_OK);
  EXPECT_TRUE(reports->IsMediaOpen(kPlayingState));
}

TEST_F(PlayerEventsTest, IgnoresOtherEvents) {
  EXPECT_EQ(Raise(kOpenStateChange, VT_UI4, kPlayingState), S_OK);
  EXPECT_EQ(Raise(kPlayStateChange, VT_EMPTY, kPlayingState), S_OK);
  EXPECT_EQ(Raise(kPlayStateChange, VT_BSTR, kPlayingState), S_OK);
  EXPECT_EQ(Raise(kPlayStateChange, nullptr), S_OK);
  VARIANT states[2] = {};
  states[0].vt = VT_I4;
  states[0].lVal = kPlayingState;
  for (const UINT count : {0U, 2U}) {
    DISPPARAMS parameters = {states, nullptr, count, 0};
    EXPECT_EQ(Raise(kPlayStateChange, &parameters), S_OK) << count;
  }
  EXPECT_EQ(reports->PlayState(), kUndefinedState);
}

TEST_F(PlayerEventsTest, OutlivesThePlayer) {
  const std::weak_ptr<PlayerReports> left = reports;
  reports = nullptr;
  EXPECT_EQ(Raise(kPlayStateChange, VT_I4, kPlayingState), S_OK);
  EXPECT_EQ(left.lock()->PlayState(), kPlayingState);
  sink = ComPtr<IDispatch>();
  EXPECT_TRUE(left.expired());
}

}  // namespace
}  // namespace tellurvane
