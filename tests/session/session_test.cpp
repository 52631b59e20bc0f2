#include "tests/session/session_test.hpp"

#include "tests/support/poll_until.hpp"

namespace orvel::test {

void SessionTest::TearDown() {
    using testing::IsEmpty;
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
    EXPECT_TRUE(eventually([] { return state().buttonsDown(); }, IsEmpty()));
    EXPECT_TRUE(eventually([] { return state().capsLock(); }, false));
    // A test that failed shall not make the next ones fail.
    state().releaseEverything();
}

}  // namespace orvel::test
