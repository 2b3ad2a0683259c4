// A fake of the Windows Media Player control: it plays nothing, logs every call, and answers by its
// script (Script.h) or by a timeline of its own (Timeline.h).
#include <windows.h>

#include <ocidl.h>
#include <olectl.h>
#include <wmp.h>

#include <cstdio>
#include <string>

#include "base/CodePage.h"
#include "tests/fakeplayer/ProgramCalls.h"
#include "tests/fakeplayer/Script.h"
#include "tests/fakeplayer/Timeline.h"
#include "tests/fakeplayer/UnusedMembers.h"

namespace fakeplayer {
namespace {

constexpr DWORD kCookie = 7;
constexpr UINT kBeatMilliseconds = 30;

Script& TheScript() {
  static Script script;
  return script;
}

IDispatch* theSink = nullptr;
int theReportedState = 0;
bool isRaising = false;

std::string NumberText(double number) {
  char text[32] = {};
  std::snprintf(text, sizeof(text), "%.3f", number);
  return text;
}

void RaiseState(DISPID event, int state) {
  TheScript().Write("event " + std::to_string(event) + " " + std::to_string(state));
  if (theSink == nullptr) return;
  VARIANT argument = {};
  argument.vt = VT_UI4;
  argument.lVal = state;
  DISPPARAMS parameters = {&argument, nullptr, 1, 0};
  isRaising = true;
  theSink->Invoke(event, IID{}, LOCALE_NEUTRAL, DISPATCH_METHOD, &parameters, nullptr, nullptr,
                  nullptr);
  isRaising = false;
}

Timeline& TheTimeline() {
  static Timeline timeline(TheScript(), RaiseState);
  return timeline;
}

// Events come from the program's message loop, as those of a real control do.
void CALLBACK Beat(HWND, UINT, UINT_PTR, DWORD) {
  TheScript().Read();
  SetClockAhead(TheScript().Number("clock"));
  TheTimeline().Beat();
}

// Every member begins with this and returns its result.
HRESULT Called(const std::string& member, const std::string& argument = "") {
  Script& script = TheScript();
  script.Read();
  std::string line = (isRaising ? "(in event) " : "") + member;
  if (!argument.empty()) line += " " + argument;
  script.Write(line);
  const int state = static_cast<int>(script.Number("playState"));
  if (!TheTimeline().IsOn() && theSink != nullptr && !isRaising && state != theReportedState) {
    theReportedState = state;
    RaiseState(kPlayStateChange, state);
  }
  return script.Result(member);
}

// The same, followed by a step of the timeline.
template <typename Step>
HRESULT Called(const std::string& member, const std::string& argument, Step step) {
  const HRESULT result = Called(member, argument);
  if (SUCCEEDED(result) && TheTimeline().IsOn()) step(TheTimeline());
  return result;
}

HRESULT GiveNumber(const std::string& member, double* number,
                   double (Timeline::*ofTimeline)() const) {
  const HRESULT result = Called(member);
  if (FAILED(result)) return result;
  const Timeline& timeline = TheTimeline();
  *number = timeline.IsOn() ? (timeline.*ofTimeline)() : TheScript().Number(member);
  return result;
}

HRESULT GiveText(const std::string& member, BSTR* text) {
  const HRESULT result = Called(member);
  if (FAILED(result)) return result;
  *text =
      TheScript().GivesNothing(member) ? nullptr : SysAllocString(TheScript().Text(member).c_str());
  return result;
}

template <typename Interface>
HRESULT GiveObject(const std::string& member, Interface* object, Interface** given) {
  const HRESULT result = Called(member);
  *given = nullptr;
  if (FAILED(result) || TheScript().GivesNothing(member)) return result;
  object->AddRef();
  *given = object;
  return result;
}

class Controls final : public UnusedControls {
 public:
  STDMETHODIMP play() override {
    return Called("play", "", [](Timeline& timeline) { timeline.Play(); });
  }
  STDMETHODIMP stop() override {
    return Called("stop", "", [](Timeline& timeline) { timeline.Stop(); });
  }
  STDMETHODIMP get_currentPosition(double* seconds) override {
    return GiveNumber("currentPosition", seconds, &Timeline::Position);
  }
  STDMETHODIMP put_currentPosition(double seconds) override {
    return Called("put_currentPosition", NumberText(seconds),
                  [seconds](Timeline& timeline) { timeline.Seek(seconds); });
  }
  STDMETHODIMP get_currentPositionString(BSTR* text) override {
    return GiveText("currentPositionString", text);
  }
};

class Settings final : public UnusedSettings {
 public:
  STDMETHODIMP put_autoStart(VARIANT_BOOL isOn) override {
    return Called("put_autoStart", std::to_string(isOn));
  }
  STDMETHODIMP setMode(BSTR mode, VARIANT_BOOL isOn) override {
    const std::string name = tellurvane::Utf8({mode, SysStringLen(mode)});
    return Called("setMode", name + " " + std::to_string(isOn), [&](Timeline& timeline) {
      if (name == "autoRewind") timeline.AutoRewind(isOn != VARIANT_FALSE);
    });
  }
  STDMETHODIMP put_volume(LONG volume) override {
    return Called("put_volume", std::to_string(volume));
  }
  STDMETHODIMP put_enableErrorDialogs(VARIANT_BOOL isOn) override {
    return Called("put_enableErrorDialogs", std::to_string(isOn));
  }
};

class Media final : public UnusedMedia {
 public:
  STDMETHODIMP get_duration(double* seconds) override {
    return GiveNumber("duration", seconds, &Timeline::Duration);
  }
  STDMETHODIMP get_durationString(BSTR* text) override { return GiveText("durationString", text); }
};

class ConnectionPoint final : public Object<IConnectionPoint> {
 public:
  STDMETHODIMP GetConnectionInterface(IID*) override { return E_NOTIMPL; }
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer**) override {
    return E_NOTIMPL;
  }
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override {
    const HRESULT result = Called("Advise");
    if (FAILED(result)) return result;
    *cookie = kCookie;
    return sink->QueryInterface(__uuidof(IDispatch), reinterpret_cast<void**>(&theSink));
  }
  STDMETHODIMP Unadvise(DWORD cookie) override {
    const HRESULT result = Called("Unadvise", std::to_string(cookie));
    if (theSink != nullptr) theSink->Release();
    theSink = nullptr;
    return result;
  }
  STDMETHODIMP EnumConnections(IEnumConnections**) override { return E_NOTIMPL; }
};

class Player final : public UnusedPlayer, public IConnectionPointContainer {
 public:
  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    if (!IsEqualIID(id, __uuidof(IConnectionPointContainer))) {
      return UnusedPlayer::QueryInterface(id, object);
    }
    const HRESULT result = Called("ConnectionPointContainer");
    *object = nullptr;
    if (FAILED(result)) return result;
    *object = static_cast<IConnectionPointContainer*>(this);
    AddRef();
    return result;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return UnusedPlayer::AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return UnusedPlayer::Release(); }

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override {
    if (!IsEqualIID(id, __uuidof(_WMPOCXEvents))) return CONNECT_E_NOCONNECTION;
    return GiveObject<IConnectionPoint>("FindConnectionPoint", point_, point);
  }

