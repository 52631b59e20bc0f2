#include "platform/x11/size_hints.hpp"

#include <algorithm>
#include <cstddef>

namespace orvel::x11 {

namespace {

constexpr std::uint32_t kHasLeast = 1U << 4U;
constexpr std::uint32_t kHasMost = 1U << 5U;
constexpr std::uint32_t kHasStep = 1U << 6U;
constexpr std::uint32_t kHasBase = 1U << 8U;
/// Where the pairs of numbers begin.
constexpr std::size_t kLeast = 5, kMost = 7, kStep = 9, kBase = 15;

int allowedLength(int wanted, int least, int most, int base, int step) {
    if (most > 0) wanted = std::min(wanted, most);
    wanted = std::max(wanted, least);
    const int steps = (wanted - base) / step;
    return std::max(base + steps * step, least);
}

}  // namespace

PixelSize SizeHints::allowed(PixelSize wanted) const {
    return {allowedLength(wanted.width, least.width, most.width, base.width, step.width),
            allowedLength(wanted.height, least.height, most.height, base.height, step.height)};
}

SizeHints sizeHintsOf(const std::vector<std::uint32_t>& numbers) {
    if (numbers.empty()) return {};
    const std::uint32_t flags = numbers.front();
    const auto has = [&](std::uint32_t flag, std::size_t at) {
        constexpr std::uint32_t kLongest = 0xFFFF;
        return (flags & flag) != 0 && at + 1 < numbers.size() && numbers[at] <= kLongest &&
               numbers[at + 1] <= kLongest;
    };
    const auto pair = [&](std::size_t at) {
        return PixelSize{static_cast<int>(numbers[at]), static_cast<int>(numbers[at + 1])};
    };
    SizeHints hints;
    if (has(kHasLeast, kLeast)) hints.least = hints.base = pair(kLeast);
    if (has(kHasBase, kBase)) hints.base = pair(kBase);
    if (has(kHasBase, kBase) && !has(kHasLeast, kLeast)) hints.least = hints.base;
    if (has(kHasMost, kMost)) hints.most = pair(kMost);
    if (has(kHasStep, kStep)) hints.step = pair(kStep);
    hints.least = {std::max(hints.least.width, 1), std::max(hints.least.height, 1)};
    hints.step = {std::max(hints.step.width, 1), std::max(hints.step.height, 1)};
    return hints;
}

}  // namespace orvel::x11
