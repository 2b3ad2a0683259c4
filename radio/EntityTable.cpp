#include "radio/EntityTable.h"

#include <array>

#include "radio/Entities.h"

namespace tellurvane {
namespace {

constexpr size_t kAmpersandPlace = 6;
constexpr size_t kSemicolonPlace = 19;
static_assert(kEntities[3].name == L"&num;" && kEntities[kAmpersandPlace].name == L"&amp;" &&
              kEntities[8].name == L"&#039;" && kEntities[kSemicolonPlace].name == L"&semi;");

// not covered: only the compiler calls it
constexpr Step StepOf(size_t place) {
  if (place < kAmpersandPlace) return kNamesBeforeAmpersand;
  if (place == kAmpersandPlace) return kAmpersand;
  return place <= kSemicolonPlace ? kNamesUpToSemicolon : kNamesAfterSemicolon;
}

static_assert(kLongestEntity - 1 == sizeof(EntityKey));

}  // namespace

constexpr std::array<KnownEntity, kEntitySlots> kEntitiesBySlot = [] {
  std::array<KnownEntity, kEntitySlots> slots;
  for (size_t place = 0; place < kEntities.size(); ++place) {
    const Entity& entity = kEntities[place];
    const EntityKey key = KeyOf(entity.name);
    size_t slot = EntitySlotOf(key);
    while (slots[slot].key != 0) slot = (slot + 1) % kEntitySlots;
    const wchar_t character = FromWindows1252(entity.value);
    // A "<" is a part of tags only, whose turns have come by then.
    const bool isLast = EntityKindOf(character) == kNoEntityPart || character == L'<';
    slots[slot] = {key, character, StepOf(place), isLast};
  }
  return slots;
}();

}  // namespace tellurvane
