#include "ui/GXMSubclass.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ui/Boundary.h"

namespace tellurvane {
namespace {

constexpr std::int32_t kTableCapacity = 32;
constexpr std::int32_t kEveryMessage = -1;
constexpr UINT kFreeSlot = 0;

size_t liveBlocks = 0;

// The messages that are shown to the owner. Slots below the count may be free (0).
class MessageTable {
 public:
  bool Shows(UINT message) const {
    if (count_ == kEveryMessage) return true;
    return message != kFreeSlot && Place(message) != End();
  }

  void Add(UINT message) {
    if (message == kAllMessages) {
      count_ = kEveryMessage;
      return;
    }
    // Every message is shown already.
    if (count_ == kEveryMessage || message == kFreeSlot) return;
    // In the whole table, before a free slot is taken: a second entry would stay after a delete.
    if (Place(message) != End()) return;
    if (auto* const free = Place(kFreeSlot); free != End()) {
      *free = message;
      return;
    }
    // Only now: a full table may have a free slot.
    if (count_ >= kTableCapacity) {
      throw SubclassError("Message table overflow. Max message entries exceeded.");
    }
    slots_[static_cast<size_t>(count_++)] = message;
  }

  void Delete(UINT message) {
    if (message == kAllMessages) {
      count_ = 0;
      return;
    }
    auto* const place = message == kFreeSlot ? End() : Place(message);
    if (place == End()) {
      std::array<char, 16> hex = {};
      _snprintf(hex.data(), hex.size(), "%X", message);
      throw SubclassError("Message &H" + std::string(hex.data()) + " not found in table");
    }
    *place = kFreeSlot;
  }

 private:
  using Slots = std::array<UINT, kTableCapacity>;

  // Of the slots in use, the first that holds the message.
  Slots::iterator Place(UINT message) { return std::find(slots_.begin(), End(), message); }
  Slots::const_iterator Place(UINT message) const {
    return std::find(slots_.begin(), End(), message);
  }
  Slots::iterator End() { return slots_.begin() + std::max(count_, 0); }
  Slots::const_iterator End() const { return slots_.begin() + std::max(count_, 0); }

  std::int32_t count_ = 0;
  Slots slots_ = {};
};

}  // namespace

// One engine's state for one window. It stays while a message is inside, even if the engine is
// gone.
struct SubclassBlock {
  LONG inUse = 0;
  bool isDetaching = false;
  HWND window = nullptr;  // none once the window is gone
  GXISubclass* owner = nullptr;
  GXMSubclass* engine = nullptr;  // none once detached
  LONG_PTR userParam = 0;
  MessageTable before;
  MessageTable after;
};

// The blocks of one window, the last attached first to see a message.
struct SubclassChain {
  WNDPROC original = nullptr;
  std::vector<SubclassBlock*> blocks;

  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT CallPrevious(SubclassBlock& block, UINT message, WPARAM wParam, LPARAM lParam);
  static LRESULT Dispatch(SubclassBlock& block, UINT message, WPARAM wParam, LPARAM lParam);
  static void ReleaseIfDone(SubclassBlock& block);
  static void ForgetWindow(HWND window);
};

namespace {

using Chains = std::map<HWND, SubclassChain>;

Chains& AllChains() {
  static Chains chains;
  return chains;
}

SubclassBlock* NewBlock() {
  void* const memory = VirtualAlloc(nullptr, sizeof(SubclassBlock), MEM_COMMIT, PAGE_READWRITE);
  if (memory == nullptr) {
    throw SubclassError("VirtualAlloc failed, error: " + std::to_string(GetLastError()));
  }
  ++liveBlocks;
  return new (memory) SubclassBlock;
}

void FreeBlock(SubclassBlock* block) {
  std::destroy_at(block);
  VirtualFree(block, 0, MEM_RELEASE);
  --liveBlocks;
}

struct FreesBlock {
  void operator()(SubclassBlock* block) const { FreeBlock(block); }
};
using UniqueBlock = std::unique_ptr<SubclassBlock, FreesBlock>;

// Adds the block to its window; the first one also exchanges the window's procedure. Allocates
// before that, so that an exception leaves everything as it was.
void Link(SubclassBlock& block) {
  const auto existing = AllChains().find(block.window);
  if (existing != AllChains().end()) {
    existing->second.blocks.push_back(&block);
    return;
  }
  const auto chain = AllChains().emplace(block.window, SubclassChain{nullptr, {&block}}).first;
  SetLastError(ERROR_SUCCESS);
  chain->second.original = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
      block.window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SubclassChain::Procedure)));
  if (chain->second.original == nullptr) {
    const DWORD error = GetLastError();
    AllChains().erase(chain);
    throw SubclassError("SetWindowLong failed, error #" + std::to_string(error));
  }
}

}  // namespace

LRESULT CALLBACK SubclassChain::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto chain = AllChains().find(window);
  if (chain == AllChains().end()) return DefWindowProcW(window, message, wParam, lParam);
  // Copied: the chain may go while the message is inside.
  const WNDPROC original = chain->second.original;
  LRESULT result = 0;
  if (chain->second.blocks.empty()) {
    result = CallWindowProcW(original, window, message, wParam, lParam);
  } else {
    result = Dispatch(*chain->second.blocks.back(), message, wParam, lParam);
  }
  if (message == WM_NCDESTROY) ForgetWindow(window);
  return result;
}

