// The platform's log: standard error.
#include "TessarinPlatform/NSLog.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <string_view>
#include <thread>

#if defined(_WIN32)
#    include "platform/embedded/foundation/BundleFolders.h"
#    include "platform/embedded/foundation/WindowsHeader.h"
#    include <process.h>
#else
#    include <cerrno>
#    include <unistd.h>
#endif
#if defined(__linux__)
#    include <sys/syscall.h>
#endif

namespace tessarin {
namespace {

std::string programName() {
#if defined(__GLIBC__)
    return program_invocation_short_name;
#elif defined(__APPLE__) || defined(__FreeBSD__) || defined(__NetBSD__) || defined(__OpenBSD__)
    return getprogname();
#elif defined(_WIN32)
    const std::u8string name = embedded::binaryOfAddress(nullptr).stem().u8string();
    return {name.begin(), name.end()};
#else
    return "program";
#endif
}

long long processNumber() {
#if defined(_WIN32)
    return _getpid();
#else
    return getpid();
#endif
}

// The number that the operating system's own tools show, where it has one.
unsigned long long threadNumber() {
#if defined(__linux__)
    return static_cast<unsigned long long>(syscall(SYS_gettid));
#elif defined(_WIN32)
    return GetCurrentThreadId();
#else
    return std::hash<std::thread::id>()(std::this_thread::get_id());
#endif
}

std::string timeStamp() {
    using namespace std::chrono;
    const auto now = floor<milliseconds>(system_clock::now());
    const std::time_t second = system_clock::to_time_t(floor<seconds>(now));
    std::tm local{};
#if defined(_WIN32)
    localtime_s(&local, &second);
#else
    localtime_r(&second, &local);
#endif
    char stamp[64];
    const std::size_t length = std::strftime(stamp, sizeof stamp, "%Y-%m-%d %H:%M:%S", &local);
    std::snprintf(stamp + length, sizeof stamp - length, ".%03d",
                  static_cast<int>(now.time_since_epoch() / milliseconds(1) % 1000));
    return stamp;
}

// In one write, so that lines of several threads and processes stay whole. The log has nowhere to report its
// own failures to, so they are passed over.
void writeToStandardError(std::string_view line) {
#if defined(_WIN32)
    std::fwrite(line.data(), 1, line.size(), stderr);
#else
    while (!line.empty()) {
        const ssize_t written = ::write(STDERR_FILENO, line.data(), line.size());
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return;
        line.remove_prefix(static_cast<std::size_t>(written));
    }
#endif
}

} // namespace

void logText(NSString text) {
    std::string line = timeStamp() + " " + programName() + "[" + std::to_string(processNumber()) + ":"
                       + std::to_string(threadNumber()) + "] ";
    line += text ? std::string(text) : "(null)";
    if (!line.ends_with('\n')) line += '\n';
    writeToStandardError(line);
}

} // namespace tessarin
