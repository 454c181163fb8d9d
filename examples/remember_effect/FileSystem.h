#pragma once

#include <TessarinPlatform/NSFileManager.h>

inline bool isDirectory(tessarin::NSString path) {
    tessarin::BOOL isDirectory = tessarin::NO;
    return tessarin::NSFileManager::defaultManager().fileExistsAtPath_isDirectory(path, &isDirectory)
           && isDirectory;
}
