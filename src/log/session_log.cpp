#include "log/session_log.h"

#include "data/file_paths.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <mutex>

namespace vorn {

namespace {

// The one file handle and the one mutex of the program. SDL may call
// sdlOutput from its own threads, so every open, write, flush and close goes
// through the mutex. The handle itself is atomic because sdlOutput peeks at
// it before taking the lock.
std::atomic<std::FILE*> logFile{nullptr};
std::mutex logMutex;

constexpr const char* kRule = "==================================================================";

// Local time in the given strftime format. localtime() shares one static
// buffer between threads, so the reentrant variant of each platform is used.
void formatNow(char* out, std::size_t size, const char* format) {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    if (std::strftime(out, size, format, &local) == 0) {
        out[0] = '\0';
    }
}

void clockStamp(char (&out)[16]) { formatNow(out, sizeof out, "%H:%M:%S"); }

const char* priorityName(SDL_LogPriority priority) {
    switch (priority) {
        case SDL_LOG_PRIORITY_VERBOSE: return "VERB";
        case SDL_LOG_PRIORITY_DEBUG: return "DEBUG";
        case SDL_LOG_PRIORITY_INFO: return "INFO";
        case SDL_LOG_PRIORITY_WARN: return "WARN";
        case SDL_LOG_PRIORITY_ERROR: return "ERROR";
        case SDL_LOG_PRIORITY_CRITICAL: return "CRIT";
        default: return "LOG";
    }
}

}  // namespace

void openLog(const std::string& path, const std::string& build) {
    bool opened = false;
    {
        std::lock_guard<std::mutex> lock(logMutex);
        if (logFile != nullptr) {
            return;
        }
        // Append, never truncate: every run adds its own block under the
        // previous ones, so one file tells the story of several sessions.
        std::FILE* file = openFile(path, "a");
        if (file != nullptr) {
            char when[32];
            formatNow(when, sizeof when, "%Y-%m-%d %H:%M:%S");
            // The empty first line keeps each run's banner clear of the
            // previous run's last line.
            std::fprintf(file, "\n%s\n The Vorn Co. \xE2\x80\x94 session start  %s   build %s\n%s\n",
                         kRule, when, build.c_str(), kRule);
            std::fflush(file);
            logFile = file;
            opened = true;
        }
    }
    // SDL's log calls are made outside our lock: SDL holds its own log mutex
    // while it calls sdlOutput, which then takes ours, so taking them in the
    // other order here could deadlock against a thread that is logging.
    if (opened) {
        // Verbose and debug chatter from SDL is not worth a line in a
        // player's log; from here on SDL_Log lands in the file instead of on
        // the console.
        SDL_LogSetAllPriority(SDL_LOG_PRIORITY_INFO);
        SDL_LogSetOutputFunction(sdlOutput, nullptr);
        return;
    }
    // SDL's default output is still installed, so this reaches the console.
    SDL_Log("Log: could not open '%s' for append \xE2\x80\x94 file logging disabled.", path.c_str());
}

void logInfo(const char* format, ...) {
    // A message longer than the buffer is cut, never dropped: a truncated
    // line still says what happened.
    char message[1024];
    va_list args;
    va_start(args, format);
    std::vsnprintf(message, sizeof message, format, args);
    va_end(args);

    {
        std::lock_guard<std::mutex> lock(logMutex);
        if (logFile != nullptr) {
            char stamp[16];
            clockStamp(stamp);
            std::FILE* file = logFile;
            std::fprintf(file, "[%s] INFO  %s\n", stamp, message);
            std::fflush(file);
        }
    }
    // The console echo runs with or without the file, after the lock is
    // released, so a slow terminal never holds up another thread's log line.
    std::fprintf(stderr, "%s\n", message);
}

void logSection(const char* title) {
    std::lock_guard<std::mutex> lock(logMutex);
    std::FILE* file = logFile;
    if (file == nullptr) {
        return;
    }
    char stamp[16];
    clockStamp(stamp);
    std::fprintf(file, "[%s] ---- %s ----\n", stamp, title);
    std::fflush(file);
}

void sdlOutput(void* /*userdata*/, int /*category*/, SDL_LogPriority priority, const char* message) {
    // Cheap early out without the lock for the common case of no file.
    if (logFile == nullptr) {
        return;
    }
    std::lock_guard<std::mutex> lock(logMutex);
    // closeLog may have run between the test above and taking the lock (SDL
    // can log from its own threads); writing then would touch a closed file.
    std::FILE* file = logFile;
    if (file == nullptr) {
        return;
    }
    char stamp[16];
    clockStamp(stamp);
    // Once the file is open SDL's lines go there only; the console stays
    // reserved for the game's own echo.
    std::fprintf(file, "[%s] %-5s %s\n", stamp, priorityName(priority), message);
    std::fflush(file);
}

void closeLog() {
    {
        std::lock_guard<std::mutex> lock(logMutex);
        std::FILE* file = logFile;
        if (file == nullptr) {
            return;
        }
        char stamp[16];
        clockStamp(stamp);
        std::fprintf(file, "[%s] INFO  session end\n", stamp);
        std::fflush(file);
        std::fclose(file);
        logFile = nullptr;
    }
    // With no output function SDL drops its messages: the file is gone, and
    // the last moments of shutdown are not worth echoing to the console.
    // Outside our lock for the same reason as in openLog.
    SDL_LogSetOutputFunction(nullptr, nullptr);
}

}  // namespace vorn
