#include "cli/run_tarn.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <pty.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace tarncom32::tests {

namespace {

using File = std::unique_ptr<FILE, decltype([](FILE* file) { std::fclose(file); })>;

std::string contents(FILE* file) {
    std::rewind(file);
    std::string text;
    for (char buffer[4096]; const std::size_t count = std::fread(buffer, 1, sizeof buffer, file);)
        text.append(buffer, count);
    return text;
}

std::vector<char*> pointers(const std::vector<std::string>& words) {
    std::vector<char*> result;
    for (const std::string& word : words)
        result.push_back(const_cast<char*>(word.c_str()));
    result.push_back(nullptr);
    return result;
}

/// Runs the program with its output in `out`; on a terminal, whose text the outcome has, where that is null.
Outcome run(FILE* out, std::vector<std::string> words, std::vector<std::string> settings) {
    words.insert(words.begin(), "tarn");
    for (const char* kept : {"ASAN_OPTIONS=", "UBSAN_OPTIONS=", "LSAN_OPTIONS="})
        if (const char* value = std::getenv(std::string(kept, std::strlen(kept) - 1).c_str()))
            settings.push_back(kept + std::string(value));
    const std::vector<char*> argv = pointers(words);
    const std::vector<char*> envp = pointers(settings);
    const File err(std::tmpfile());
    if (!err) throw std::runtime_error("no temporary file");
    winsize size{.ws_row = 25, .ws_col = 80, .ws_xpixel = 0, .ws_ypixel = 0};
    int terminal = -1;
    const pid_t child = out != nullptr ? fork() : forkpty(&terminal, nullptr, nullptr, &size);
    if (child < 0) throw std::runtime_error("no new process");
    if (child == 0) {
        if (out != nullptr) dup2(fileno(out), STDOUT_FILENO);
        dup2(fileno(err.get()), STDERR_FILENO);
        close(STDIN_FILENO);
        execve(TARN_PROGRAM, argv.data(), envp.data());
        _exit(126);
    }
    Outcome outcome{0, {}, {}};
    if (terminal >= 0) {
        char buffer[4096];
        for (ssize_t count; (count = read(terminal, buffer, sizeof buffer)) > 0;)
            outcome.out.append(buffer, static_cast<std::size_t>(count));
        close(terminal);
        std::erase(outcome.out, '\r');
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    outcome.err = contents(err.get());
    return outcome;
}

} // namespace

Outcome runTarn(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
                const char* target) {
    const File out(target != nullptr ? std::fopen(target, "w") : std::tmpfile());
    if (!out) throw std::runtime_error("no file for the output");
    Outcome outcome = run(out.get(), arguments, environment);
    if (target == nullptr) outcome.out = contents(out.get());
    return outcome;
}

Outcome runTarnOnTerminal(const std::vector<std::string>& arguments, const std::vector<std::string>& environment) {
    return run(nullptr, arguments, environment);
}

} // namespace tarncom32::tests
