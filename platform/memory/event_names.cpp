#include "platform/memory/event_names.hpp"

#include <array>
#include <utility>

namespace orvel::memory {

namespace {

constexpr std::array<std::pair<EventType, std::string_view>, 7> kNames{{
    {EventType::keyDown, "keyDown"},
    {EventType::keyUp, "keyUp"},
    {EventType::flagsChanged, "flagsChanged"},
    {EventType::systemDefined, "systemDefined"},
    {EventType::scrollWheel, "scrollWheel"},
    {EventType::otherMouseDown, "otherMouseDown"},
    {EventType::otherMouseUp, "otherMouseUp"},
}};

}  // namespace

std::string_view eventTypeName(EventType type) {
    for (const auto& [named, name] : kNames) {
        if (named == type) return name;
    }
    return {};
}

std::optional<EventType> eventTypeNamed(std::string_view name) {
    for (const auto& [type, known] : kNames) {
        if (known == name) return type;
    }
    return std::nullopt;
}

}  // namespace orvel::memory
