#include "platform/plist/preference_document.hpp"

#include "platform/plist/plist_node.hpp"
#include "platform/plist/xml_outline.hpp"
#include "platform/preference_list.hpp"

#include <plist/plist.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace orvel::plist {

namespace {

constexpr std::string_view kEmptyDocument =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n"
    "<dict>\n"
    "</dict>\n"
    "</plist>\n";

/// The elements between the tags of the root dictionary that libplist writes around one entry.
std::string entryXml(const std::string& key, const PreferenceValue& value) {
    const PlistNode root(plist_new_dict());
    plist_dict_set_item(root.get(), key.c_str(), valueNode(value).release());
    const std::string xml = nodeXml(root.get());
    const Result<XmlOutline> outline = outlineXml(xml);
    if (!outline || outline.value().entries.size() != 1) return {};
    const OutlineEntry& entry = outline.value().entries.front();
    return xml.substr(entry.keyElement.begin, entry.value.end - entry.keyElement.begin);
}

std::string valueXml(const std::string& key, const PreferenceValue& value) {
    const std::string entry = entryXml(key, value);
    const std::size_t keyEnd = entry.find("</key>");
    return keyEnd == std::string::npos ? std::string() : entry.substr(entry.find('<', keyEnd + 6));
}

/// Where the blanks before `at` begin, up to and with one line break.
std::size_t lineStart(std::string_view text, std::size_t at) {
    while (at > 0 && (text[at - 1] == ' ' || text[at - 1] == '\t')) --at;
    if (at > 0 && text[at - 1] == '\n') --at;
    if (at > 0 && text[at - 1] == '\r') --at;
    return at;
}

/// Edits of stretches of a text, collected first, so that they keep their positions.
class Edits {
public:
    void replace(Span span, std::string text) { edits_.push_back({span, std::move(text)}); }

    std::string apply(const std::string& text) {
        std::sort(edits_.begin(), edits_.end(),
                  [](const Edit& a, const Edit& b) { return a.span.begin < b.span.begin; });
        std::string edited;
        std::size_t copied = 0;
        for (const Edit& edit : edits_) {
            const std::size_t begin = std::max(copied, edit.span.begin);
            edited.append(text, copied, begin - copied);
            edited += edit.text;
            copied = std::max(begin, edit.span.end);
        }
        return edited.append(text, copied);
    }

private:
    struct Edit {
        Span span;
        std::string text;
    };
    std::vector<Edit> edits_;
};

/// Writes one change into the entries that are there; false when the key is to be added.
bool editEntries(Edits& edits, const std::string& text, const XmlOutline& outline,
                 const std::string& key, const std::optional<PreferenceValue>& value) {
    const OutlineEntry* last = nullptr;
    for (const OutlineEntry& entry : outline.entries) {
        if (entry.key != key) continue;
        last = &entry;
        if (!value) edits.replace({lineStart(text, entry.keyElement.begin), entry.value.end}, "");
    }
    if (last != nullptr && value) edits.replace(last->value, valueXml(key, *value));
    return last != nullptr || !value;
}

std::string editXml(const std::string& text, const XmlOutline& outline,
                    const PreferenceChanges& changes) {
    Edits edits;
    std::string added;
    for (const auto& [key, value] : changes) {
        if (!editEntries(edits, text, outline, key, value)) added += "\n\t" + entryXml(key, *value);
    }
    if (!added.empty() && outline.rootIsEmptyTag) {
        edits.replace(outline.root, "<dict>" + added + "\n</dict>");
    } else if (!added.empty()) {
        const std::size_t end = lineStart(text, outline.rootEnd);
        const bool hasLine = end < outline.rootEnd && text.find('\n', end) < outline.rootEnd;
        const std::size_t at = hasLine ? end : outline.rootEnd;
        edits.replace({at, at}, hasLine ? added : added + "\n");
    }
    return edits.apply(text);
}

/// The document as libplist writes it: for binary lists, whose bytes cannot be edited.
Result<std::string> rewriteAsXml(const std::string& bytes) {
    Result<PlistNode> node = parsePlist(bytes);
    if (!node) return Failure{node.error()};
    return nodeXml(node.value().get());
}

bool sameValue(const PreferenceValue& a, const PreferenceValue& b) {
    const auto* realA = std::get_if<double>(&a);
    const auto* realB = std::get_if<double>(&b);
    const bool areBothNoNumber =
        realA != nullptr && realB != nullptr && std::isnan(*realA) && std::isnan(*realB);
    return areBothNoNumber || a == b;
}

bool sameValues(const PreferenceValues& a, const PreferenceValues& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.first == y.first && sameValue(x.second, y.second);
    });
}

