#include "platform/plist/binary_guard.hpp"

#include <cstdint>
#include <optional>

namespace orvel::plist {

namespace {

constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kTrailerSize = 32;
// The kind of an object stands in the upper half of its first byte.
constexpr unsigned kData = 0x4;
constexpr unsigned kText = 0x5;
constexpr unsigned kWideText = 0x6;
constexpr unsigned kArray = 0xA;  // And whatever else has members.
constexpr unsigned kDictionary = 0xD;
constexpr int kMaxDepth = 128;
constexpr std::uint64_t kMaxObjects = 1'000'000;
constexpr std::uint64_t kMaxUnfoldedBytes = 256ULL << 20;

/// Walks the objects as a reader would unfold them, and counts.
class Walker {
public:
    explicit Walker(std::string_view bytes) : bytes_(bytes) {}

    Result<> run() {
        if (bytes_.size() < kHeaderSize + kTrailerSize)
            return Failure{"a binary property list cut short"};
        const std::size_t trailer = bytes_.size() - kTrailerSize;
        offsetSize_ = byteAt(trailer + 6);
        referenceSize_ = byteAt(trailer + 7);
        objectCount_ = *number(trailer + 8, 8);
        const std::uint64_t top = *number(trailer + 16, 8);
        tableOffset_ = *number(trailer + 24, 8);
        const bool sizesFit =
            offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8;
        if (!sizesFit || tableOffset_ > trailer ||
            objectCount_ > (trailer - tableOffset_) / offsetSize_) {
            return Failure{"a binary property list with a broken table"};
        }
        if (!visit(top, 1)) return Failure{problem_};
        return {};
    }

private:
    bool fail(const char* problem) {
        problem_ = problem;
        return false;
    }

    std::uint8_t byteAt(std::size_t position) const {
        return static_cast<std::uint8_t>(bytes_[position]);
    }

    /// A big-endian number; nothing when it reaches over the end.
    std::optional<std::uint64_t> number(std::uint64_t position, std::size_t size) const {
        if (position > bytes_.size() || size > bytes_.size() - position) return std::nullopt;
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < size; ++i) value = value << 8 | byteAt(position + i);
        return value;
    }

    /// Where an object begins; nothing when there is none of that number.
    std::optional<std::uint64_t> offsetOf(std::uint64_t object) const {
        if (object >= objectCount_) return std::nullopt;
        const auto offset = number(tableOffset_ + object * offsetSize_, offsetSize_);
        const bool isInside = offset && *offset >= kHeaderSize && *offset < tableOffset_;
        return isInside ? offset : std::nullopt;
    }

    bool visit(std::uint64_t object, int depth) {
        if (depth > kMaxDepth) return fail("a binary property list nested too deeply");
        if (++visited_ > kMaxObjects)
            return fail("a binary property list that unfolds without end");
        const auto offset = offsetOf(object);
        if (!offset) return fail("a binary property list with a broken reference");
        const unsigned kind = byteAt(*offset) >> 4;
        std::uint64_t position = *offset + 1;
        std::uint64_t count = byteAt(*offset) & 0x0F;
        const bool hasLength =
            kind == kData || kind == kText || kind == kWideText || kind >= kArray;
        if (hasLength && count == 0x0F && !readLength(position, count)) return false;
        if (count > bytes_.size()) return fail("a binary property list with a broken length");
        if (kind >= kArray) return visitMembers(position, count, kind == kDictionary, depth);
        unfolded_ += kind == kWideText ? count * 3 : count;
        if (unfolded_ > kMaxUnfoldedBytes) {
            return fail("a binary property list that unfolds without end");
        }
        return true;
    }

    /// A length of 15 or more stands in an integer object of its own.
    bool readLength(std::uint64_t& position, std::uint64_t& count) {
        const auto marker = number(position, 1);
        if (!marker || *marker >> 4 != 0x1 || (*marker & 0x0F) > 3) {
            return fail("a binary property list with a broken length");
        }
        const std::size_t size = 1U << (*marker & 0x0F);
        const auto length = number(position + 1, size);
        if (!length) return fail("a binary property list with a broken length");
        position += 1 + size;
        count = *length;
        return true;
    }

    /// The members of a dictionary are its keys first, which must be texts, then their values.
    bool visitMembers(std::uint64_t position, std::uint64_t count, bool isDictionary, int depth) {
        const std::uint64_t references = isDictionary ? count * 2 : count;
        for (std::uint64_t i = 0; i < references; ++i) {
            const auto member = number(position + i * referenceSize_, referenceSize_);
            if (!member) return fail("a binary property list with a broken reference");
            if (isDictionary && i < count && !isKey(*member)) {
                return fail("a binary property list with a key that is no text");
            }
            if (!visit(*member, depth + 1)) return false;
        }
        return true;
    }

    /// Whether an object is a text of which a reader that ends texts at a zero sees the whole.
    bool isKey(std::uint64_t object) {
        const auto offset = offsetOf(object);
        const unsigned kind = offset ? byteAt(*offset) >> 4 : 0U;
        if (kind != kText && kind != kWideText) return false;
        std::uint64_t position = *offset + 1;
        std::uint64_t count = byteAt(*offset) & 0x0F;
        if (count == 0x0F && !readLength(position, count)) return false;
        const std::size_t unit = kind == kText ? 1 : 2;
        for (std::uint64_t i = 0; i < count; ++i) {
            const auto character = number(position + i * unit, unit);
            if (!character || *character == 0) return false;
        }
        return true;
    }

    std::string_view bytes_;
    std::size_t offsetSize_ = 0;
    std::size_t referenceSize_ = 0;
    std::uint64_t objectCount_ = 0;
    std::uint64_t tableOffset_ = 0;
    std::uint64_t visited_ = 0;
    std::uint64_t unfolded_ = 0;
    const char* problem_ = "";
};

}  // namespace

Result<> checkBinaryPropertyList(std::string_view bytes) { return Walker(bytes).run(); }

}  // namespace orvel::plist
