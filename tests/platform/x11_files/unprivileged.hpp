#pragma once

#include "tests/support/scratch_home.hpp"

#include <filesystem>
#include <unistd.h>

namespace orvel::test {

/// Acts as a user without rights, who owns the folder, also where the tests run as root.
class Unprivileged {
public:
    explicit Unprivileged(const ScratchFolder& folder) {
        if (geteuid() != 0) return;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path())) {
            static_cast<void>(!lchown(entry.path().c_str(), kNobody, kNobody));
        }
        static_cast<void>(!chown(folder.path().c_str(), kNobody, kNobody));
        changed_ = seteuid(kNobody) == 0;
    }
    ~Unprivileged() {
        if (changed_) static_cast<void>(!seteuid(0));
    }

private:
    static constexpr uid_t kNobody = 65534;
    bool changed_ = false;
};

}  // namespace orvel::test
