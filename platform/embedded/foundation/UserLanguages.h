// The languages that the user reads.
#pragma once

#include <string>
#include <vector>

namespace tessarin::embedded {

// In the order of preference, as the environment says: LANGUAGE, a list, unless the locale is C; the locale,
// which is the first that is set of LC_ALL, LC_MESSAGES and LANG. Each as names of folders of resources, the
// more exact first: de_AT gives de_AT, de-AT, de. English comes last in any case.
std::vector<std::string> userLanguages();

} // namespace tessarin::embedded
