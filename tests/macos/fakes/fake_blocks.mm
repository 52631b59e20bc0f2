// The runtime of the fakes knows blocks as plain memory: make them objects that can be kept.
#include "fake_support.hpp"

#include <Block.h>

#include <cstring>

extern "C" {
extern void* _NSConcreteStackBlock[32];
extern void* _NSConcreteMallocBlock[32];
extern void* _NSConcreteGlobalBlock[32];
}

@interface FakeBlock : NSObject
@end

@implementation FakeBlock
- (id)copyWithZone:(NSZone*)zone {
    return (id)_Block_copy((const void*)self);
}
- (id)copy {
    return (id)_Block_copy((const void*)self);
}
- (id)retain {
    return (id)_Block_copy((const void*)self);
}
- (oneway void)release {
    _Block_release((const void*)self);
}
- (id)autorelease {
    return self;
}
- (Class)class {
    return [FakeBlock class];
}
@end

namespace fake {

void installBlocks() {
    static bool isInstalled = false;
    if (isInstalled) return;
    isInstalled = true;
    // The first message makes the runtime fill the dispatch table that is copied below.
    struct {
        void* isa;
        void* padding[8];
    } probe = {};
    probe.isa = (void*)[FakeBlock class];
    [(id)&probe class];
    constexpr std::size_t kClassSize = 17 * sizeof(void*);
    for (void** kind : {_NSConcreteStackBlock, _NSConcreteMallocBlock, _NSConcreteGlobalBlock}) {
        std::memcpy(kind, (void*)[FakeBlock class], kClassSize);
    }
}

}  // namespace fake
