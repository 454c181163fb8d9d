// The effects that the registry offers, as the rows of a table.
#import <Foundation/Foundation.h>

// Keys of a row.
extern NSString *const EffectName;
extern NSString *const EffectManufacturer;
extern NSString *const EffectIdentifier; // the line under which the effect is kept

// Registers the bundles of a folder. NO, with a reason on standard error, for a bundle that is damaged.
BOOL registerComponentsInFolder(NSString *folder);

// A dictionary for each component, in no particular order.
NSArray *registeredEffects(void);
