#include "ChildRun.h"

#include <cstdio>
#include <memory>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// An anonymous temporary file, gone when closed.
using TemporaryFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

TemporaryFile temporaryFile() {
    return {std::tmpfile(), &std::fclose};
}

// What a file holds, from its start.
std::string contents(std::FILE* file) {
    std::string text;
    std::rewind(file);
    char buffer[4096];
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, file)) > 0;) {
        text.append(buffer, n);
    }
    return text;
}

} // namespace

std::vector<std::string> ChildRun::errorLines() const {
    std::vector<std::string> lines;
    std::istringstream in(err);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

ChildRun runKova(std::vector<std::string> arguments, const std::string& input) {
    arguments.insert(arguments.begin(), KOVA_PATH);
    ChildRun run;
    const TemporaryFile in = temporaryFile(), out = temporaryFile(), err = temporaryFile();
    if (!in || !out || !err) {
        run.err = "no temporary files";
        return run;
    }
    std::fwrite(input.data(), 1, input.size(), in.get());
    std::fflush(in.get());
    std::rewind(in.get());
    // Everything the child needs is prepared before fork: after it, only calls that are safe
    // in a child of a threaded process.
    std::vector<char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);

    const pid_t pid = fork();
    if (pid == 0) {
        if (dup2(fileno(in.get()), 0) >= 0 && dup2(fileno(out.get()), 1) >= 0 &&
            dup2(fileno(err.get()), 2) >= 0) {
            execv(argv[0], argv.data());
        }
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (pid < 0 || wait4(pid, &status, 0, &usage) != pid) {
        run.err = "fork failed";
        return run;
    }
    run.exited = WIFEXITED(status);
    run.exitCode = run.exited ? WEXITSTATUS(status) : -1;
    run.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    run.peakResidentBytes = static_cast<std::size_t>(usage.ru_maxrss) * 1024;
    run.out = contents(out.get());
    run.err = contents(err.get());
    return run;
}
