#pragma once

#include "platform/event_poster.hpp"
#include "platform/x11/output_ledger.hpp"
#include "platform/x11/shortcut_dialect.hpp"

#include <span>

namespace orvel::x11 {

/// Translates posted events for the ledger.
class PostedKeys {
public:
    PostedKeys(const KeyMap& map, const HidState& state, OutputLedger& ledger);

    void setTranslator(ShortcutTranslator translator) { translator_ = std::move(translator); }
    /// Puts nothing out and returns false when this keyboard lacks a key of the batch.
    bool post(std::span<const PostedKey> keys);
    bool post(std::span<const PostedMediaKey> keys);

private:
    void postKey(const PostedKey& key);
    void postFlags(const PostedKey& key);
    [[nodiscard]] XKeycode keyFor(const PostedKey& key) const;
    [[nodiscard]] XKeycode keyFor(const PostedMediaKey& key) const;

    const KeyMap& map_;
    const HidState& state_;
    OutputLedger& ledger_;
    ShortcutTranslator translator_;
};

}  // namespace orvel::x11
