#include "tools/rig/probe_event.hpp"

#include <algorithm>
#include <array>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <string_view>

namespace orvel::rig {
namespace {

// In the order of ProbeEvent::Kind.
constexpr std::array<std::string_view, 8> kKindNames{
    "key-press", "key-release", "button-press", "button-release",
    "motion",    "scroll",      "focus-in",     "focus-out"};

std::string toHex(const std::string& text) {
    std::ostringstream hex;
    for (const char byte : text) {
        hex << std::hex << std::setw(2) << std::setfill('0')
            << static_cast<int>(static_cast<unsigned char>(byte));
    }
    return hex.str();
}

std::string fromHex(const std::string& hex) {
    std::string text;
    for (std::size_t at = 0; at + 1 < hex.size(); at += 2) {
        text += static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16));
    }
    return text;
}

// A word that may be empty must still be a word on the line.
std::string word(const std::string& text) { return text.empty() ? "-" : text; }

std::string unword(const std::string& text) { return text == "-" ? "" : text; }

}  // namespace

std::string toLine(const ProbeEvent& event) {
    std::ostringstream line;
    line << kKindNames[static_cast<std::size_t>(event.kind)] << ' ' << event.device << ' '
         << event.source << ' ' << event.detail << ' ' << event.modifiers << ' ' << event.group
         << ' ' << event.repeat << ' ' << event.emulated << ' ' << event.down << ' ' << event.right
         << ' ' << event.x << ' ' << event.y << ' ' << event.serverMs << ' ' << event.receivedUs
         << ' ' << word(event.keysym) << ' ' << word(toHex(event.text));
    return line.str();
}

std::optional<ProbeEvent> fromLine(const std::string& line) {
    std::istringstream in(line);
    std::string kind;
    ProbeEvent event;
    in >> kind >> event.device >> event.source >> event.detail >> event.modifiers >> event.group >>
        event.repeat >> event.emulated >> event.down >> event.right >> event.x >> event.y >>
        event.serverMs >> event.receivedUs >> event.keysym >> event.text;
    const auto* name = std::find(kKindNames.begin(), kKindNames.end(), kind);
    if (!in || name == kKindNames.end()) {
        return std::nullopt;
    }
    event.kind = static_cast<ProbeEvent::Kind>(name - kKindNames.begin());
    event.keysym = unword(event.keysym);
    event.text = fromHex(unword(event.text));
    return event;
}

std::ostream& operator<<(std::ostream& out, const ProbeEvent& event) {
    out << kKindNames[static_cast<std::size_t>(event.kind)] << ' ';
    if (event.kind == ProbeEvent::Kind::scroll) {
        out << "down " << event.down << " right " << event.right;
    } else if (event.keysym.empty()) {
        out << event.detail;
    } else {
        out << event.keysym;
    }
    if (event.modifiers != 0) {
        out << " with modifiers 0x" << std::hex << event.modifiers << std::dec;
    }
    return out << (event.repeat ? " (repeat)" : "") << (event.emulated ? " (emulated)" : "")
               << " from device " << event.source;
}

}  // namespace orvel::rig
