#include "platform/x11/trace_file.hpp"

#include "platform/x11/xdg_folders.hpp"

namespace orvel::x11 {

std::filesystem::path TraceFile::defaultPath() { return stateFolder() + "/orvel/trace.log"; }

}  // namespace orvel::x11
