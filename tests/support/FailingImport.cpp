#include "tests/support/FailingImport.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace tellurvane {
namespace {

// The entries of the import table, each under its function's name.
using Slots = std::multimap<std::string, void**>;

template <typename Type>
Type* At(std::size_t offset) {
  return reinterpret_cast<Type*>(reinterpret_cast<std::byte*>(GetModuleHandleW(nullptr)) + offset);
}

// The linker puts the names of all imports into one table, and their addresses into a second table
// of the same shape. Delay-loaded imports are in both, though the import directory does not list
// them.
Slots AllSlots() {
  const auto* const dos = At<IMAGE_DOS_HEADER>(0);
  const auto* const headers = At<IMAGE_NT_HEADERS>(static_cast<std::size_t>(dos->e_lfanew));
  const auto& directories = headers->OptionalHeader.DataDirectory;
  const auto* const first =
      At<IMAGE_IMPORT_DESCRIPTOR>(directories[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress);
  const IMAGE_DATA_DIRECTORY& addresses = directories[IMAGE_DIRECTORY_ENTRY_IAT];
  const std::size_t toNames = first->FirstThunk - first->OriginalFirstThunk;

  Slots slots;
  for (std::size_t at = 0; at < addresses.Size; at += sizeof(void*)) {
    const std::size_t address = addresses.VirtualAddress + at;
    const ULONGLONG name = *At<ULONGLONG>(address - toNames);
    if (name == 0 || name >= headers->OptionalHeader.SizeOfImage) continue;
    slots.emplace(At<IMAGE_IMPORT_BY_NAME>(name)->Name, At<void*>(address));
  }
  return slots;
}

void Write(void** slot, void* value) {
  DWORD before = 0;
  VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &before);
  *slot = value;
  VirtualProtect(slot, sizeof(*slot), before, &before);
}

}  // namespace

// Intercepts one function. Never freed, because other code may have stored the stub's address.
struct FailingImport::Hook {
  // The stub below uses the offsets of the members from `calls` to `fail`.
  std::int32_t calls = 0;
  std::int32_t first = 0;  // that fails; none for 0
  std::int32_t last = 0;
  std::int32_t unused = 0;
  void* next = nullptr;  // for the calls that do not fail
  std::uint64_t (*fail)(Hook* hook) = nullptr;

  void* original = nullptr;
  PlatformCall call;
  std::vector<void**> slots;
  void* stub = nullptr;

  static std::uint64_t Fail(Hook* hook);
  void MakeStub();
  void PutIn();
  void TakeOut();
};

std::uint64_t FailingImport::Hook::Fail(Hook* hook) {
  SetLastError(hook->call.error);
  return hook->call.answer;
}

// Machine code, because C++ cannot forward arguments of unknown types: the registers and the stack
// reach the original function unchanged.
void FailingImport::Hook::MakeStub() {
  std::array<unsigned char, 39> code = {0x49, 0xBA, 0,    0,    0,
                                        0,    0,    0,    0,    0,  // mov r10, <this>
                                        0x41, 0xFF, 0x02,           // inc dword ptr [r10]     calls
                                        0x41, 0x8B, 0x02,           // mov eax, [r10]
                                        0x41, 0x3B, 0x42, 0x04,     // cmp eax, [r10+4]        first
                                        0x7C, 0x0D,                 // jl pass
                                        0x41, 0x3B, 0x42, 0x08,     // cmp eax, [r10+8]        last
                                        0x7F, 0x07,                 // jg pass
                                        0x4C, 0x89, 0xD1,           // mov rcx, r10
                                        0x41, 0xFF, 0x62, 0x18,     // jmp [r10+24]            fail
                                        0x41, 0xFF, 0x62, 0x10};    // pass: jmp [r10+16] next
  static_assert(offsetof(Hook, next) == 0x10 && offsetof(Hook, fail) == 0x18);
  Hook* const self = this;
  std::memcpy(code.data() + 2, &self, sizeof(self));
  stub = VirtualAlloc(nullptr, code.size(), MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE);
  std::memcpy(stub, code.data(), code.size());
}

// Done for each Fail: the first call of a delay-loaded function overwrites its table entry.
void FailingImport::Hook::PutIn() {
  for (void** const slot : slots) {
    if (*slot == stub) continue;
    original = next = *slot;
    Write(slot, stub);
  }
}

void FailingImport::Hook::TakeOut() {
  for (void** const slot : slots) {
    if (*slot == stub) Write(slot, original);
  }
}

FailingImport::Hook& FailingImport::HookOf(const PlatformCall& call) {
  static std::map<std::string, Hook> hooks;
  static const Slots slots = AllSlots();
  Hook& hook = hooks[call.name];
  if (hook.stub == nullptr) {
    hook.fail = Hook::Fail;
    const auto [begin, end] = slots.equal_range(call.name);
    for (auto slot = begin; slot != end; ++slot) hook.slots.push_back(slot->second);
    hook.MakeStub();
  }
  hook.call = call;
  return hook;
}

FailingImport::FailingImport(const PlatformCall& call) : hook_(HookOf(call)) { LetAllThrough(); }

FailingImport::~FailingImport() {
  LetAllThrough();
  hook_.TakeOut();
}

bool FailingImport::IsImported() const { return !hook_.slots.empty(); }

void FailingImport::Fail(int first, int last) {
  hook_.PutIn();
  hook_.calls = 0;
  hook_.first = first;
  hook_.last = last;
}

void FailingImport::LetAllThrough() { Fail(0, -1); }

void FailingImport::ReplaceWith(void* function) { hook_.next = function; }

int FailingImport::Calls() const { return hook_.calls; }

}  // namespace tellurvane
