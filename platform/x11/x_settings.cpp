#include "platform/x11/x_settings.hpp"

#include <bit>
#include <optional>

namespace orvel::x11 {

namespace {

enum Kind : std::uint8_t { number = 0, text = 1, colour = 2 };

constexpr std::size_t kColourSize = 8;

/// Takes the property apart from the front. After a read beyond the end nothing more is given.
class Reader {
public:
    explicit Reader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {
        isBigEndian_ = !bytes.empty() && bytes.front() == 1;
        skip(4);
    }

    [[nodiscard]] bool isGood() const { return isGood_; }
    std::uint32_t unsignedNumber(std::size_t size) {
        const auto part = take(size);
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < part.size(); ++i) {
            value = value << 8 | part[isBigEndian_ ? i : part.size() - 1 - i];
        }
        return value;
    }
    std::string paddedText(std::size_t length) {
        const auto part = take(length);
        skip((4 - length % 4) % 4);
        return {part.begin(), part.end()};
    }
    void skip(std::size_t size) { take(size); }

private:
    std::span<const std::uint8_t> take(std::size_t size) {
        isGood_ = isGood_ && size <= bytes_.size();
        if (!isGood_) return {};
        const auto part = bytes_.first(size);
        bytes_ = bytes_.subspan(size);
        return part;
    }

    std::span<const std::uint8_t> bytes_;
    bool isBigEndian_ = false;
    bool isGood_ = true;
};

void readEntry(Reader& reader, XSettings& settings) {
    const std::uint32_t kind = reader.unsignedNumber(1);
    reader.skip(1);
    const std::string name = reader.paddedText(reader.unsignedNumber(2));
    reader.skip(4);  // When it changed last.
    switch (kind) {
        case Kind::number: {
            const auto value = std::bit_cast<std::int32_t>(reader.unsignedNumber(4));
            if (reader.isGood()) settings[name] = value;
            break;
        }
        case Kind::text: {
            std::string value = reader.paddedText(reader.unsignedNumber(4));
            if (reader.isGood()) settings[name] = std::move(value);
            break;
        }
        case Kind::colour: reader.skip(kColourSize); break;
        default: reader.skip(SIZE_MAX);
    }
}

}  // namespace

XSettings parseXSettings(std::span<const std::uint8_t> property) {
    XSettings settings;
    Reader reader(property);
    reader.skip(4);  // The number of the whole, which tells of changes.
    const std::uint32_t count = reader.unsignedNumber(4);
    for (std::uint32_t i = 0; i < count && reader.isGood(); ++i) readEntry(reader, settings);
    return settings;
}

}  // namespace orvel::x11
