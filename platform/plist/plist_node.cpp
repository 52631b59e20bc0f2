#include "platform/plist/plist_node.hpp"

#include "platform/base/base64.hpp"
#include "platform/base/utf8.hpp"
#include "platform/plist/binary_guard.hpp"
#include "platform/plist/xml_outline.hpp"

#include <plist/plist.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <utility>

namespace orvel::plist {

namespace {

std::string_view textOf(plist_t node) {
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    return text == nullptr ? std::string_view() : std::string_view(text, length);
}

std::string_view dataOf(plist_t node) {
    std::uint64_t length = 0;
    const char* data = plist_get_data_ptr(node, &length);
    return data == nullptr ? std::string_view() : std::string_view(data, length);
}

PreferenceValue listValue(plist_t node) {
    StringList list;
    for (std::uint32_t i = 0; i < plist_array_get_size(node); ++i) {
        const plist_t item = plist_array_get_item(node, i);
        if (plist_get_node_type(item) != PLIST_STRING) return ForeignPreference{};
        list.emplace_back(textOf(item));
    }
    return list;
}

PreferenceValue numberValue(plist_t node) {
    std::uint64_t number = 0;
    plist_get_uint_val(node, &number);
    return static_cast<std::int64_t>(number);
}

/// The length of the character at the start of `text`; 0 when there is none that XML may hold.
std::size_t characterLength(std::string_view text) {
    const char first = text.front();
    const bool isControl = static_cast<unsigned char>(first) < 0x20;
    if (isControl) return first == '\t' || first == '\n' || first == '\r' ? 1 : 0;
    if (text.starts_with("\uFFFE") || text.starts_with("\uFFFF")) return 0;
    return utf8Length(text);
}

std::string fitForXml(std::string_view text) {
    std::string fit;
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        fit += length == 0 ? std::string_view("\xEF\xBF\xBD") : text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return fit;
}

struct NodeMaker {
    plist_t operator()(bool flag) const { return plist_new_bool(flag ? 1 : 0); }
    plist_t operator()(std::int64_t number) const {
        return plist_new_uint(static_cast<std::uint64_t>(number));
    }
    plist_t operator()(double number) const { return plist_new_real(number); }
    plist_t operator()(const std::string& text) const { return plist_new_string(text.c_str()); }
    plist_t operator()(const StringList& list) const {
        const plist_t array = plist_new_array();
        for (const std::string& text : list) plist_array_append_item(array, (*this)(text));
        return array;
    }
    plist_t operator()(const PreferenceData& data) const {
        return plist_new_data(reinterpret_cast<const char*>(data.data()), data.size());
    }
    plist_t operator()(const ForeignPreference&) const { return plist_new_dict(); }
};

Json arrayJson(plist_t node) {
    JsonArray array;
    for (std::uint32_t i = 0; i < plist_array_get_size(node); ++i) {
        array.push_back(nodeJson(plist_array_get_item(node, i)));
    }
    return Json(std::move(array));
}

Json dictionaryJson(plist_t node) {
    JsonObject object;
    forEachItem(node, [&object](std::string key, plist_t item) {
        object.emplace_back(std::move(key), nodeJson(item));
    });
    return Json(std::move(object));
}

}  // namespace

void FreeNode::operator()(void* node) const { plist_free(node); }

Result<PlistNode> parsePlist(std::string_view bytes) {
    if (bytes.size() > kMaxPlistSize) return Failure{"larger than a property list may be"};
    if (plist_is_binary(bytes.data(), static_cast<std::uint32_t>(bytes.size())) != 0) {
        if (const Result<> checked = checkBinaryPropertyList(bytes); !checked)
            return Failure{checked.error()};
    } else {
        if (const Result<XmlOutline> outline = outlineXml(bytes); !outline)
            return Failure{outline.error()};
        if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    }
    plist_t node = nullptr;
    plist_from_memory(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &node);
    if (node == nullptr) return Failure{"not a property list"};
    return PlistNode(node);
}

PreferenceValue nodeValue(void* node) {
    switch (plist_get_node_type(node)) {
        case PLIST_BOOLEAN: {
            std::uint8_t flag = 0;
            plist_get_bool_val(node, &flag);
            return flag != 0;
        }
        case PLIST_UINT: return numberValue(node);
        case PLIST_REAL: {
            double number = 0;
            plist_get_real_val(node, &number);
            return number;
        }
        case PLIST_STRING: return std::string(textOf(node));
        case PLIST_ARRAY: return listValue(node);
        case PLIST_DATA: {
            const std::string_view data = dataOf(node);
            const auto* begin = reinterpret_cast<const std::byte*>(data.data());
            return PreferenceData(begin, begin + data.size());
        }
        default: return ForeignPreference{};
    }
}

PreferenceValue storable(PreferenceValue value) {
    if (auto* text = std::get_if<std::string>(&value)) {
        *text = fitForXml(*text);
    } else if (auto* list = std::get_if<StringList>(&value)) {
        for (std::string& item : *list) item = fitForXml(item);
    }
    return value;
}

PlistNode valueNode(const PreferenceValue& value) {
    return PlistNode(std::visit(NodeMaker(), value));
}

Json nodeJson(void* node) {
    switch (plist_get_node_type(node)) {
        case PLIST_ARRAY: return arrayJson(node);
        case PLIST_DICT: return dictionaryJson(node);
        case PLIST_DATA: return Json(base64Encode(std::as_bytes(std::span(dataOf(node)))));
        case PLIST_DATE: {
            std::int32_t seconds = 0;
            std::int32_t microseconds = 0;
            plist_get_date_val(node, &seconds, &microseconds);
            return Json(static_cast<std::int64_t>(seconds));
        }
        case PLIST_UID: {
            std::uint64_t uid = 0;
            plist_get_uid_val(node, &uid);
            return Json(static_cast<std::int64_t>(uid));
        }
        default: break;
    }
    const PreferenceValue value = nodeValue(node);
    if (const bool* flag = std::get_if<bool>(&value)) return Json(*flag);
    if (const auto* integer = std::get_if<std::int64_t>(&value)) return Json(*integer);
    if (const auto* real = std::get_if<double>(&value)) return Json(*real);
    if (const auto* text = std::get_if<std::string>(&value)) return Json(*text);
    return {};
}

void forEachItem(void* dictionary, const std::function<void(std::string, void*)>& visit) {
    using Freed = std::unique_ptr<void, decltype(&std::free)>;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(dictionary, &iterator);
    const Freed ownedIterator(iterator, &std::free);
    while (true) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(dictionary, iterator, &key, &item);
        const Freed ownedKey(key, &std::free);
        if (item == nullptr) return;
        visit(key == nullptr ? std::string() : std::string(key), item);
    }
}

std::string nodeXml(void* node) {
    char* text = nullptr;
    std::uint32_t length = 0;
    plist_to_xml(node, &text, &length);
    std::string xml = text == nullptr ? std::string() : std::string(text, length);
    plist_to_xml_free(text);
    return xml;
}

}  // namespace orvel::plist
