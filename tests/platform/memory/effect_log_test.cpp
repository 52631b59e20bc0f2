#include "platform/memory/effect_log.hpp"

#include <gtest/gtest.h>

namespace orvel::memory {
namespace {

TEST(EffectLogTest, WritesOneLinePerEffectWithItsStamps) {
    EffectLog effects;
    effects.setStep(7);
    effects.setTime(std::chrono::milliseconds(1250));
    effects.effect("log")->value("你好 \"x\"");
    effects.effect("terminateApp")->beginObject().member("pid", 42).endObject();
    EXPECT_EQ(effects.text(),
              "{\"step\":7,\"t\":1.25,\"log\":\"你好 \\\"x\\\"\"}\n"
              "{\"step\":7,\"t\":1.25,\"terminateApp\":{\"pid\":42}}\n");
}

TEST(EffectLogTest, RoundsTheTimeToMilliseconds) {
    EffectLog effects;
    effects.setTime(std::chrono::microseconds(1499));
    effects.effect("haptic")->value(true);
    effects.setTime(std::chrono::microseconds(1500));
    effects.effect("haptic")->value(true);
    EXPECT_EQ(effects.text(),
              "{\"step\":0,\"t\":0.001,\"haptic\":true}\n"
              "{\"step\":0,\"t\":0.002,\"haptic\":true}\n");
}

TEST(EffectLogTest, TagsBackgroundWorkAtTheEndOfItsLine) {
    EffectLog effects;
    effects.setInBackground(true);
    effects.effect("decision")->value("modify").member("key", 36);
    EXPECT_EQ(effects.text(),
              "{\"step\":0,\"t\":0,\"decision\":\"modify\",\"key\":36,\"queue\":\"background\"}\n");
}

TEST(EffectLogTest, KeepsNothingOnceMuted) {
    EffectLog effects;
    effects.mute();
    effects.effect("haptic")->value(true);
    EXPECT_EQ(effects.text(), "");
}

}  // namespace
}  // namespace orvel::memory
