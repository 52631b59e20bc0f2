#include "platform/plist/xml_outline.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

namespace orvel::plist {

namespace {

constexpr std::size_t kMaxDepth = 128;
constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::array<std::string_view, 11> kElements{
    "plist", "dict", "array", "key", "string", "integer", "real", "true", "false", "date", "data"};

bool isContainer(std::string_view name) {
    return name == "dict" || name == "array" || name == "plist";
}

void appendUtf8(std::string& out, std::uint32_t point) {
    if (point < 0x80) {
        out += static_cast<char>(point);
    } else if (point < 0x800) {
        out += static_cast<char>(0xC0 | point >> 6);
        out += static_cast<char>(0x80 | (point & 0x3F));
    } else if (point < 0x10000) {
        out += static_cast<char>(0xE0 | point >> 12);
        out += static_cast<char>(0x80 | (point >> 6 & 0x3F));
        out += static_cast<char>(0x80 | (point & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | point >> 18);
        out += static_cast<char>(0x80 | (point >> 12 & 0x3F));
        out += static_cast<char>(0x80 | (point >> 6 & 0x3F));
        out += static_cast<char>(0x80 | (point & 0x3F));
    }
}

/// Appends what `name` (of `&name;`) stands for; false when it stands for nothing.
bool appendEntity(std::string& out, std::string_view name) {
    constexpr std::array<std::pair<std::string_view, char>, 5> named{
        {{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}}};
    for (const auto& [known, character] : named) {
        if (name == known) {
            out += character;
            return true;
        }
    }
    if (!name.starts_with('#')) return false;
    name.remove_prefix(1);
    const bool isHex = name.starts_with('x') || name.starts_with('X');
    if (isHex) name.remove_prefix(1);
    std::uint32_t point = 0;
    const auto [end, error] =
        std::from_chars(name.data(), name.data() + name.size(), point, isHex ? 16 : 10);
    const bool isCharacter = point > 0 && point < 0x110000 && (point < 0xD800 || point > 0xDFFF);
    if (error != std::errc() || end != name.data() + name.size() || !isCharacter) return false;
    appendUtf8(out, point);
    return true;
}

class Outliner {
public:
    explicit Outliner(std::string_view text) : text_(text) {}

    Result<XmlOutline> run() {
        if (text_.find('\0') != std::string_view::npos) return Failure{"a zero byte in it"};
        if (text_.starts_with("\xEF\xBB\xBF")) at_ = 3;
        while (problem_.empty() && at_ < text_.size()) {
            if (text_[at_] == '<') {
                readMarkup();
            } else {
                readText();
            }
        }
        if (problem_.empty() && !open_.empty()) fail("<" + open_.back().name + "> is not closed");
        if (problem_.empty() && !sawPlist_) fail("no <plist> in it");
        if (problem_.empty() && !sawRoot_) fail("no value in it");
        if (!problem_.empty()) return Failure{problem_ + " at byte " + std::to_string(problemAt_)};
        return std::move(outline_);
    }

private:
    struct Frame {
        std::string name;
        bool expectsValue = false;  ///< of a dictionary: a key was read and its value was not
    };

    void fail(std::string problem) {
        problem_ = std::move(problem);
        problemAt_ = at_;
    }

    /// Goes behind the next `end`; the construct is named in the message when there is none.
    bool skipPast(std::string_view end, std::string_view construct) {
        const std::size_t found = text_.find(end, at_);
        if (found == std::string_view::npos) {
            fail(std::string(construct) + " is not closed");
            return false;
        }
        at_ = found + end.size();
        return true;
    }

    void readMarkup() {
        const std::string_view rest = text_.substr(at_);
        if (rest.starts_with("<!--")) {
            at_ += 4;
            skipPast("-->", "a comment");
        } else if (rest.starts_with("<![CDATA[")) {
            readCharacterData();
        } else if (rest.starts_with("<?")) {
            skipPast("?>", "a processing instruction");
        } else if (rest.starts_with("<!DOCTYPE")) {
            readDocumentType();
        } else if (rest.starts_with("</")) {
            readEndTag();
        } else {
            readStartTag();
        }
    }

    void readDocumentType() {
        if (sawPlist_) return fail("a DOCTYPE behind <plist>");
        const std::size_t end = text_.find_first_of("[>", at_);
        if (end != std::string_view::npos && text_[end] == '[')
            return fail("a DOCTYPE with definitions");
        skipPast(">", "the DOCTYPE");
    }

    void readCharacterData() {
        if (open_.empty() || isContainer(open_.back().name)) return fail("text between elements");
        const std::size_t begin = at_ + 9;
        if (skipPast("]]>", "a CDATA section") && open_.back().name == "key") {
            key_ += text_.substr(begin, at_ - 3 - begin);
        }
    }

    void readText() {
        const std::size_t end = std::min(text_.find('<', at_), text_.size());
        const std::string_view run = text_.substr(at_, end - at_);
        if (open_.empty() || isContainer(open_.back().name)) {
            if (run.find_first_not_of(kBlanks) != std::string_view::npos)
                return fail("text between elements");
        } else if (!readEntities(run)) {
            return fail("an entity that is not known");
        }
        at_ = end;
    }

    /// Checks the entities of a text; the text of a key is kept.
    bool readEntities(std::string_view run) {
        std::string plain;
        while (true) {
            const std::size_t ampersand = std::min(run.find('&'), run.size());
            plain += run.substr(0, ampersand);
            if (ampersand == run.size()) break;
            run.remove_prefix(ampersand + 1);
            const std::size_t end = run.find(';');
            if (end == std::string_view::npos || !appendEntity(plain, run.substr(0, end)))
                return false;
            run.remove_prefix(end + 1);
        }
        if (open_.back().name == "key") key_ += plain;
        return true;
    }

    /// The end of the tag that begins at `at_`: where its `>` stands, quotes respected.
    std::size_t tagEnd() const {
        char quote = 0;
        for (std::size_t i = at_; i < text_.size(); ++i) {
            const char c = text_[i];
            if (quote != 0) {
                if (c == quote) quote = 0;
            } else if (c == '"' || c == '\'') {
                quote = c;
            } else if (c == '>') {
                return i;
            }
        }
        return std::string_view::npos;
    }

    void readStartTag() {
        const std::size_t begin = at_;
        const std::size_t end = tagEnd();
        if (end == std::string_view::npos) return fail("a tag is not closed");
        std::string_view inside = text_.substr(begin + 1, end - begin - 1);
        const bool isEmpty = inside.ends_with('/');
        if (isEmpty) inside.remove_suffix(1);
        const std::string name(
            inside.substr(0, std::min(inside.find_first_of(kBlanks), inside.size())));
        if (std::find(kElements.begin(), kElements.end(), name) == kElements.end()) {
            return fail("<" + name + "> is no element of a property list");
        }
        if (!acceptElement(name, begin)) return;
        if (open_.size() >= kMaxDepth) return fail("nested too deeply");
        at_ = end + 1;
        open_.push_back({name});
        if (name == "key") key_.clear();
        if (isEmpty) closeElement(begin, true);
    }

    /// Whether `name` may stand here; a parent dictionary takes turns between keys and values.
    bool acceptElement(const std::string& name, std::size_t begin) {
        if (open_.empty()) {
            if (name != "plist" || sawPlist_) fail("<" + name + "> outside of <plist>");
            sawPlist_ = true;
            return problem_.empty();
        }
        Frame& parent = open_.back();
        if (!isContainer(parent.name)) {
            fail("<" + name + "> inside <" + parent.name + ">");
        } else if (name == "plist") {
            fail("a second <plist>");
        } else if (parent.name == "plist") {
            if (sawRoot_) fail("a second value beside the first");
            sawRoot_ = true;
            outline_.rootIsDictionary = name == "dict";
            outline_.root.begin = begin;
        } else if (parent.name == "dict" && (name == "key") == parent.expectsValue) {
            fail(parent.expectsValue ? "a key without a value" : "a value without a key");
        } else if (parent.name != "dict" && name == "key") {
            fail("a key outside of a dictionary");
        }
        if (problem_.empty() && open_.size() == 2 && outline_.rootIsDictionary)
            noteEntry(name, begin);
        return problem_.empty();
    }

    void noteEntry(const std::string& name, std::size_t begin) {
        if (name == "key") {
            outline_.entries.push_back({{}, {begin, begin}, {}});
        } else {
            outline_.entries.back().value.begin = begin;
        }
    }

    void readEndTag() {
        const std::size_t begin = at_;
        const std::size_t end = tagEnd();
        if (end == std::string_view::npos) return fail("a tag is not closed");
        std::string_view name = text_.substr(begin + 2, end - begin - 2);
        name = name.substr(0, std::min(name.find_first_of(kBlanks), name.size()));
        if (open_.empty() || open_.back().name != name)
            return fail("</" + std::string(name) + "> closes nothing");
        at_ = end + 1;
        closeElement(begin, false);
    }

    void closeElement(std::size_t tagBegin, bool isEmpty) {
        const Frame closed = std::move(open_.back());
        if (closed.expectsValue) return fail("a key without a value");
        open_.pop_back();
        if (open_.empty()) return;
        if (open_.back().name == "dict") open_.back().expectsValue = closed.name == "key";
        if (open_.size() == 1) {
            outline_.root.end = at_;
            outline_.rootEnd = tagBegin;
            outline_.rootIsEmptyTag = isEmpty;
        } else if (open_.size() == 2 && outline_.rootIsDictionary) {
            OutlineEntry& entry = outline_.entries.back();
            if (closed.name == "key") {
                entry.key = key_;
                entry.keyElement.end = at_;
            } else {
                entry.value.end = at_;
            }
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::vector<Frame> open_;
    std::string key_;
    bool sawPlist_ = false;
    bool sawRoot_ = false;
    XmlOutline outline_;
    std::string problem_;
    std::size_t problemAt_ = 0;
};

}  // namespace

Result<XmlOutline> outlineXml(std::string_view text) { return Outliner(text).run(); }

}  // namespace orvel::plist
