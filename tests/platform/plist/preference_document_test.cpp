#include "platform/plist/preference_document.hpp"

#include "platform/preference_list.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace orvel::plist {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

std::string plistOf(std::string_view content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n" +
           std::string(content) + "\n</plist>\n";
}

PreferenceDocument documentOf(const std::string& bytes) {
    Result<PreferenceDocument> document = PreferenceDocument::parse(bytes);
    EXPECT_TRUE(document) << document.error();
    return document ? std::move(document).value() : PreferenceDocument();
}

PreferenceDocument changed(const PreferenceDocument& before, const PreferenceChanges& changes) {
    Result<PreferenceDocument> after = before.with(changes);
    EXPECT_TRUE(after) << after.error();
    return after ? std::move(after).value() : PreferenceDocument();
}

std::string problemOf(const std::string& bytes) {
    const Result<PreferenceDocument> document = PreferenceDocument::parse(bytes);
    return document ? "" : document.error();
}

PreferenceData bytesOf(std::string_view text) {
    const auto* begin = reinterpret_cast<const std::byte*>(text.data());
    return {begin, begin + text.size()};
}

TEST(PreferenceDocument, ReadsEachTypeOfADefaultsDomain) {
    const PreferenceDocument document = documentOf(plistOf(
        "<dict><key>flag</key><true/><key>off</key><false/><key>number</key><integer>-150</integer>"
        "<key>real</key><real>1.5</real><key>text</key><string>a &lt;&#x4e2d;&gt;</string>"
        "<key>list</key><array><string>x</string><string></string></array><key>none</key><array/>"
        "<key>data</key><data>AAEC/w==</data><key>date</key><date>2024-01-02T03:04:05Z</date>"
        "<key>mixed</key><array><string>x</string><integer>1</integer></array><key>dict</key><dict/"
        "></dict>"));
    EXPECT_EQ(document.values(),
              (PreferenceValues{{"flag", true},
                                {"off", false},
                                {"number", std::int64_t{-150}},
                                {"real", 1.5},
                                {"text", std::string("a <中>")},
                                {"list", StringList{"x", ""}},
                                {"none", StringList{}},
                                {"data", bytesOf(std::string_view("\0\1\2\xff", 4))},
                                {"date", ForeignPreference{}},
                                {"mixed", ForeignPreference{}},
                                {"dict", ForeignPreference{}}}));
}

