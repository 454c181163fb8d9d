#import "Checks.h"

#include <stdio.h>

int failedChecks = 0;
static int passedChecks = 0;

void reportCheck(BOOL passed, const char *condition, const char *file, int line) {
    if (passed) {
        ++passedChecks;
        return;
    }
    ++failedChecks;
    fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, condition);
}

void reportText(NSString *text, NSString *expected, const char *expression, const char *file, int line) {
    if (text == expected || [text isEqualToString:expected]) {
        ++passedChecks;
        return;
    }
    ++failedChecks;
    fprintf(stderr, "%s:%d: %s is «%s», not «%s»\n", file, line, expression,
            text ? [text UTF8String] : "(nil)", expected ? [expected UTF8String] : "(nil)");
}

int closeChecks(void) {
    printf("%d passed, %d failed\n", passedChecks, failedChecks);
    return failedChecks == 0 ? 0 : 1;
}
