#include "platform/embedded/foundation/UserLocale.h"

#include <string>

#if defined(_WIN32)
#    include "platform/embedded/foundation/WindowsHeader.h"
#elif __has_include(<langinfo.h>)
#    include <langinfo.h>
#    include <locale.h>
#    if __has_include(<xlocale.h>)
#        include <xlocale.h>
#    endif
#endif

namespace tessarin::embedded {
namespace {

// Empty where the system has no answer.
#if defined(_WIN32)

std::u16string separatorOfSystem() {
    wchar_t text[8] = {};
    if (GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, text, 8) == 0) return {};
    const std::wstring_view units(text);
    return {units.begin(), units.end()};
}

#elif __has_include(<langinfo.h>)

std::string separatorOfSystem() {
    // An object of its own, so that the process's locale stays as it is.
    const locale_t locale = newlocale(LC_NUMERIC_MASK, "", nullptr);
    if (!locale) return {};
    std::string text = nl_langinfo_l(RADIXCHAR, locale);
    freelocale(locale);
    return text;
}

#else

std::string separatorOfSystem() { return {}; }

#endif

NSString makeSeparator() {
    const auto text = separatorOfSystem();
    Object* made = text.empty() ? nullptr : runtime::makeConstantString(text);
    return made ? NSString(made) : "."_ns;
}

} // namespace

NSString userDecimalSeparator() {
    static const NSString separator = makeSeparator();
    return separator;
}

} // namespace tessarin::embedded
