#include "platform/memory/memory_input_sources.hpp"

namespace orvel::memory {

std::optional<InputSource> MemoryInputSources::current() const {
    if (!world_.currentInputSource) return std::nullopt;
    if (const WorldInputSource* found = find(*world_.currentInputSource)) return found->source;
    return InputSource{*world_.currentInputSource, false, std::nullopt};
}

std::vector<InputSource> MemoryInputSources::selectable() const {
    std::vector<InputSource> sources;
    for (const WorldInputSource& candidate : world_.inputSources) {
        if (candidate.isSelectable) sources.push_back(candidate.source);
    }
    return sources;
}

void MemoryInputSources::select(std::string_view id) {
    effects_.effect("inputSource")->value(id);
    if (find(id) != nullptr) world_.currentInputSource = std::string(id);
}

const WorldInputSource* MemoryInputSources::find(std::string_view id) const {
    for (const WorldInputSource& candidate : world_.inputSources) {
        if (candidate.source.id == id) return &candidate;
    }
    return nullptr;
}

}  // namespace orvel::memory
