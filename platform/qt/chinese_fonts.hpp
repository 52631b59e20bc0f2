#pragma once

namespace orvel::qt {

/// From now on Chinese is written in the forms of Simplified Chinese. In a session of another
/// language the first font with the character would be taken, and those of Japan draw many of them
/// in their own way. Needs a QGuiApplication; comes before the first text.
void preferSimplifiedChinese();

}  // namespace orvel::qt
