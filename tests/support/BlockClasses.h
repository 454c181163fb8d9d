// The classes of the blocks that a compiler makes, for a program without the runtime of blocks, which defines
// them; a block that is not copied needs no more of it.
#pragma once

extern "C" {
__attribute__((weak)) void* _NSConcreteStackBlock[32];
__attribute__((weak)) void* _NSConcreteGlobalBlock[32];
}
