// Android's log for a desktop: the one call that libfennic makes, as lines on the error stream that logcat would call "tag".

#include <android/log.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr char letters[] = "??VDIWEFS";  // by android_LogPriority

// Read while the library is loaded: later another thread may change the environment.
const char* const rules = std::getenv("ANDROID_LOG_TAGS");  // NOLINT(concurrency-mt-unsafe)

// Rules are those of logcat: "TAG:LETTER" for each tag, '*' for all others, separated by spaces; the letter is the least that
// is shown, and S shows nothing.
bool isShown(int priority, const char* tag) {
    const std::size_t length = std::strlen(tag);
    int least = ANDROID_LOG_VERBOSE;
    for (const char* rule = rules; rule != nullptr && *rule != '\0'; rule += std::strspn(rule, " ")) {
        const char* const end = rule + std::strcspn(rule, " ");
        const bool isOwn = std::strncmp(rule, tag, length) == 0 && rule[length] == ':';
        if (isOwn || std::strncmp(rule, "*:", 2) == 0) {
            // A letter in either case; the tables of both lie 32 apart.
            const char* const letter = std::strchr(letters, end[-1] & ~32);
            if (letter != nullptr && *letter != '\0') least = int(letter - letters);
            if (isOwn) break;
        }
        rule = end;
    }
    return priority >= least && priority < ANDROID_LOG_SILENT;
}

}  // namespace

__attribute__((visibility("default"))) int __android_log_print(int priority, const char* tag, const char* format, ...) {
    if (tag == nullptr) tag = "";
    if (!isShown(priority, tag)) return 0;
    char text[1024];
    va_list values;
    va_start(values, format);
    std::vsnprintf(text, sizeof text, format, values);
    va_end(values);
    const bool isKnown = priority >= 0 && priority < ANDROID_LOG_SILENT;
    return std::fprintf(stderr, "%c/%s: %s\n", isKnown ? letters[priority] : '?', tag, text);
}
