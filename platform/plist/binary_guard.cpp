#include "platform/plist/binary_guard.hpp"

#include <cstdint>
#include <optional>

namespace orvel::plist {

namespace {

constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kTrailerSize = 32;
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

    bool visit(std::uint64_t object, int depth) {
        if (depth > kMaxDepth) return fail("a binary property list nested too deeply");
        if (object >= objectCount_) return fail("a binary property list with a broken reference");
        if (++visited_ > kMaxObjects)
            return fail("a binary property list that unfolds without end");
        const auto offset = number(tableOffset_ + object * offsetSize_, offsetSize_);
        if (!offset || *offset < kHeaderSize || *offset >= tableOffset_) {
            return fail("a binary property list with a broken offset");
        }
        const unsigned kind = byteAt(*offset) >> 4;
        std::uint64_t position = *offset + 1;
        std::uint64_t count = byteAt(*offset) & 0x0F;
        const bool hasLength = kind == 0x4 || kind == 0x5 || kind == 0x6 || kind >= 0xA;
        if (hasLength && count == 0x0F && !readLength(position, count)) return false;
        if (kind >= 0xA) return visitMembers(position, count, kind == 0xD ? 2 : 1, depth);
        unfolded_ += kind == 0x6 ? count * 3 : count;
        if (count > bytes_.size() || unfolded_ > kMaxUnfoldedBytes) {
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

    bool visitMembers(std::uint64_t position, std::uint64_t count, std::uint64_t perMember,
                      int depth) {
        if (count > bytes_.size()) return fail("a binary property list with a broken length");
        for (std::uint64_t i = 0; i < count * perMember; ++i) {
            const auto member = number(position + i * referenceSize_, referenceSize_);
            if (!member) return fail("a binary property list with a broken reference");
            if (!visit(*member, depth + 1)) return false;
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
