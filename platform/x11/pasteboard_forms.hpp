#pragma once

#include "platform/x11/pasteboard_contents.hpp"
#include "platform/x11/selection_owner.hpp"

#include <memory>
#include <vector>

namespace orvel::x11 {

/// The forms in which others get our contents, the best first. Those of a picture that is not
/// ready yet are promised; a picture that turned out to be none has no form.
std::vector<SelectionForm> formsOf(const std::shared_ptr<const PasteboardContents>& contents);

}  // namespace orvel::x11
