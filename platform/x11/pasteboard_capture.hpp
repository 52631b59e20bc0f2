#pragma once

#include "platform/x11/pasteboard_contents.hpp"
#include "platform/x11/selection_reader.hpp"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvel::x11 {

/// Takes in what the owner of the clipboard offers: first what it says about its contents, then
/// the contents. Those marked as a secret are left where they are.
class PasteboardCapture {
public:
    /// Starts to decode a picture elsewhere.
    using Decode =
        std::function<std::shared_ptr<PendingPicture>(std::vector<std::uint8_t> encoded)>;

    PasteboardCapture(ServiceConnection& server, SelectionReader& reader, Decode decode)
        : server_(server), reader_(reader), decode_(std::move(decode)) {}

    /// What could be read in time of the contents that are owned since `time`. Formats that did
    /// not arrive whole are absent.
    [[nodiscard]] PasteboardContents capture(xcb_timestamp_t time);

private:
    using Targets = std::vector<xcb_atom_t>;

    [[nodiscard]] PasteboardMarks readMarks(const Targets& offered);
    [[nodiscard]] bool isSecretByHint();
    [[nodiscard]] std::shared_ptr<PendingPicture> readPicture(const Targets& offered);
    [[nodiscard]] std::optional<std::string> readText(const Targets& offered);
    [[nodiscard]] std::optional<std::string> textOf(const PropertyValue& value);
    [[nodiscard]] bool offers(const Targets& offered, const char* target);

    ServiceConnection& server_;
    SelectionReader& reader_;
    Decode decode_;
    SelectionReader::Question question_;
};

}  // namespace orvel::x11
