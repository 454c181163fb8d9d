// What the application finds again when it is started the next time.
#import <AppKit/AppKit.h>

@interface Session : NSObject {
    NSString *effect;
    NSArray *streamFormat;
    NSColor *color;
    NSSortDescriptor *order;
    NSInteger meterState;
    NSPoint topLeftPoint;
}

// The session that a file keeps; a new one where there is no such file, and in the parts that are damaged.
// nil, with a reason on standard error, for a file that cannot be read as a property list of a dictionary.
+ (Session *)sessionOfFile:(NSString *)path;

// Keeps the session in a property list in XML. Other keys that the file holds stay.
- (BOOL)keepInFile:(NSString *)path;

// The session as a property list. Being the operation that tessarin_propertyListForValue: asks for first, it
// makes a session a value that can be kept like any other.
- (NSDictionary *)configuration;

// One line for each part of the state.
- (void)print;

- (NSString *)effect; // its identifier, nil as long as none is chosen
- (void)setEffect:(NSString *)identifier;
- (NSArray *)streamFormat; // nine numbers
- (NSColor *)color;
- (void)setColor:(NSColor *)aColor;
- (NSSortDescriptor *)order; // of the list of effects
- (void)setOrder:(NSSortDescriptor *)aDescriptor;
- (NSInteger)meterState; // of all items of the menu of meters
- (void)setMeterState:(NSInteger)state;
- (NSPoint)topLeftPoint; // of the window
- (void)setTopLeftPoint:(NSPoint)point;

@end
