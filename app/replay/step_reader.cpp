#include "app/replay/step_reader.hpp"

#include "app/replay/json_field.hpp"

#include <algorithm>

namespace orvel::replay {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isBlank(std::string_view line) { return line.find_first_not_of(" \t\r") == line.npos; }

std::optional<StepKey> stepKeyNamed(std::string_view name) {
    const auto found = std::find(kStepKeys.begin(), kStepKeys.end(), name);
    if (found == kStepKeys.end()) return std::nullopt;
    return static_cast<StepKey>(found - kStepKeys.begin());
}

Failure wrongKeys(const JsonObject& members) {
    const std::string_view* first = nullptr;
    for (const auto& [name, json] : members) {
        const auto key = stepKeyNamed(name);
        if (!key) return {"unknown step key " + inQuotes(name)};
        const std::string_view& keyName = kStepKeys[static_cast<std::size_t>(*key)];
        if (first != nullptr) {
            return {"two step keys: " + inQuotes(*first) + " and " + inQuotes(keyName)};
        }
        first = &keyName;
    }
    return {"no step key"};
}

}  // namespace

bool StepReader::nextLine() {
    do {
        if (in_.rdbuf()->in_avail() <= 0) beforeWaiting_();
        if (!std::getline(in_, buffer_)) return false;
        line_ = buffer_;
        ++lineNumber_;
        if (lineNumber_ == 1 && line_.starts_with(kByteOrderMark)) {
            line_.remove_prefix(kByteOrderMark.size());
        }
    } while (isBlank(line_) || line_.starts_with('#'));
    return true;
}

Result<Step> parseStep(std::string_view line) {
    Result<Json> parsed = parseJson(line);
    if (!parsed) return Failure{"not valid JSON: " + parsed.error()};
    Json json = std::move(parsed).value();
    JsonObject* members = std::get_if<JsonObject>(&json.value());
    if (members == nullptr) return Failure{"a step must be an object"};
    const auto key = members->size() == 1 ? stepKeyNamed(members->front().first) : std::nullopt;
    if (!key) return wrongKeys(*members);
    return Step{*key, std::move(members->front().second)};
}

}  // namespace orvel::replay
