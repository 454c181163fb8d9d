// Checks for Objective-C test programs: each says what it holds, and a failed one does not stop the program.
#import <Foundation/Foundation.h>

// How many checks have failed so far.
extern int failedChecks;

#define CHECK(condition) reportCheck((condition) ? YES : NO, #condition, __FILE__, __LINE__)
#define CHECK_TEXT(string, expected) reportText((string), (expected), #string, __FILE__, __LINE__)
// Whether the statements raise an exception of that name.
#define CHECK_RAISES(expectedName, statements)                                                               \
    do {                                                                                                     \
        NSString *raisedName = nil;                                                                          \
        @try {                                                                                               \
            statements;                                                                                      \
        } @catch (NSException * exception) {                                                                 \
            raisedName = [exception name];                                                                   \
        }                                                                                                    \
        reportText(raisedName, (expectedName), #statements, __FILE__, __LINE__);                             \
    } while (0)

void reportCheck(BOOL passed, const char *condition, const char *file, int line);
void reportText(NSString *text, NSString *expected, const char *expression, const char *file, int line);
// Prints the closing line and answers the program's exit code.
int closeChecks(void);
