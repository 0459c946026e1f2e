#pragma once

#include <board/BoardExport.h>
#include <board/TranslationBinding.h>

#include <kova/KStatus.h>
#include <kova/KString.h>

#include <vector>

namespace ZelvaneBoard {

// The process-wide set of translation libraries bound to the host. Boards ask it which
// translation handles a port type. Safe to call from several threads.
class BOARD_API BoardExecutor {
public:
    // Loads a translation library and binds it; binding a library twice is refused.
    static KStatus bind(const KString& libraryPath);
    // Unbinds the library loaded from `libraryPath`; fails when it is not bound.
    static KStatus unbind(const KString& libraryPath);
    static void unbindAll();

    static std::vector<KString> boundLibraries();

    // The first bound translation that supports `type`, or null. The pointer stays valid
    // until the library is unbound.
    static ZelvaneGraph::Executor::TypeTranslation* translationFor(const Orsel::Type& type);
};

} // namespace ZelvaneBoard
