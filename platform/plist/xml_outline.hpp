#pragma once

#include "platform/base/result.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::plist {

/// A stretch of bytes of the text.
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// One key of the root dictionary and where it stands.
struct OutlineEntry {
    std::string key;
    Span keyElement;
    Span value;
};

/// Where things stand in an XML property list, so that one value can be replaced and every other
/// byte (comments, order, values of foreign types) stays as somebody wrote it.
struct XmlOutline {
    bool rootIsDictionary = false;
    Span root;  ///< the root element with its tags
    std::size_t rootEnd =
        0;  ///< where the root's end tag begins; `root.begin` when it is empty: `<dict/>`
    bool rootIsEmptyTag = false;
    std::vector<OutlineEntry> entries;
};

/// Checks the structure that a lenient reader would pass over: one root, every element closed,
/// keys and values in turn, nothing behind the end, no nesting that exhausts a stack.
Result<XmlOutline> outlineXml(std::string_view text);

}  // namespace orvel::plist
