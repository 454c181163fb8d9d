#include "platform/embedded/foundation/UserLanguages.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#if defined(_WIN32)
#    include "platform/embedded/foundation/WindowsHeader.h"
#endif

namespace tessarin::embedded {
namespace {

std::string environmentValue(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

// The user's locale where the environment names none.
std::string localeOfSystem() {
#if defined(_WIN32)
    wchar_t name[LOCALE_NAME_MAX_LENGTH] = {}; // such as de-AT, all of it ASCII
    if (GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH) == 0) return "C";
    std::string written;
    for (const wchar_t* unit = name; *unit; ++unit) written += *unit == L'-' ? '_' : static_cast<char>(*unit);
    return written;
#else
    return "C";
#endif
}

std::string locale() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const std::string value = environmentValue(name); !value.empty()) return value;
    return localeOfSystem();
}

class Languages {
public:
    // A language as the environment writes it: de_AT.UTF-8@euro.
    void addLocale(std::string_view written) {
        const std::string name(written.substr(0, written.find_first_of(".@")));
        if (name.empty() || name == "C" || name == "POSIX") return;
        add(name);
        const std::size_t region = name.find('_');
        if (region == std::string::npos) return;
        add(std::string(name).replace(region, 1, "-"));
        add(name.substr(0, region));
    }
    void add(const std::string& name) {
        if (std::find(names_.begin(), names_.end(), name) == names_.end()) names_.push_back(name);
    }
    std::vector<std::string> names() const { return names_; }

private:
    std::vector<std::string> names_;
};

} // namespace

std::vector<std::string> userLanguages() {
    Languages languages;
    const std::string current = locale();
    const bool isPlain = current == "C" || current == "POSIX" || current.starts_with("C.");
    const std::string list = isPlain ? "" : environmentValue("LANGUAGE");
    for (std::size_t begin = 0; begin < list.size();) {
        const std::size_t end = std::min(list.find(':', begin), list.size());
        languages.addLocale(std::string_view(list).substr(begin, end - begin));
        begin = end + 1;
    }
    languages.addLocale(current);
    languages.add("en");
    return languages.names();
}

} // namespace tessarin::embedded
