// Constants that are objects and so can only be made once the program runs. The headers call them
// constant, which they are for everybody else.
extern "C" {
const void* kCFBooleanTrue = nullptr;
const void* kCFBooleanFalse = nullptr;
void* NSApp = nullptr;
}