PreferenceValues changed(PreferenceValues values, const PreferenceChanges& changes) {
    for (const auto& [key, value] : changes) {
        if (value) {
            values.insert_or_assign(key, storable(*value));
        } else {
            values.erase(key);
        }
    }
    return values;
}

/// Whether the two readings of a text, for values and for places, found the same keys.
bool agree(const std::string& text, const PreferenceValues& values) {
    const Result<XmlOutline> outline = outlineXml(text);
    if (!outline) return false;
    std::set<std::string_view> keys;
    for (const OutlineEntry& entry : outline.value().entries) keys.insert(entry.key);
    return std::equal(keys.begin(), keys.end(), values.begin(), values.end(),
                      [](std::string_view key, const auto& entry) { return key == entry.first; });
}

bool isBinary(const std::string& bytes) {
    return plist_is_binary(bytes.data(), static_cast<std::uint32_t>(bytes.size())) != 0;
}

/// `changes` without those that already hold.
PreferenceChanges differences(const PreferenceChanges& changes, const PreferenceValues& values) {
    PreferenceChanges different;
    for (const auto& [key, change] : changes) {
        const auto value = change ? std::optional(storable(*change)) : std::nullopt;
        const auto found = values.find(key);
        const bool holds = value ? found != values.end() && sameValue(found->second, *value)
                                 : found == values.end();
        if (!holds) different.emplace(key, value);
    }
    return different;
}

}  // namespace

Result<PreferenceDocument> PreferenceDocument::parse(std::string bytes) {
    Result<PlistNode> root = parsePlist(bytes);
    if (!root) return Failure{root.error()};
    if (plist_get_node_type(root.value().get()) != PLIST_DICT)
        return Failure{"the root is no dictionary"};
    PreferenceDocument document;
    forEachItem(root.value().get(), [&](std::string key, plist_t item) {
        document.values_.insert_or_assign(std::move(key), nodeValue(item));
    });
    if (!isBinary(bytes) && !agree(bytes, document.values_)) return Failure{"a key with odd signs"};
    document.bytes_ = std::move(bytes);
    return document;
}

Result<PreferenceDocument> PreferenceDocument::with(const PreferenceChanges& changes) const {
    const PreferenceChanges needed = differences(changes, values_);
    if (needed.empty()) return *this;
    std::string text = bytes_.empty() ? std::string(kEmptyDocument) : bytes_;
    if (isBinary(text)) {
        Result<std::string> xml = rewriteAsXml(text);
        if (!xml) return Failure{xml.error()};
        text = std::move(xml).value();
    }
    const Result<XmlOutline> outline = outlineXml(text);
    if (!outline) return Failure{outline.error()};
    Result<PreferenceDocument> edited = parse(editXml(text, outline.value(), needed));
    if (edited && !sameValues(edited.value().values_, changed(values_, needed))) {
        return Failure{"a value that an XML property list cannot hold"};
    }
    return edited;
}

}  // namespace orvel::plist

namespace orvel {

Result<PreferenceEntries> readPreferenceList(std::string_view bytes) {
    Result<plist::PlistNode> root = plist::parsePlist(bytes);
    if (!root) return Failure{root.error()};
    if (plist_get_node_type(root.value().get()) != PLIST_DICT)
        return Failure{"the root is no dictionary"};
    PreferenceEntries entries;
    plist::forEachItem(root.value().get(), [&](std::string key, plist_t item) {
        entries.emplace_back(std::move(key), plist::nodeValue(item));
    });
    return entries;
}

std::string writePreferenceList(const PreferenceEntries& entries) {
    const plist::PlistNode root(plist_new_dict());
    for (const auto& [key, value] : entries) {
        if (std::holds_alternative<ForeignPreference>(value)) continue;
        plist_dict_set_item(root.get(), key.c_str(),
                            plist::valueNode(plist::storable(value)).release());
    }
    return plist::nodeXml(root.get());
}

}  // namespace orvel
