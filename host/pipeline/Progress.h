#pragma once

#include <string>

namespace KovaHost {

// Shows what long work is doing on one status line of the terminal; says nothing when
// standard error is not a terminal, so logs and pipes stay clean.
class Progress {
public:
    Progress();
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Replaces the status line with "kova: <what>...".
    void stage(const std::string& what);
    // Clears the status line.
    void done();

private:
    bool shown_;
    bool active_ = false;
};

} // namespace KovaHost