  STDMETHODIMP close() override {
    return Called("close", "", [](Timeline& timeline) { timeline.Close(); });
  }
  STDMETHODIMP put_URL(BSTR url) override {
    const std::string text = tellurvane::Utf8({url, SysStringLen(url)});
    return Called("put_URL", text, [&](Timeline& timeline) { timeline.SetUrl(text); });
  }
  STDMETHODIMP get_playState(WMPPlayState* state) override {
    const HRESULT result = Called("playState");
    if (FAILED(result)) return result;
    const Timeline& timeline = TheTimeline();
    *state = static_cast<WMPPlayState>(
        timeline.IsOn() ? timeline.PlayState() : static_cast<int>(TheScript().Number("playState")));
    return result;
  }
  STDMETHODIMP get_controls(IWMPControls** controls) override {
    return GiveObject<IWMPControls>("controls", controls_, controls);
  }
  STDMETHODIMP get_settings(IWMPSettings** settings) override {
    return GiveObject<IWMPSettings>("settings", settings_, settings);
  }
  STDMETHODIMP get_currentMedia(IWMPMedia** media) override {
    return GiveObject<IWMPMedia>("currentMedia", media_, media);
  }
  STDMETHODIMP get_status(BSTR* text) override { return GiveText("status", text); }

 private:
  ~Player() override {
    KillTimer(nullptr, beat_);
    Called("the end");
    for (IUnknown* const part :
         {static_cast<IUnknown*>(controls_), static_cast<IUnknown*>(media_),
          static_cast<IUnknown*>(point_), static_cast<IUnknown*>(settings_)}) {
      part->Release();
    }
  }

  UINT_PTR beat_ = SetTimer(nullptr, 0, kBeatMilliseconds, Beat);
  Controls* controls_ = new Controls;
  Settings* settings_ = new Settings;
  Media* media_ = new Media;
  ConnectionPoint* point_ = new ConnectionPoint;
};

class Factory final : public Object<IClassFactory> {
 public:
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    *object = nullptr;
    const HRESULT result = Called("CreateInstance");
    if (FAILED(result)) return result;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    auto* const player = new Player;
    TakeProgramCalls([](bool isAwake) { TheScript().Write(isAwake ? "awake 1" : "awake 0"); });
    const HRESULT answer = player->QueryInterface(id, object);
    player->Release();
    return answer;
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }
};

}  // namespace
}  // namespace fakeplayer

STDAPI DllGetClassObject(REFCLSID id, REFIID interfaceId, void** object) {
  *object = nullptr;
  if (!IsEqualCLSID(id, __uuidof(WindowsMediaPlayer))) return CLASS_E_CLASSNOTAVAILABLE;
  auto* const factory = new fakeplayer::Factory;
  const HRESULT result = factory->QueryInterface(interfaceId, object);
  factory->Release();
  return result;
}

// It stays loaded until the process ends.
STDAPI DllCanUnloadNow() { return S_FALSE; }
