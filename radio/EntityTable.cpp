#include "radio/EntityTable.h"

#include <algorithm>
#include <array>

#include "radio/Entities.h"

namespace tellurvane {
namespace {

// A power of two, some times the number of names: most of them stand alone.
constexpr size_t kSlots = 512;

constexpr size_t kAmpersandPlace = 6;
constexpr size_t kSemicolonPlace = 19;
static_assert(kEntities[3].name == L"&num;" && kEntities[kAmpersandPlace].name == L"&amp;" &&
              kEntities[8].name == L"&#039;" && kEntities[kSemicolonPlace].name == L"&semi;");

constexpr Step StepOf(size_t place) {
  if (place < kAmpersandPlace) return kNamesBeforeAmpersand;
  if (place == kAmpersandPlace) return kAmpersand;
  return place <= kSemicolonPlace ? kNamesUpToSemicolon : kNamesAfterSemicolon;
}

// By four characters, which the shortest name has: "&lt;".
constexpr size_t kShortestName = 4;
constexpr size_t SlotOf(std::wstring_view name) {
  const auto code = [name](size_t place) { return static_cast<size_t>(name[place]); };
  return (code(1) * 5 + code(2) * 67 + code(name.size() - 2) * 23 + code(name.size() - 3) * 11 +
          name.size()) %
         kSlots;
}

// Open addressing; an empty name is an empty slot.
constexpr auto kSlotsByName = [] {
  std::array<KnownEntity, kSlots> slots;
  for (size_t place = 0; place < kEntities.size(); ++place) {
    const Entity& entity = kEntities[place];
    size_t slot = SlotOf(entity.name);
    while (!slots[slot].name.empty()) slot = (slot + 1) % kSlots;
    slots[slot] = {entity.name, FromWindows1252(entity.value), StepOf(place)};
  }
  return slots;
}();

}  // namespace

const KnownEntity* EntityOf(std::wstring_view name) {
  if (name.size() < kShortestName || name.size() > kLongestEntity) return nullptr;
  for (size_t slot = SlotOf(name);; slot = (slot + 1) % kSlots) {
    const KnownEntity& known = kSlotsByName[slot];
    if (known.name.empty()) return nullptr;
    if (std::ranges::equal(known.name, name)) return &known;
  }
}

}  // namespace tellurvane
