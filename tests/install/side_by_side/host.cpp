// An application that uses the embedded library and loads plug-ins that use others: host PLUG_IN... Each
// works as it does alone, before and after the others.
#define main consume
#include "../consumer.cpp"
#undef main

#include <dlfcn.h>

int main(int argumentCount, char** arguments) {
    for (int index = 1; index < argumentCount; ++index) {
        consume(0, nullptr);
        void* const plugIn = dlopen(arguments[index], RTLD_NOW | RTLD_LOCAL);
        if (!plugIn) {
            std::cerr << dlerror() << '\n';
            return 1;
        }
        reinterpret_cast<int (*)()>(dlsym(plugIn, "runPlugIn"))();
    }
    return consume(0, nullptr);
}
