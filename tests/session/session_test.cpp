#include "tests/session/session_test.hpp"

#include "tests/support/poll_until.hpp"

namespace orvel::test {

void SessionTest::TearDown() {
    using testing::IsEmpty;
    EXPECT_TRUE(eventually([] { return state().keysDown(); }, IsEmpty()));
    EXPECT_TRUE(eventually([] { return state().buttonsDown(); }, IsEmpty()));
    EXPECT_FALSE(state().capsLock());
}

}  // namespace orvel::test