TEST(PreferenceDocument, WritesWhatItReads) {
    const PreferenceValues values{{"flag", true},
                                  {"number", std::int64_t{-1}},
                                  {"text", std::string(" <&>\"' 原按键 ")},
                                  {"list", StringList{"com.apple.finder", "a\nb"}},
                                  {"data", bytesOf(std::string(10'000, '\x7f'))}};
    PreferenceChanges changes(values.begin(), values.end());
    const PreferenceDocument written = changed({}, changes);
    EXPECT_EQ(documentOf(written.bytes()).values(), values);
}

TEST(PreferenceDocument, ChangesOneValueAndNoOtherByte) {
    const std::string before = plistOf(
        "<!-- my keys -->\n<dict>\n  <!-- swap -->\n  <key>map_ctrl</key>   "
        "<string>Cmd</string><!-- so -->\n"
        "  <key>theirs</key><real>0.1</real>\n  "
        "<key>when</key><date>2024-01-02T03:04:05Z</date>\n</dict>");
    std::string after = before;
    after.replace(after.find("Cmd"), 3, "Win");
    EXPECT_EQ(changed(documentOf(before), {{"map_ctrl", "Win"}}).bytes(), after);
}

TEST(PreferenceDocument, AddsAKeyAtTheEndAndTakesItAwayAgain) {
    const std::string before = plistOf("<dict>\n\t<key>a</key>\n\t<true/>\n</dict>");
    const PreferenceDocument added = changed(documentOf(before), {{"b", false}});
    EXPECT_EQ(added.bytes(),
              plistOf("<dict>\n\t<key>a</key>\n\t<true/>\n\t<key>b</key>\n\t<false/>\n</dict>"));
    EXPECT_EQ(changed(added, {{"b", std::nullopt}}).bytes(), before);
}

TEST(PreferenceDocument, AddsToDictionariesOnOneLineAndToEmptyOnes) {
    for (const char* root :
         {"<dict/>", "<dict></dict>", "<dict>\n</dict>", "<dict><!-- none --></dict>",
          "<dict><key>a</key><true/></dict>", "<dict ><key>a</key><true/>\n\n  </dict >"}) {
        const PreferenceDocument after = changed(documentOf(plistOf(root)), {{"b", "text"}});
        EXPECT_EQ(after.values().at("b"), PreferenceValue("text")) << root;
    }
}

TEST(PreferenceDocument, UnchangedValuesLeaveTheBytesAlone) {
    const std::string before = plistOf("<dict><key>a</key><true></true></dict>");
    EXPECT_EQ(changed(documentOf(before), {{"a", true}, {"absent", std::nullopt}}).bytes(), before);
}

TEST(PreferenceDocument, TheLastOfTwoEqualKeysCounts) {
    const PreferenceDocument before = documentOf(
        plistOf("<dict><key>a</key><true/><key>b</key><true/><key>a</key><false/></dict>"));
    EXPECT_EQ(before.values().at("a"), PreferenceValue(false));
    EXPECT_EQ(changed(before, {{"a", "x"}}).values().at("a"), PreferenceValue("x"));
    EXPECT_FALSE(changed(before, {{"a", std::nullopt}}).values().contains("a"));
}

TEST(PreferenceDocument, KeysAreComparedAsTheyRead) {
    const PreferenceDocument before = documentOf(
        plistOf("<dict><key>a&amp;b</key><true/><key><![CDATA[c<d]]></key><true/></dict>"));
    const PreferenceDocument after = changed(before, {{"a&b", false}, {"c<d", false}});
    EXPECT_EQ(after.values(), (PreferenceValues{{"a&b", false}, {"c<d", false}}));
}

TEST(PreferenceDocument, TextThatXmlCannotHoldIsReplaced) {
    const PreferenceDocument after = changed({}, {{"text", std::string("a\x01"
                                                                       "b\xff"
                                                                       "c\xed\xa0\x80"
                                                                       "d\uffff")}});
    EXPECT_EQ(after.values().at("text"), PreferenceValue("a\uFFFD"
                                                         "b\uFFFD"
                                                         "c\uFFFD\uFFFD\uFFFD"
                                                         "d\uFFFD\uFFFD\uFFFD"));
}

TEST(PreferenceDocument, ABinaryListIsReadAndBecomesXmlWhenItChanges) {
    constexpr std::string_view bytes(
        "bplist00\xd1\x01\x02"
        "Qa\x09"
        "\x08\x0b\x0d\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x03\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x0e",
        8 + 3 + 2 + 1 + 3 + 32);
    const PreferenceDocument before = documentOf(std::string(bytes));
    EXPECT_EQ(before.values(), (PreferenceValues{{"a", true}}));
    const PreferenceDocument after = changed(before, {{"b", "x"}});
    EXPECT_THAT(after.bytes(), HasSubstr("<plist"));
    EXPECT_EQ(after.values(), (PreferenceValues{{"a", true}, {"b", "x"}}));
}

TEST(PreferenceDocument, ReadsAByteOrderMarkAndBlanks) {
    EXPECT_TRUE(PreferenceDocument::parse("\xef\xbb\xbf" + plistOf("<dict/>")));
    EXPECT_TRUE(PreferenceDocument::parse("\r\n " + plistOf("<dict/>") + "\n\n"));
}

class DamagedDocument : public ::testing::TestWithParam<const char*> {};

TEST_P(DamagedDocument, IsRefusedWithAReason) {
    EXPECT_THAT(problemOf(GetParam()), Not(IsEmpty()));
}

INSTANTIATE_TEST_SUITE_P(
    Forms, DamagedDocument,
    ::testing::Values("", "hello", "{ a = 1; }", "{\"a\": 1}", "<plist>", "<plist></plist>",
                      "<dict></dict>", "<plist><dict></plist>", "<plist><dict></dict>",
                      "<plist><dict><key>a</key></dict></plist>",
                      "<plist><dict><true/></dict></plist>",
                      "<plist><dict><key>a</key><key>b</key><true/></dict></plist>",
                      "<plist><dict/><dict/></plist>", "<plist><dict/></plist>more",
                      "<plist><dict/></plist><plist><dict/></plist>",
                      "<plist><dict>text</dict></plist>",
                      "<plist><dict><key>a</key><string>b</dict></plist>",
                      "<plist><dict><key>a</key><string>&none;</string></dict></plist>",
                      "<plist><dict><key>a</key><foo/></dict></plist>", "<plist><array/></plist>",
                      "<plist><string>a</string></plist>", "<plist><dict><!-- </dict></plist>",
                      "<plist><dict><key>a</key><string><true/></string></dict></plist>",
                      "bplist00", "bplist00aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"));

TEST(PreferenceDocument, EveryPrefixOfAFileIsRefused) {
    const std::string whole = plistOf("<dict><key>a</key><array><string>x</string></array></dict>");
    const std::size_t complete = whole.find("</plist>") + 8;
    for (std::size_t length = 0; length < complete; ++length) {
        EXPECT_THAT(problemOf(whole.substr(0, length)), Not(IsEmpty())) << length;
    }
}

TEST(PreferenceDocument, DeepNestingIsRefusedInsteadOfExhaustingTheStack) {
    std::string deep;
    for (int i = 0; i < 200'000; ++i) deep += "<array>";
    EXPECT_THAT(problemOf("<plist>" + deep), HasSubstr("nested too deeply"));
}

/// A binary list of `count` objects, each an array of `width` references to the next.
std::string chainedArrays(std::uint32_t count, std::uint32_t width) {
    const auto number = [](std::uint64_t value, int size) {
        std::string text;
        for (int shift = 8 * (size - 1); shift >= 0; shift -= 8)
            text += static_cast<char>(value >> shift & 0xFF);
        return text;
    };
    std::string bytes = "bplist00";
    std::string table;
    for (std::uint32_t i = 0; i < count; ++i) {
        table += number(bytes.size(), 4);
        bytes += static_cast<char>(0xA0 | width);
        for (std::uint32_t j = 0; j < width; ++j) bytes += number(i + 1, 4);
    }
    table += number(bytes.size(), 4);
    bytes += '\x09';
    const std::size_t tableOffset = bytes.size();
    return bytes + table + std::string(6, '\0') + "\x04\x04" + number(count + 1, 8) + number(0, 8) +
           number(tableOffset, 8);
}

TEST(PreferenceDocument, BinaryListsThatUnfoldWithoutEndAreRefused) {
    EXPECT_THAT(problemOf(chainedArrays(200'000, 1)), HasSubstr("nested too deeply"));
    EXPECT_THAT(problemOf(chainedArrays(30, 10)), HasSubstr("unfolds without end"));
    EXPECT_THAT(problemOf(chainedArrays(3, 2)), HasSubstr("no dictionary"));
}

/// A binary list of a dictionary with one key and `true` as its value.
std::string binaryWithKey(std::string_view keyObject) {
    std::string bytes = "bplist00";
    bytes += "\xd1\x01\x02";
    const char keyOffset = static_cast<char>(bytes.size());
    bytes += keyObject;
    const char valueOffset = static_cast<char>(bytes.size());
    bytes += "\x09";
    const char tableOffset = static_cast<char>(bytes.size());
    return bytes + "\x08" + keyOffset + valueOffset + std::string(6, '\0') + "\x01\x01" +
           std::string(7, '\0') + "\x03" + std::string(15, '\0') + tableOffset;
}

TEST(PreferenceDocument, BinaryKeysThatAreNoTextsAreRefused) {
    EXPECT_EQ(problemOf(binaryWithKey("Qa")), "");
    EXPECT_THAT(problemOf(binaryWithKey("\x09")), HasSubstr("key that is no text"));
    EXPECT_THAT(problemOf(binaryWithKey("\x10\x05")), HasSubstr("key that is no text"));
    EXPECT_THAT(problemOf(binaryWithKey(std::string_view("Ra\0", 3))),
                HasSubstr("key that is no text"));
}

TEST(PreferenceDocument, AZeroByteIsRefused) {
    std::string bytes = plistOf("<dict><key>a</key><string>b</string></dict>");
    EXPECT_EQ(problemOf(bytes), "");
    bytes[bytes.find(">b<") + 1] = '\0';
    EXPECT_THAT(problemOf(bytes), HasSubstr("zero byte"));
}

TEST(PreferenceDocument, ANumberThatIsNoneHindersNoChange) {
    const PreferenceDocument before =
        documentOf(plistOf("<dict><key>theirs</key><real>nan</real></dict>"));
    EXPECT_THAT(changed(before, {{"a", true}}).bytes(), HasSubstr("<real>nan</real>"));
}

TEST(PreferenceList, GoesOutAndComesBackInOrder) {
    const PreferenceEntries entries{{"b", true}, {"a", StringList{"x"}}, {"c", std::int64_t{7}}};
    const Result<PreferenceEntries> read = readPreferenceList(writePreferenceList(entries));
    ASSERT_TRUE(read) << read.error();
    EXPECT_EQ(read.value(), entries);
}

TEST(PreferenceList, LeavesForeignValuesOut) {
    EXPECT_THAT(writePreferenceList({{"theirs", ForeignPreference{}}}), Not(HasSubstr("theirs")));
}

}  // namespace
}  // namespace orvel::plist
