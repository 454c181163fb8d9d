#import <TessarinFoundation/TessarinFoundation.h>

// What a compiler with blocks makes of
//
//   ^BOOL(id name, NSUInteger index, BOOL *stop) { return [name length] > length; }
struct LongerThan {
    void* isa;
    int flags;
    int reserved;
    BOOL (*invoke)(void* block, id name, NSUInteger index, BOOL* stop);
    const void* descriptor;
    NSUInteger length; // captured
};

static BOOL isLonger(void* block, id name, NSUInteger index, BOOL* stop) {
    (void)index;
    (void)stop;
    return [name length] > ((struct LongerThan*)block) -> length;
}

int main(void) {
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    NSArray* effects = [NSArray arrayWithObjects:@"Delay", @"Reverb", @"Chorus", @"EQ", nil];
    struct LongerThan longerThanFive = {NULL, 0, 0, isLonger, NULL, 5};
    NSArray* longNames =
        [effects tessarin_arrayWithObjectsPassingTest:(TSSRObjectPredicate)(void*)&longerThanFive options:0];
    printf("%s\n", [[longNames componentsJoinedByString:@" "] UTF8String]); // Reverb Chorus
    [pool drain];
    return 0;
}
