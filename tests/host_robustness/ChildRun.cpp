#include "ChildRun.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// A file in the temporary folder, removed with its owner.
class ScratchFile {
public:
    explicit ScratchFile(const std::string& contents = {}) {
        char name[] = "/tmp/kova-child-XXXXXX";
        fd_ = mkstemp(name);
        path_ = name;
        if (!contents.empty() && fd_ >= 0) {
            [[maybe_unused]] const ssize_t written = write(fd_, contents.data(), contents.size());
        }
    }
    ~ScratchFile() {
        if (fd_ >= 0) {
            close(fd_);
        }
        unlink(path_.c_str());
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string& path() const { return path_; }
    std::string contents() const {
        std::ifstream in(path_, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }

private:
    int fd_ = -1;
    std::string path_;
};

} // namespace

std::vector<std::string> ChildRun::errorLines() const {
    std::vector<std::string> lines;
    std::istringstream in(err);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

ChildRun runChild(const std::vector<std::string>& arguments, const ChildOptions& options) {
    ScratchFile input(options.input), out, err;
    // Everything the child needs is prepared before fork: after it, only calls that are safe
    // in a child of a threaded process.
    std::vector<char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    const rlimit limit{options.addressSpaceLimit, options.addressSpaceLimit};

    ChildRun run;
    const pid_t pid = fork();
    if (pid == 0) {
        const int in = open(input.path().c_str(), O_RDONLY);
        const int o = open(out.path().c_str(), O_WRONLY | O_TRUNC);
        const int e = open(err.path().c_str(), O_WRONLY | O_TRUNC);
        if (in < 0 || o < 0 || e < 0 || dup2(in, 0) < 0 || dup2(o, 1) < 0 || dup2(e, 2) < 0 ||
            (options.addressSpaceLimit > 0 && setrlimit(RLIMIT_AS, &limit) != 0)) {
            _exit(127);
        }
        execv(argv[0], argv.data());
        _exit(127);
    }
    if (pid < 0) {
        run.err = "fork failed";
        return run;
    }
    int status = 0;
    rusage usage{};
    if (wait4(pid, &status, 0, &usage) == pid) {
        run.exited = WIFEXITED(status);
        run.exitCode = run.exited ? WEXITSTATUS(status) : -1;
        run.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
        run.peakResidentBytes = static_cast<std::size_t>(usage.ru_maxrss) * 1024;
    }
    run.out = out.contents();
    run.err = err.contents();
    return run;
}

ChildRun runKova(std::vector<std::string> arguments, const ChildOptions& options) {
    arguments.insert(arguments.begin(), KOVA_PATH);
    return runChild(arguments, options);
}
