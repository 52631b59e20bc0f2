#include "app/replay/world_reader.hpp"

#include <array>

namespace orvel::replay {

using memory::CannedOutcome;
using memory::World;

// Not in the unnamed namespace: the readers of lists and optionals find these by their argument.

static void read(const JsonField& field, memory::PixelSize& into) {
    std::vector<int> sides;
    read(field, sides);
    if (sides.size() != 2 || sides[0] < 0 || sides[1] < 0) {
        return field.fail("must be a width and a height in pixels");
    }
    into = {sides[0], sides[1]};
}

static void read(const JsonField& field, RunningApplication& into) {
    constexpr std::array<std::string_view, 3> policies{"regular", "accessory", "prohibited"};
    ObjectReader object(field);
    object.optional("pid", into.pid);
    object.optional("bundleID", into.bundleId);
    object.optional("name", into.name);
    object.optional("path", into.path);
    object.optionalName("policy", policies, into.policy);
    object.optional("active", into.isActive);
    object.optional("hidden", into.isHidden);
    object.optional("terminated", into.isTerminated);
    object.finish();
}

static void read(const JsonField& field, memory::InstalledApplication& into) {
    ObjectReader object(field);
    object.optional("bundleID", into.bundleId);
    object.optional("path", into.path);
    object.optional("name", into.name);
    object.finish();
}

static void read(const JsonField& field, Screen& into) {
    ObjectReader object(field);
    object.optional("frame", into.frame);
    object.optional("visible", into.visibleFrame);
    object.finish();
}

static void read(const JsonField& field, memory::WorldAxWindow& into) {
    ObjectReader object(field);
    object.optional("role", into.role);
    object.optional("title", into.title);
    object.optional("position", into.position);
    object.optional("size", into.size);
    object.optional("minimized", into.isMinimized);
    object.optional("focused", into.isFocused);
    object.optional("minWidth", into.minWidth);
    object.finish();
}

static void read(const JsonField& field, memory::WorldWindow& into) {
    ObjectReader object(field);
    object.optional("number", into.info.number);
    object.optional("pid", into.info.pid);
    object.optional("layer", into.info.layer);
    object.optional("name", into.info.name);
    object.optional("bounds", into.info.bounds);
    object.optional("onScreen", into.isOnScreen);
    object.optional("capturePixelWidth", into.capturePixelWidth);
    object.optional("ax", into.ax);
    object.finish();
}

static void read(const JsonField& field, memory::WorldInputSource& into) {
    std::string category;
    ObjectReader object(field);
    object.optional("id", into.source.id);
    object.optional("category", category);
    object.optional("ascii", into.source.isAsciiCapable);
    object.optional("selectable", into.isSelectable);
    object.finish();
    into.source.isKeyboard = category == "keyboard";
}

namespace {

/// Canned outcomes whose success and failure stand under these names; an empty name is no key.
struct OutcomeNames {
    std::string_view result;
    std::string_view error;
};

void readOutcome(const JsonField& field, OutcomeNames names, CannedOutcome& into) {
    ObjectReader object(field);
    object.optional("contains", into.contains);
    const bool hasResult = !names.result.empty() && object.optional(names.result, into.result);
    std::string error;
    const bool hasError = object.optional(names.error, error);
    object.finish();
    if (hasResult && hasError) field.fail("has both a result and an error");
    if (hasError || names.result.empty()) into.error = std::move(error);
}

void readOutcomes(ObjectReader& object, const JsonField& field, std::string_view key,
                  OutcomeNames names, std::vector<CannedOutcome>& into) {
    const Json* json = object.take(key);
    if (json == nullptr) return;
    const JsonField list = field.member(key, *json);
    into.assign(readLength(list), {});
    for (std::size_t i = 0; i < into.size(); ++i) readOutcome(list.element(i), names, into[i]);
}

void readPasteboard(const JsonField& field, World& world) {
    std::optional<std::string> text;
    std::optional<memory::PixelSize> image;
    ObjectReader object(field);
    object.optional("text", text);
    object.optional("imagePixels", image);
    object.finish();
    world.copyFromOutside(std::move(text), image);
}

void readApplications(ObjectReader& object, World& world) {
    object.optional("frontmost", world.frontmost);
    object.optional("apps", world.apps);
    object.optional("installed", world.installed);
    object.optional("otherInstances", world.otherInstances);
    object.optional("applicationsFolder", world.applicationsFolder);
}

void readScreenContents(ObjectReader& object, World& world) {
    object.optional("screens", world.screens);
    object.optional("mouse", world.mouse);
    object.optional("windows", world.windows);
    object.optional("caret", world.caret);
    object.optional("statusButton", world.statusButton);
}

void readInputState(ObjectReader& object, World& world) {
    constexpr std::array<std::string_view, 3> services{"ok", "missing", "closed"};
    object.optional("inputSources", world.inputSources);
    object.optional("currentInputSource", world.currentInputSource);
    if (object.optional("hidFlags", world.hidFlags)) world.isHidFlagsPinned = true;
    if (object.optional("keysDown", world.keysDown)) world.isKeysDownPinned = true;
    object.optionalName("hidService", services, world.hidService);
}

void readOutcomeLists(ObjectReader& object, const JsonField& field, World& world) {
    readOutcomes(object, field, "scripts", {"result", "error"}, world.scripts);
    readOutcomes(object, field, "tasks", {"output", "launchError"}, world.tasks);
    readOutcomes(object, field, "launchErrors", {{}, "error"}, world.launchErrors);
    std::string loginItem;
    if (object.optional("loginItem", loginItem)) {
        world.loginItemError = loginItem == "ok" ? std::nullopt : std::optional(loginItem);
    }
}

void readFiles(ObjectReader& object, const JsonField& field, World& world) {
    if (const Json* json = object.take("dockPlist")) {
        const bool isRight = json->isNull() || json->asObject() != nullptr;
        if (!isRight) field.member("dockPlist", *json).fail("must be an object or null");
        world.dockPlist = json->isNull() ? std::nullopt : std::optional(*json);
    }
    std::vector<std::string> removed;
    object.optional("removeFiles", removed);
    for (const std::string& path : removed) world.removeFromOutside(path);
    object.optional("unwritable", world.unwritable);
}

}  // namespace

void applyWorld(const JsonField& field, memory::MemoryDesktop& desktop) {
    World world = desktop.world;
    std::optional<bool> tapEnabled;
    ObjectReader object(field);
    object.optional("trusted", world.isTrusted);
    object.optional("screenRecording", world.canRecordScreen);
    object.optional("tapCreation", world.canCreateTap);
    if (const Json* json = object.take("tapEnabled")) {
        read(field.member("tapEnabled", *json), tapEnabled.emplace());
    }
    readApplications(object, world);
    readScreenContents(object, world);
    readInputState(object, world);
    readOutcomeLists(object, field, world);
    readFiles(object, field, world);
    if (const Json* json = object.take("pasteboard")) {
        readPasteboard(field.member("pasteboard", *json), world);
    }
    object.finish();
    if (field.hasFailed()) return;
    desktop.world = std::move(world);
    if (tapEnabled) desktop.eventTap.switchFromOutside(*tapEnabled);
}

}  // namespace orvel::replay
