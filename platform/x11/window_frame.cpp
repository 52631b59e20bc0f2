#include "platform/x11/window_frame.hpp"

#include <algorithm>

namespace orvel::x11 {

Extents extentsOf(const std::vector<std::uint32_t>& numbers) {
    // No honest edge is wider; a larger number is a broken property.
    constexpr std::uint32_t kWidest = 1000;
    const bool isBroken =
        numbers.size() != 4 || std::any_of(numbers.begin(), numbers.end(),
                                           [](std::uint32_t edge) { return edge > kWidest; });
    if (isBroken) return {};
    return {static_cast<int>(numbers[0]), static_cast<int>(numbers[1]),
            static_cast<int>(numbers[2]), static_cast<int>(numbers[3])};
}

RootRect WindowFrame::seen(const RootRect& client) const {
    return {client.x - frame.left + shadow.left, client.y - frame.top + shadow.top,
            client.width + frame.left + frame.right - shadow.left - shadow.right,
            client.height + frame.top + frame.bottom - shadow.top - shadow.bottom};
}

RootRect WindowFrame::client(const RootRect& rect) const {
    return {rect.x + frame.left - shadow.left, rect.y + frame.top - shadow.top,
            std::max(1, rect.width - frame.left - frame.right + shadow.left + shadow.right),
            std::max(1, rect.height - frame.top - frame.bottom + shadow.top + shadow.bottom)};
}

}  // namespace orvel::x11
