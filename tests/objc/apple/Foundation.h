// Stands in for the system's headers where there are none: just the types and classes of Foundation that the
// public headers and the client beside this file name, for a compiler to read. Nothing is linked with it.
#pragma once

#include <stdbool.h>
#include <stdint.h>

#if !defined(__APPLE__)
#    error "This is what macOS declares"
#endif

#if defined(__arm64__)
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif
#define YES ((BOOL)1)
#define NO ((BOOL)0)
#if defined(__cplusplus)
#    define nil nullptr
#else
#    define nil ((void *)0)
#endif

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef NSUInteger NSStringEncoding;
typedef NSUInteger NSEnumerationOptions;
typedef double CGFloat;
typedef struct CGPoint {
    CGFloat x, y;
} NSPoint;
typedef struct CGSize {
    CGFloat width, height;
} NSSize;
typedef struct CGRect {
    NSPoint origin;
    NSSize size;
} NSRect;
typedef const struct __CFString *CFStringRef;

@protocol NSObject
@end
@protocol NSCoding
@end
@protocol NSCopying
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (instancetype)alloc;
+ (Class)class;
- (instancetype)init;
@end

@interface NSString : NSObject <NSCoding, NSCopying>
@end
@interface NSConstantString : NSString
@end
@interface NSNumber : NSObject
@end
@interface NSArray : NSObject
@end
@interface NSMutableArray : NSArray
@end
@interface NSDictionary : NSObject
@end
@interface NSAttributedString : NSObject
@end
@interface NSCharacterSet : NSObject
@end
@interface NSIndexSet : NSObject
@end
@interface NSMutableIndexSet : NSIndexSet
@end
@interface NSError : NSObject
@end
@interface NSFileManager : NSObject
@end
@interface NSLock : NSObject
@end
@interface NSPropertyListSerialization : NSObject
@end
@interface NSSortDescriptor : NSObject
@end
@interface NSURL : NSObject
@end
