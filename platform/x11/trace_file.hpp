#pragma once

#include "platform/base/private_log_file.hpp"

namespace orvel::x11 {

class TraceFile : public PrivateLogFile {
public:
    using PrivateLogFile::PrivateLogFile;

    /// `$XDG_STATE_HOME/orvel/trace.log`, or its place in the home folder.
    [[nodiscard]] static std::filesystem::path defaultPath();
};

}  // namespace orvel::x11
