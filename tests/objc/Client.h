// An application in plain Objective-C, by rooms: sends every operation and calls every function of the public
// headers.

void checkStrings(void);
void checkAudio(void);
void checkValues(void);
void checkCollections(void);
void checkConfigurations(void);
void checkInterface(void);
