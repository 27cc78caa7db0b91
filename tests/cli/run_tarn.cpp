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

File temporaryFile() {
    File file(std::tmpfile());
    if (!file) throw std::runtime_error("no temporary file");
    return file;
}

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

pid_t start(int out, int err, std::vector<std::string> words, const std::vector<std::string>& environment) {
    words.insert(words.begin(), "tarn");
    std::vector<std::string> settings = environment;
    for (const char* kept : {"ASAN_OPTIONS=", "UBSAN_OPTIONS=", "LSAN_OPTIONS="})
        if (const char* value = std::getenv(std::string(kept, std::strlen(kept) - 1).c_str()))
            settings.push_back(kept + std::string(value));
    const std::vector<char*> argv = pointers(words);
    const std::vector<char*> envp = pointers(settings);
    const pid_t child = fork();
    if (child == 0) {
        dup2(out, STDOUT_FILENO);
        dup2(err, STDERR_FILENO);
        close(STDIN_FILENO);
        execve(TARN_PROGRAM, argv.data(), envp.data());
        _exit(126);
    }
    if (child < 0) throw std::runtime_error("no new process");
    return child;
}

int statusOf(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

} // namespace

Outcome runTarn(const std::vector<std::string>& arguments, const std::vector<std::string>& environment,
                const char* target) {
    const File out = target != nullptr ? File(std::fopen(target, "w")) : temporaryFile();
    if (!out) throw std::runtime_error(std::string("cannot open ") + target);
    const File err = temporaryFile();
    const int status = statusOf(start(fileno(out.get()), fileno(err.get()), arguments, environment));
    return {status, target != nullptr ? "" : contents(out.get()), contents(err.get())};
}

Outcome runTarnOnTerminal(const std::vector<std::string>& arguments, const std::vector<std::string>& environment) {
    const File err = temporaryFile();
    winsize size{.ws_row = 25, .ws_col = 80, .ws_xpixel = 0, .ws_ypixel = 0};
    int terminal = -1;
    int program = -1;
    if (openpty(&terminal, &program, nullptr, nullptr, &size) != 0) throw std::runtime_error("no terminal");
    const pid_t child = start(program, fileno(err.get()), arguments, environment);
    close(program);
    Outcome run{0, {}, {}};
    char buffer[4096];
    for (ssize_t count; (count = read(terminal, buffer, sizeof buffer)) > 0;)
        run.out.append(buffer, static_cast<std::size_t>(count));
    close(terminal);
    std::erase(run.out, '\r');
    run.status = statusOf(child);
    run.err = contents(err.get());
    return run;
}

} // namespace tarncom32::tests
