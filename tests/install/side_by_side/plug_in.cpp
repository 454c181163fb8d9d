// A plug-in that uses a library of its own choice.
#define main consume
#include "../consumer.cpp"
#undef main

extern "C" __attribute__((visibility("default"))) int runPlugIn() { return consume(0, nullptr); }
