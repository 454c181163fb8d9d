// The class of a bundle that a test loads.
#import <Foundation/NSObject.h>

@interface LateClassOfBundle : NSObject
@end

@implementation LateClassOfBundle
@end
