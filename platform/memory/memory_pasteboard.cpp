#include "platform/memory/memory_pasteboard.hpp"

#include <charconv>
#include <span>

namespace orvel::memory {

namespace {

constexpr std::string_view kStandIn = "picture ";

std::vector<std::byte> standInFor(PixelSize size) {
    const std::string text =
        std::string(kStandIn) + std::to_string(size.width) + "x" + std::to_string(size.height);
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

/// The size told by a stand-in; other contents count as a picture without pixels.
PixelSize sizeOfStandIn(std::span<const std::byte> bytes) {
    const std::string text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    PixelSize size;
    if (!text.starts_with(kStandIn)) return size;
    const char* end = text.data() + text.size();
    const auto afterWidth = std::from_chars(text.data() + kStandIn.size(), end, size.width).ptr;
    if (afterWidth != end) std::from_chars(afterWidth + 1, end, size.height);
    return size;
}

}  // namespace

std::int64_t MemoryPasteboard::changeCount() const { return world_.pasteboard.changeCount; }

PasteboardMarks MemoryPasteboard::marks() const { return world_.pasteboard.marks; }

std::optional<std::string> MemoryPasteboard::string() const { return world_.pasteboard.text; }

std::optional<PasteboardImage> MemoryPasteboard::image() const {
    const auto size = world_.pasteboard.image;
    if (!size) return std::nullopt;
    return PasteboardImage{{size->width, size->height, 0, nullptr}, standInFor(*size)};
}

void MemoryPasteboard::clear() {
    effects_.effect("pasteboard")->beginObject().member("clear", true).endObject();
    world_.copyFromOutside(std::nullopt, std::nullopt);
}

void MemoryPasteboard::setString(std::string_view text) {
    effects_.effect("pasteboard")->beginObject().member("setString", text).endObject();
    world_.pasteboard.text = std::string(text);
}

Result<> MemoryPasteboard::writeImage(std::string_view path) {
    const auto file = world_.files.find(path);
    if (file == world_.files.end()) return Failure{std::string(path) + ": cannot be loaded"};
    effects_.effect("pasteboard")->beginObject().member("writeImage", path).endObject();
    world_.pasteboard.image = sizeOfStandIn(file->second);
    return {};
}

}  // namespace orvel::memory