LRESULT SubclassChain::Dispatch(SubclassBlock& block, UINT message, WPARAM wParam, LPARAM lParam) {
  bool handled = false;
  LRESULT result = 0;
  const HWND window = block.window;
  const auto callOwner = [&](bool before) {
    GuardBoundary([&] {
      block.owner->WndProc(before, handled, result, window, message, wParam, lParam,
                           block.userParam);
    });
  };

  // Over the whole message: the owner may detach inside either of its calls.
  ++block.inUse;
  if (block.before.Shows(message)) callOwner(true);
  if (!handled) result = CallPrevious(block, message, wParam, lParam);
  if (block.after.Shows(message)) callOwner(false);
  --block.inUse;
  ReleaseIfDone(block);
  return result;
}

LRESULT SubclassChain::CallPrevious(SubclassBlock& block, UINT message, WPARAM wParam,
                                    LPARAM lParam) {
  const auto chain = AllChains().find(block.window);
  if (chain == AllChains().end()) return 0;
  const auto& blocks = chain->second.blocks;
  const auto place = std::find(blocks.begin(), blocks.end(), &block);
  if (place != blocks.end() && place != blocks.begin()) {
    return Dispatch(**std::prev(place), message, wParam, lParam);
  }
  return CallWindowProcW(chain->second.original, block.window, message, wParam, lParam);
}

void SubclassChain::ReleaseIfDone(SubclassBlock& block) {
  if (!block.isDetaching || block.inUse > 0) return;
  const auto chain = AllChains().find(block.window);
  if (chain != AllChains().end()) {
    std::erase(chain->second.blocks, &block);
    const auto current = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(block.window, GWLP_WNDPROC));
    // Where another procedure was put over ours, ours has to stay and pass messages on. The same
    // holds where ours cannot be removed.
    if (chain->second.blocks.empty() && current == Procedure &&
        SetWindowLongPtrW(block.window, GWLP_WNDPROC,
                          reinterpret_cast<LONG_PTR>(chain->second.original)) != 0) {
      AllChains().erase(chain);
    }
  }
  FreeBlock(&block);
}

// The window is gone, and another one may get its handle.
void SubclassChain::ForgetWindow(HWND window) {
  const auto chain = AllChains().extract(window);
  if (chain.empty()) return;
  for (SubclassBlock* const block : chain.mapped().blocks) {
    if (block->engine != nullptr) block->engine->registry_.erase(window);
    block->engine = nullptr;
    // A message that is still inside must not go on to another window of the same handle.
    block->window = nullptr;
    block->isDetaching = true;
    block->before.Delete(kAllMessages);
    block->after.Delete(kAllMessages);
    ReleaseIfDone(*block);
  }
}

size_t LiveSubclassBlocks() { return liveBlocks; }

GXMSubclass::~GXMSubclass() { Terminate(); }

LONG_PTR GXMSubclass::p_ParamUser(HWND window) const {
  const SubclassBlock* const block = Find(window);
  return block == nullptr ? 0 : block->userParam;
}

void GXMSubclass::p_ParamUser(HWND window, LONG_PTR value) {
  if (SubclassBlock* const block = Find(window)) block->userParam = value;
}

bool GXMSubclass::Subclass(HWND window, GXISubclass& owner, LONG_PTR userParam) {
  if (!IsWindow(window)) throw SubclassError("error window handle");
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process != GetCurrentProcessId()) {
    throw SubclassError("Window handle belongs to another process");
  }
  isStarted_ = true;
  UniqueBlock block(NewBlock());
  if (Find(window) != nullptr) throw SubclassError("Window handle is already subclassed");
  block->window = window;
  block->owner = &owner;
  block->engine = this;
  block->userParam = userParam;
  // Before the block is linked: without an entry it could never be detached.
  const auto entry = registry_.emplace(window, block.get()).first;
  try {
    Link(*block);
  } catch (...) {
    registry_.erase(entry);
    throw;
  }
  (void)block.release();
  return true;
}

void GXMSubclass::AddMessage(HWND window, UINT message, int when) {
  SubclassBlock& block = Require(window);
  if ((when & kBeforePrevious) != 0) block.before.Add(message);
  if ((when & kAfterPrevious) != 0) block.after.Add(message);
}

void GXMSubclass::DeleteMessage(HWND window, UINT message, int when) {
  SubclassBlock& block = Require(window);
  if ((when & kBeforePrevious) != 0) block.before.Delete(message);
  if ((when & kAfterPrevious) != 0) block.after.Delete(message);
}

LRESULT GXMSubclass::CallOldWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  SubclassBlock* const block = Find(window);
  if (block == nullptr) return 0;
  return SubclassChain::CallPrevious(*block, message, wParam, lParam);
}

void GXMSubclass::UnSubclass(HWND window) {
  SubclassBlock* const block = Find(window);
  if (block == nullptr) return;
  block->isDetaching = true;
  block->before.Delete(kAllMessages);
  block->after.Delete(kAllMessages);
  block->engine = nullptr;
  registry_.erase(window);
}

void GXMSubclass::Terminate() {
  while (!registry_.empty()) UnSubclass(registry_.rbegin()->first);
  isStarted_ = false;
}

SubclassBlock* GXMSubclass::Find(HWND window) const {
  const auto entry = registry_.find(window);
  return entry == registry_.end() ? nullptr : entry->second;
}

SubclassBlock& GXMSubclass::Require(HWND window) const {
  if (!isStarted_) throw SubclassError("Subclassing hasn't been started");
  if (SubclassBlock* const block = Find(window)) return *block;
  throw SubclassError("Window handle isn't subclassed");
}

}  // namespace tellurvane
