#include "app/replay/replay_runner.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

// One test per pair of files: NAME.steps.jsonl is what happens, NAME.effects.jsonl what the system
// does. A replay that is meant to fail has NAME.stderr.txt too: its error line and exit status.
// With ORVEL_ACCEPT set the expected files are rewritten instead (`make accept`).

namespace orvel {
namespace {

namespace fs = std::filesystem;

const fs::path kFolder = "tests/replay";
constexpr std::string_view kStepsEnding = ".steps.jsonl";

std::string contentsOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void accept(const fs::path& path, const std::string& contents) {
    if (contents.empty() && path.string().ends_with(".stderr.txt")) {
        fs::remove(path);
    } else if (!fs::exists(path) || contentsOf(path) != contents) {
        std::ofstream(path, std::ios::binary) << contents;
    }
}

/// Rule and case: `finder_keys/return_opens`.
std::vector<std::string> cases() {
    std::vector<std::string> found;
    if (!fs::exists(kFolder)) return found;
    for (const auto& entry : fs::recursive_directory_iterator(kFolder)) {
        std::string name = fs::relative(entry.path(), kFolder).string();
        if (!name.ends_with(kStepsEnding)) continue;
        name.resize(name.size() - kStepsEnding.size());
        found.push_back(std::move(name));
    }
    std::sort(found.begin(), found.end());
    return found;
}

/// What one replay gave, in the form in which it is kept.
struct Transcript {
    std::string effects;
    std::string failure;  ///< empty when every step ran
};

Transcript replayed(const std::string& name) {
    const fs::path steps = kFolder / (name + std::string(kStepsEnding));
    std::ifstream in(steps, std::ios::binary);
    std::ostringstream out;
    std::ostringstream err;
    const int status = runReplay(steps.filename().string(), in, out, err);
    Transcript transcript{out.str(), err.str()};
    if (status != 0) transcript.failure += "exit status " + std::to_string(status) + "\n";
    return transcript;
}

class TranscriptTest : public ::testing::TestWithParam<std::string> {};

TEST_P(TranscriptTest, ReplaysAsExpected) {
    const fs::path effects = kFolder / (GetParam() + ".effects.jsonl");
    const fs::path failure = kFolder / (GetParam() + ".stderr.txt");
    const Transcript transcript = replayed(GetParam());
    if (std::getenv("ORVEL_ACCEPT") != nullptr) {
        accept(effects, transcript.effects);
        accept(failure, transcript.failure);
    }
    EXPECT_TRUE(fs::exists(effects)) << "no expectation yet: make accept";
    EXPECT_EQ(transcript.effects, contentsOf(effects));
    EXPECT_EQ(transcript.failure, contentsOf(failure));
}

TEST_P(TranscriptTest, ReplaysTwiceToTheSameBytes) {
    const Transcript first = replayed(GetParam());
    const Transcript second = replayed(GetParam());
    EXPECT_EQ(first.effects, second.effects);
    EXPECT_EQ(first.failure, second.failure);
}

std::string testName(const ::testing::TestParamInfo<std::string>& tested) {
    std::string name = tested.param;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(All, TranscriptTest, ::testing::ValuesIn(cases()), testName);

TEST(TranscriptFilesTest, EveryExpectationHasItsSteps) {
    for (const auto& entry : fs::recursive_directory_iterator(kFolder)) {
        std::string path = entry.path().string();
        for (const std::string_view ending : {".effects.jsonl", ".stderr.txt"}) {
            if (!path.ends_with(ending)) continue;
            path.resize(path.size() - ending.size());
            EXPECT_TRUE(fs::exists(path + std::string(kStepsEnding))) << entry.path();
        }
    }
}

}  // namespace
}  // namespace orvel
