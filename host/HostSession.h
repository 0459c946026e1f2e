#pragma once

#include <kova/KObject.h>
#include <kova/KString.h>
#include <string>

namespace KovaHost {

// The host process's set-up for graphs: a fresh scene, the board's node and data types
// registered as a module of the host, and translation libraries bound through the board
// executor. Undone in reverse order when the session ends.
class HostSession {
public:
    HostSession();
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    // Binds a translation library; false (with the reason already reported) on refusal.
    bool bindTranslationLibrary(const KString& path);

private:
    KObject boardModule_;
};

// The translation plug-in installed beside this program (../lib/ from the executable).
std::string defaultPluginPath();

} // namespace KovaHost
